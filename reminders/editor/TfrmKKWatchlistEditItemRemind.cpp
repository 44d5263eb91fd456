#include "reminders/editor/TfrmKKWatchlistEditItemRemind.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <limits>

#include "host/base/Guard.h"
#include "host/base/TClock.h"
#include "host/common/TFileHelper.h"
#include "host/common/TIniFileSectionCommunication.h"
#include "host/common/TOutlook.h"
#include "host/common/TVersionHelper.h"
#include "host/controls/TOpenDialog.h"
#include "host/controls/TfrmMessageDlg.h"
#include "reminders/RemindSms.h"
#include "reminders/TRemindDetailsEMail.h"
#include "reminders/TRemindDetailsSMS.h"
#include "reminders/TRemindDetailsSound.h"
#include "reminders/TRemindDetailsWindow.h"
#include "reminders/editor/RemindItemDetails.h"
#include "reminders/editor/RemindText.h"
#include "settings/TIniFileSectionWatchlist.h"

namespace kk {

namespace {

constexpr TStringView cStoring = u"TfrmKKWatchlistEditItemRemind (settings)";
constexpr TStringView cDefaults = u"TfrmKKWatchlistEditItemRemind (defaults)";
constexpr int cChosenTimePanel = 1;
constexpr int cSecondsPerDay = 24 * 60 * 60;

// False: the window stays open.
bool Refuse(TStringView iText) {
  MessageDlg(iText, TMsgDlgType::mtError, {TMsgDlgBtn::mbOK});
  return false;
}

template <class Details>
std::unique_ptr<Details> MakeDetails(const TIntf<IReminderText>& iText) {
  const TString caption = iText->GetCaption();
  const TString text = iText->GetText();
  return std::make_unique<Details>(caption, text, iText->GetLink());
}

// The kinds that are delivered with their stored texts. Those stay as they were made while the kind
// stays the same.
template <class Details>
void PrepareTexts(TRemindItemForEdit& ioItem, TRemindType iType, TReminderTextKind iKind,
                  bool iSelected) {
  const bool present = DetailsOf<Details>(ioItem, iType) != nullptr;
  if (present == iSelected) return;
  if (present) return DeleteDetails(ioItem, iType);
  const auto text = FindReminderText(ioItem.Id(), iKind);
  if (text) AddDetails(ioItem, iType, MakeDetails<Details>(text));
}

// Whoever plays it later stands in another folder. What has no full path stays as it is.
TString FullPath(const TString& iFile) {
  std::error_code error;
  const auto path = std::filesystem::absolute(ToUtf8(iFile), error);
  return error ? iFile : FromUtf8(path.string());
}

// Whole seconds, and years that a file can hold: the number fields have no bounds.
TDateTime ToStorable(TDateTime iTime) {
  static const TDateTime first = EncodeDateTime({1, 1, 1, 0, 0, 0, 0});
  static const TDateTime last = EncodeDateTime({9999, 12, 31, 23, 59, 59, 0});
  const int64_t ms = std::clamp(iTime, first, last).Ms();
  const int64_t second = TDateTime::cMsPerSecond;
  return TDateTime::FromMs(ms - (ms % second + second) % second);
}

}  // namespace

TfrmKKWatchlistEditItemRemind::TfrmKKWatchlistEditItemRemind(TForm* iOwner,
                                                             TLstRemindItemForEdit& ioLst)
    : TfrmKKCommonBase(iOwner, u"TfrmKKWatchlistEditItemRemind", _resEditRemindCaption),
      FStartNow(Now()),
      FLst(ioLst) {
  using TSelf = TfrmKKWatchlistEditItemRemind;
  SetPosition(TPosition::poOwnerFormCenter);
  for (TPanel* row : {&pnlSoundfile, &pnlTimeSpan, &pnlTimeRelative, &pnlButtons}) {
    row->SetArrangement(TArrangement::arRow);
  }
  for (TComboBox* list : {&cmbxRemindType, &cmbxTimeRelative}) list->SetEditable(false);
  for (const TStringView text : cEditRemindTypeText) cmbxRemindType.AddItem(text);
  for (const TStringView text : cRemindTimeRelativeText) cmbxTimeRelative.AddItem(text);
  edtSoundFile.SetStretches(true);
  stsbrTime.AddPanel(_resEditRemindChosenTime);
  stsbrTime.AddPanel();
  cmbxRemindType.SetOnChange(TNotifyEvent::Of<&TSelf::cmbxRemindTypeChange>(this));
  chckbxSoundfile.SetOnClick(TNotifyEvent::Of<&TSelf::chckbxSoundfileClick>(this));
  btnSoundfile.SetOnClick(TNotifyEvent::Of<&TSelf::btnSoundfileClick>(this));
  for (TRadioButton* choice : {&rdbtnTimeSpan, &rdbtnTimeRelative}) {
    choice->SetOnClick(TNotifyEvent::Of<&TSelf::rdbtnTimeClick>(this));
  }
  for (TSpinEdit* figure : {&spnedtHours, &spnedtMinutes, &spnedtSeconds}) {
    figure->SetOnChange(TNotifyEvent::Of<&TSelf::TimeChange>(this));
  }
  cmbxTimeRelative.SetOnChange(TNotifyEvent::Of<&TSelf::TimeChange>(this));
  SetOnCloseQuery(TCloseQueryEvent::Of<&TSelf::FormCloseQuery>(this));
  SetDefaultButton(&btnOK);
  SetCancelButton(&btnCancel);
  SetFocusedControl(&cmbxRemindType);
}

bool TfrmKKWatchlistEditItemRemind::Display(TForm* iOwner, TLstRemindItemForEdit& ioLst) {
  if (ioLst.GetCount() == 0) return false;
  TfrmKKWatchlistEditItemRemind form(iOwner, ioLst);
  form.SetData();
  return form.ShowModal() == cModalOK;
}

bool TfrmKKWatchlistEditItemRemind::DisplayWithoutDisplaying(TForm* iOwner,
                                                             TLstRemindItemForEdit& ioLst) {
  if (ioLst.GetCount() == 0) return true;
  TfrmKKWatchlistEditItemRemind form(iOwner, ioLst);
  form.SetDataFromDefaultSettings();
  // As required, without a check of the sound file, and the editor's last state becomes these
  // defaults. A source that fails here stops nothing, as a step that fails.
  Guarded(cDefaults, [&form] { form.GetData(); });
  for (TRemindItemForEdit* item : ioLst) {
    if (Now() > form.GetDateTime(*item)) item->SetRemindTime({});
  }
  return true;
}

bool TfrmKKWatchlistEditItemRemind::AddOutlookAppointment(TRemindDetailsOutlook& ioDetails,
                                                          TDateTime iDateTime) {
  try {
    const auto outlook = CreateOutlook();
    ioDetails.SetEntryId(outlook->AddAppointment(
        TVersionHelper::ReplaceVersionParams(_resOutlookSubject), ioDetails.Text(),
        Format(_resOutlookLocation, {ioDetails.Caption()}), 0, iDateTime, 1));
    LogInfo(_resLoggingSenderRemindOutlook, _resLoggingOutlookAdded, {DateTimeToStr(iDateTime)});
    return true;
  } catch (const std::exception& e) {
    LogException(_resLoggingSenderRemindOutlook, e);
    return Refuse(Format(_resOutlookAddFailed, {Trim(MessageOf(e))}));
  }
}

void TfrmKKWatchlistEditItemRemind::DeleteOutlookAppointment(TRemindDetailsOutlook& ioDetails) {
  const TString id = ioDetails.EntryId();
  try {
    if (CreateOutlook()->DeleteAppointment(id)) {
      LogInfo(_resLoggingSenderRemindOutlook, _resLoggingOutlookDeleted, {id});
    } else {
      LogError(_resLoggingSenderRemindOutlook, _resLoggingOutlookNotDeleted, {id});
    }
  } catch (const std::exception& e) {
    LogException(_resLoggingSenderRemindOutlook, e);
  }
  ioDetails.SetEntryId({});
}

// Kind and sound are the reminder's, the time is the one used last: the old time is not shown.
void TfrmKKWatchlistEditItemRemind::SetData() {
  const TIniFileSectionWatchlist settings;
  const TRemindItemForEdit& first = FLst.GetItems(0);
  const auto kind = first.RemindTypes().Highest();
  const int lastKind = settings.GetRemindType();
  if (kind) {
    cmbxRemindType.SetItemIndex(RemindTypeEditorIndex(*kind));
  } else if (lastKind >= 0 && lastKind < static_cast<int>(cRemindTypes.size())) {
    cmbxRemindType.SetItemIndex(RemindTypeEditorIndex(static_cast<TRemindType>(lastKind)));
  } else {
    cmbxRemindType.SetItemIndex(RemindTypeEditorIndex(rtWindow));
  }
  cmbxRemindTypeChange(&cmbxRemindType);
  SetSound();
  // As a time of day: whole days go; of a span backwards the size is shown.
  const int64_t offset = std::abs(int64_t{settings.GetRemindTimeSpanOffsetInSecs()});
  const int seconds = static_cast<int>(offset % cSecondsPerDay);
  SetTimes(seconds / 3600, seconds / 60 % 60, seconds % 60, settings.GetRemindTimeRelative(),
           first.EndDate().IsZero());
}

void TfrmKKWatchlistEditItemRemind::SetDataFromDefaultSettings() {
  const TIniFileSectionWatchlist settings;
  cmbxRemindType.SetItemIndex(settings.GetDefaultRemindType());
  cmbxRemindTypeChange(&cmbxRemindType);
  SetSound();
  SetTimes(settings.GetDefaultReminderHours(), settings.GetDefaultReminderMinutes(),
           settings.GetDefaultReminderSeconds(), settings.GetRelativeTimeIndex(),
           FLst.GetItems(0).EndDate().IsZero() || settings.GetDefaultReminderAfterTime());
}

void TfrmKKWatchlistEditItemRemind::SetSound() {
  const auto* const sound = DetailsOf<TRemindDetailsSound>(FLst.GetItems(0), rtSound);
  const bool hasFile = sound != nullptr && !sound->SoundFile().empty();
  chckbxSoundfile.SetChecked(hasFile);
  edtSoundFile.SetText(hasFile ? sound->SoundFile() : TIniFileSectionWatchlist().GetSoundFile());
  UpdateSoundEnabling();
}

void TfrmKKWatchlistEditItemRemind::SetTimes(int iHours, int iMinutes, int iSeconds,
                                             int iRelativeIndex, bool iIsTimeSpan) {
  spnedtHours.SetValue(iHours);
  spnedtMinutes.SetValue(iMinutes);
  spnedtSeconds.SetValue(iSeconds);
  // The settings can hold any number; one beyond the list means its nearer end.
  const int last = static_cast<int>(cmbxTimeRelative.Items().size()) - 1;
  cmbxTimeRelative.SetItemIndex(std::clamp(iRelativeIndex, 0, last));
  (iIsTimeSpan ? rdbtnTimeSpan : rdbtnTimeRelative).SetChecked(true);
  UpdateTimeEnabling();
  ShowTime();
  if (rdbtnTimeRelative.Checked()) return;
  // What is hidden takes no room: nothing else has to be shortened.
  rdbtnTimeRelative.SetVisible(false);
  cmbxTimeRelative.SetVisible(false);
  lblTimeRelative.SetVisible(false);
}

void TfrmKKWatchlistEditItemRemind::UpdateSoundEnabling() {
  const bool enabled = chckbxSoundfile.Checked() || !chckbxSoundfile.Visible();
  edtSoundFile.SetEnabled(enabled);
  btnSoundfile.SetEnabled(enabled);
}

void TfrmKKWatchlistEditItemRemind::UpdateTimeEnabling() {
  for (TControl* control : std::initializer_list<TControl*>{
           &spnedtHours, &lblHours, &spnedtMinutes, &lblMinutes, &spnedtSeconds, &lblSeconds}) {
    control->SetEnabled(rdbtnTimeSpan.Checked());
  }
  cmbxTimeRelative.SetEnabled(rdbtnTimeRelative.Checked());
  lblTimeRelative.SetEnabled(rdbtnTimeRelative.Checked());
}

void TfrmKKWatchlistEditItemRemind::ShowTime() {
  stsbrTime.SetPanelText(cChosenTimePanel, DateTimeToStr(GetDateTime(FLst.GetItems(0))));
}

void TfrmKKWatchlistEditItemRemind::cmbxRemindTypeChange(TObject* /*Sender*/) {
  // The label moves up to the place of a box that is hidden, as in every row.
  chckbxSoundfile.SetVisible(SelectedType() != rtSound);
  UpdateSoundEnabling();
}

void TfrmKKWatchlistEditItemRemind::chckbxSoundfileClick(TObject* /*Sender*/) {
  UpdateSoundEnabling();
}

void TfrmKKWatchlistEditItemRemind::btnSoundfileClick(TObject* /*Sender*/) {
  TOpenDialog dialog{TString(_resEditRemindSoundFileTitle), TString(_resEditRemindSoundFileFilter),
                     true, edtSoundFile.Text()};
  if (dialog.Execute()) edtSoundFile.SetText(dialog.FileName);
}

void TfrmKKWatchlistEditItemRemind::rdbtnTimeClick(TObject* /*Sender*/) {
  UpdateTimeEnabling();
  ShowTime();
}

void TfrmKKWatchlistEditItemRemind::TimeChange(TObject* /*Sender*/) { ShowTime(); }

TRemindType TfrmKKWatchlistEditItemRemind::SelectedType() const {
  for (const TRemindType type : cRemindTypes) {
    if (RemindTypeEditorIndex(type) == cmbxRemindType.ItemIndex()) return type;
  }
  return rtWindow;
}

TDateTime TfrmKKWatchlistEditItemRemind::GetDateTime(const TRemindItemForEdit& iItem) const {
  if (rdbtnTimeSpan.Checked()) {
    return ToStorable(FStartNow.PlusMs(spnedtHours.Value() * TDateTime::cMsPerHour +
                                       spnedtMinutes.Value() * TDateTime::cMsPerMinute +
                                       spnedtSeconds.Value() * TDateTime::cMsPerSecond));
  }
  const auto index = static_cast<size_t>(std::max(cmbxTimeRelative.ItemIndex(), 0));
  return ToStorable(
      iItem.EndDate().PlusMs(-cRemindTimeRelativeMinutes[index] * TDateTime::cMsPerMinute));
}

void TfrmKKWatchlistEditItemRemind::FormCloseQuery(TObject* /*Sender*/, bool& ioCanClose) {
  if (ModalResult() != cModalOK) return;
  try {
    ioCanClose = CheckSoundFile() && CheckTimes() && CheckEMail() && CheckSms() && GetData();
  } catch (const std::exception& e) {  // a source whose texts can't be had, for example
    LogException(_resLoggingSenderRemind, e);
    ioCanClose = Refuse(Trim(MessageOf(e)));
  }
}

bool TfrmKKWatchlistEditItemRemind::CheckSoundFile() {
  const TString& file = edtSoundFile.Text();
  if (!edtSoundFile.Enabled() || FileExists(file)) return true;
  Refuse(Trim(file).empty() ? TString(_resEditRemindNoSoundFile)
                            : Format(_resEditRemindSoundFileNotFound, {file}));
  SetFocusedControl(&edtSoundFile);
  return false;
}

bool TfrmKKWatchlistEditItemRemind::CheckTimes() {
  for (const TRemindItemForEdit* item : FLst) {
    const TDateTime time = GetDateTime(*item);
    if (Now() > time) return Refuse(Format(_resEditRemindTimeInPast, {DateTimeToStr(time)}));
  }
  return true;
}

bool TfrmKKWatchlistEditItemRemind::CheckEMail() {
  if (SelectedType() != rtEmail) return true;
  TString address;
  if (!TIniFileSectionCommunication().GetEMail(address)) {
    return Refuse(_resEditRemindEMailNotConfirmed);
  }
  return !Trim(address).empty() || Refuse(_resEditRemindNoEMail);
}

bool TfrmKKWatchlistEditItemRemind::CheckSms() {
  if (SelectedType() != rtSMS) return true;
  const int count = FLst.GetCount();
  if (count > 1) return Refuse(Format(_resEditRemindSeveralSms, {count}));
  return !TIniFileSectionCommunication().GetSMS().empty() || Refuse(_resEditRemindNoSmsNumber);
}

bool TfrmKKWatchlistEditItemRemind::GetData() {
  bool done = true;
  for (TRemindItemForEdit* item : FLst) {
    done = GetData(*item);
    if (!done) break;
  }
  StoreSettings();
  return done;
}

bool TfrmKKWatchlistEditItemRemind::GetData(TRemindItemForEdit& ioItem) {
  GetSound(ioItem);
  const bool done = PrepareRemindWindow(ioItem) && PrepareRemindEmail(ioItem) &&
                    PrepareRemindSMS(ioItem) && PrepareRemindOutlook(ioItem);
  // Required also where a step failed; a second OK then finds an appointment that could not be
  // moved under an unchanged time, and leaves it.
  ioItem.SetRemindTime(GetDateTime(ioItem));
  return done;
}

void TfrmKKWatchlistEditItemRemind::GetSound(TRemindItemForEdit& ioItem) {
  // The details stay, as required: they are saved, tick the box the next time, and are played.
  if (!edtSoundFile.Enabled()) return ExcludeType(ioItem, rtSound);
  const TString file = FullPath(edtSoundFile.Text());
  if (auto* const sound = DetailsOf<TRemindDetailsSound>(ioItem, rtSound)) {
    sound->SetSoundFile(file);
  } else {
    ioItem.LstDetails().Add(std::make_unique<TRemindDetailsSound>(file));
  }
  IncludeType(ioItem, rtSound);
  Guarded(cStoring, [&file] {
    TIniFileSectionWatchlist settings;
    if (settings.GetStoreLastSelectedSoundFile()) settings.SetSoundFile(file);
  });
}

// A reminder is worth more than the editor's last state: settings that can't be written stop
// nothing.
void TfrmKKWatchlistEditItemRemind::StoreSettings() {
  Guarded(cStoring, [this] {
    using TLimits = std::numeric_limits<int>;
    TIniFileSectionWatchlist settings;
    const TRemindType type = SelectedType();
    if (type != rtSMS) settings.SetRemindType(static_cast<int>(type));
    const int64_t offset = int64_t{spnedtHours.Value()} * 3600 +
                           int64_t{spnedtMinutes.Value()} * 60 + spnedtSeconds.Value();
    settings.SetRemindTimeSpanOffsetInSecs(
        static_cast<int>(std::clamp(offset, int64_t{TLimits::min()}, int64_t{TLimits::max()})));
    settings.SetRemindTimeRelative(cmbxTimeRelative.ItemIndex());
  });
}

bool TfrmKKWatchlistEditItemRemind::PrepareRemindWindow(TRemindItemForEdit& ioItem) {
  PrepareTexts<TRemindDetailsWindow>(ioItem, rtWindow, TReminderTextKind::rtkWindow,
                                     SelectedType() == rtWindow);
  return true;
}

bool TfrmKKWatchlistEditItemRemind::PrepareRemindEmail(TRemindItemForEdit& ioItem) {
  PrepareTexts<TRemindDetailsEMail>(ioItem, rtEmail, TReminderTextKind::rtkEMail,
                                    SelectedType() == rtEmail);
  return true;
}

// The service has the message from the set-up on. It is never recalled, as required, nor sent again
// for another time.
bool TfrmKKWatchlistEditItemRemind::PrepareRemindSMS(TRemindItemForEdit& ioItem) {
  const bool selected = SelectedType() == rtSMS;
  const bool present = DetailsOf<TRemindDetailsSMS>(ioItem, rtSMS) != nullptr;
  if (present && !selected) DeleteDetails(ioItem, rtSMS);
  if (present || !selected) return true;
  const auto text = FindReminderText(ioItem.Id(), TReminderTextKind::rtkSMS);
  if (!text) return true;
  auto details = std::make_unique<TRemindDetailsSMS>(text->GetText());
  if (!SendRemindSms(details->Text(), GetDateTime(ioItem))) return false;
  AddDetails(ioItem, rtSMS, std::move(details));
  return true;
}

bool TfrmKKWatchlistEditItemRemind::PrepareRemindOutlook(TRemindItemForEdit& ioItem) {
  const bool selected = SelectedType() == rtOutlook;
  const TDateTime time = GetDateTime(ioItem);
  if (auto* const details = DetailsOf<TRemindDetailsOutlook>(ioItem, rtOutlook)) {
    if (selected && time == ioItem.RemindTime()) return true;
    DeleteOutlookAppointment(*details);
    ExcludeType(ioItem, rtOutlook);
    if (!selected) {
      DeleteDetails(ioItem, rtOutlook);
      return true;
    }
    if (!AddOutlookAppointment(*details, time)) return false;
    IncludeType(ioItem, rtOutlook);
    return true;
  }
  if (!selected) return true;
  const auto text = FindReminderText(ioItem.Id(), TReminderTextKind::rtkOutlook);
  if (!text) return true;
  auto details = MakeDetails<TRemindDetailsOutlook>(text);
  if (!AddOutlookAppointment(*details, time)) return false;
  AddDetails(ioItem, rtOutlook, std::move(details));
  return true;
}

}  // namespace kk
