#include "tests/support/TFakeRemindEditor.h"

#include <array>

#include "host/base/TClock.h"
#include "host/common/TFileHelper.h"
#include "host/controls/TfrmMessageDlg.h"

namespace kk {
namespace {

constexpr auto cKinds =
    std::to_array<TStringView>({u"Nur Sound", u"Meldungsfenster", u"E-Mail", u"Outlook", u"SMS"});
constexpr auto cTexts = std::to_array<TStringView>(
    {u"1 Minute", u"2 Minuten", u"5 Minuten", u"10 Minuten", u"15 Minuten", u"30 Minuten",
     u"1 Stunde", u"2 Stunden", u"3 Stunden", u"4 Stunden", u"5 Stunden", u"6 Stunden",
     u"12 Stunden", u"1 Tag"});
constexpr auto cMinutes =
    std::to_array<int>({1, 2, 5, 10, 15, 30, 60, 120, 180, 240, 300, 360, 720, 1440});

}  // namespace

TFakeRemindEditor::TFakeRemindEditor(TDateTime iStart, TDateTime iEnd)
    : TfrmKKCommonBase(nullptr, u"TfrmFakeRemind", u"Erinnerung"), FStart(iStart), FEnd(iEnd) {
  using TSelf = TFakeRemindEditor;
  const auto timeChange = TNotifyEvent::Of<&TSelf::TimeChange>(this);
  for (const TStringView kind : cKinds) cmbxRemindType.AddItem(kind);
  for (const TStringView text : cTexts) cmbxTimeRelative.AddItem(text);
  cmbxRemindType.SetEditable(false);
  cmbxRemindType.SetItemIndex(1);
  cmbxRemindType.SetOnChange(TNotifyEvent::Of<&TSelf::KindChange>(this));
  chckbxSoundfile.SetOnClick(TNotifyEvent::Of<&TSelf::KindChange>(this));
  cmbxTimeRelative.SetEditable(false);
  cmbxTimeRelative.SetItemIndex(0);
  cmbxTimeRelative.SetOnChange(timeChange);
  spnedtMinutes.SetValue(7);
  for (TSpinEdit* part : {&spnedtHours, &spnedtMinutes, &spnedtSeconds}) {
    part->SetOnChange(timeChange);
  }
  rdbtnTimeRelative.SetChecked(true);
  for (TRadioButton* choice : {&rdbtnTimeSpan, &rdbtnTimeRelative}) choice->SetOnClick(timeChange);
  stsbrTime.AddPanel(u"ausgewählter Zeitpunkt: ");
  stsbrTime.AddPanel();
  SetDefaultButton(&btnOK);
  SetCancelButton(&btnCancel);
  SetOnCloseQuery(TCloseQueryEvent::Of<&TSelf::CloseQuery>(this));
  KindChange(nullptr);
  TimeChange(nullptr);
}

void TFakeRemindEditor::KindChange(TObject*) {
  chckbxSoundfile.SetVisible(cmbxRemindType.ItemIndex() != 0);
  edtSoundFile.SetEnabled(chckbxSoundfile.Checked() || !chckbxSoundfile.Visible());
}

void TFakeRemindEditor::TimeChange(TObject*) {
  for (TSpinEdit* part : {&spnedtHours, &spnedtMinutes, &spnedtSeconds}) {
    part->SetEnabled(rdbtnTimeSpan.Checked());
  }
  cmbxTimeRelative.SetEnabled(rdbtnTimeRelative.Checked());
  stsbrTime.SetPanelText(1, DateTimeToStr(Time()));
}

TDateTime TFakeRemindEditor::Time() const {
  TDateTime time = FEnd.PlusMs(-TDateTime::cMsPerMinute *
                               cMinutes[static_cast<size_t>(cmbxTimeRelative.ItemIndex())]);
  if (rdbtnTimeSpan.Checked()) {
    time = FStart.PlusMs(spnedtHours.Value() * TDateTime::cMsPerHour +
                         spnedtMinutes.Value() * TDateTime::cMsPerMinute +
                         spnedtSeconds.Value() * TDateTime::cMsPerSecond);
  }
  return time.PlusMs(-(time.Ms() % TDateTime::cMsPerSecond));
}

void TFakeRemindEditor::CloseQuery(TObject*, bool& ioCanClose) {
  if (ModalResult() != cModalOK) return;
  if (edtSoundFile.Enabled() && !FileExists(edtSoundFile.Text())) {
    MessageDlg(u"Ungültige Sounddatei!\r\nSie fehlt.", TMsgDlgType::mtError, {TMsgDlgBtn::mbOK});
    ioCanClose = false;
  } else if (Now() > Time()) {
    MessageDlg(u"Nicht in der Vergangenheit!", TMsgDlgType::mtError, {TMsgDlgBtn::mbOK});
    ioCanClose = false;
  }
}

}  // namespace kk
