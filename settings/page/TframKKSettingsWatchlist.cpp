#include "settings/page/TframKKSettingsWatchlist.h"

#include "host/controls/TOpenDialog.h"
#include "settings/TIniFileSectionWatchlist.h"

namespace kk {

namespace {

constexpr int cIndent = 14;

}  // namespace

TframKKSettingsWatchlist::TframKKSettingsWatchlist() : TPanel(nullptr, u"framKKSettingsWatchlist") {
  using TSelf = TframKKSettingsWatchlist;
  for (TPanel* row : {&pnlInterval, &pnlSoundfile, &pnlDefaults, &pnlRemindType, &pnlTimeSpan,
                      &pnlTimeRelative}) {
    row->SetArrangement(TArrangement::arRow);
  }
  for (TComboBox* list : {&cmbxRemindType, &cmbxTimeRelative}) list->SetEditable(false);
  for (const TStringView text : cSettingsRemindTypeText) cmbxRemindType.AddItem(text);
  for (const TStringView text : cRemindTimeRelativeText) cmbxTimeRelative.AddItem(text);
  edtSoundfile.SetStretches(true);
  pnlIndent.SetMinSize(cIndent, 0);
  // The settings take more; whoever has set more by hand gets the upper bound with the next OK.
  spnedtInterval.SetBounds(1, 1000);
  chckbxUpdateOnInterval.SetOnClick(TNotifyEvent::Of<&TSelf::chckbxUpdateOnIntervalClick>(this));
  chckbxShowItemCount.SetOnClick(TNotifyEvent::Of<&TSelf::chckbxShowItemCountClick>(this));
  btnSoundfile.SetOnClick(TNotifyEvent::Of<&TSelf::btnSoundfileClick>(this));
  for (TClickControl* choice : std::initializer_list<TClickControl*>{
           &chckbxAutoActivateReminder, &rdbtnUseLastSettings, &rdbtnUseDefaultSettings,
           &rdbtnTimeSpan, &rdbtnTimeRelative}) {
    choice->SetOnClick(TNotifyEvent::Of<&TSelf::ValidateEnablings>(this));
  }
}

void TframKKSettingsWatchlist::LoadSettings() {
  const TIniFileSectionWatchlist settings;
  chckbxUpdateOnStartup.SetChecked(settings.GetUpdateOnStartup());
  chckbxUpdateOnInterval.SetChecked(settings.GetUpdateOnInterval());
  spnedtInterval.SetValue(settings.GetUpdateIntervalInHrs());
  chckbxShowAddDialog.SetChecked(settings.GetShowAddDialog());
  chckbxShowItemCount.SetChecked(settings.GetShowItemCountInTree());
  chckbxShowItemCountRecursive.SetChecked(settings.GetShowItemCountInTreeRecursive());
  edtSoundfile.SetText(settings.GetSoundFile());
  chckbxStoreLastSelectedSoundfile.SetChecked(settings.GetStoreLastSelectedSoundFile());
  chckbxAutoActivateReminder.SetChecked(settings.GetAutoActivateReminder());
  rdbtnUseDefaultSettings.SetChecked(settings.GetUseDefaultReminderTimes());
  rdbtnUseLastSettings.SetChecked(!settings.GetUseDefaultReminderTimes());
  cmbxRemindType.SetItemIndex(settings.GetDefaultRemindType());
  rdbtnTimeSpan.SetChecked(settings.GetDefaultReminderAfterTime());
  rdbtnTimeRelative.SetChecked(!settings.GetDefaultReminderAfterTime());
  spnedtHours.SetValue(settings.GetDefaultReminderHours());
  spnedtMinutes.SetValue(settings.GetDefaultReminderMinutes());
  spnedtSeconds.SetValue(settings.GetDefaultReminderSeconds());
  cmbxTimeRelative.SetItemIndex(settings.GetRelativeTimeIndex());
  ValidateEnablings();
  chckbxUpdateOnIntervalClick(nullptr);
  chckbxShowItemCountClick(nullptr);
}

void TframKKSettingsWatchlist::SaveSettings() {
  TIniFileSectionWatchlist settings;
  IniFile().InOneWrite([&] {
    settings.SetUpdateOnStartup(chckbxUpdateOnStartup.Checked());
    settings.SetUpdateOnInterval(chckbxUpdateOnInterval.Checked());
    settings.SetUpdateIntervalInHrs(spnedtInterval.Value());
    settings.SetShowItemCountInTree(chckbxShowItemCount.Checked());
    settings.SetShowItemCountInTreeRecursive(chckbxShowItemCountRecursive.Checked());
    settings.SetShowAddDialog(chckbxShowAddDialog.Checked());
    settings.SetStoreLastSelectedSoundFile(chckbxStoreLastSelectedSoundfile.Checked());
    settings.SetSoundFile(edtSoundfile.Text());
    settings.SetAutoActivateReminder(chckbxAutoActivateReminder.Checked());
    settings.SetUseDefaultReminderTimes(rdbtnUseDefaultSettings.Checked());
    settings.SetDefaultReminderAfterTime(rdbtnTimeSpan.Checked());
    settings.SetDefaultReminderHours(spnedtHours.Value());
    settings.SetDefaultReminderMinutes(spnedtMinutes.Value());
    settings.SetDefaultReminderSeconds(spnedtSeconds.Value());
    settings.SetRelativeTimeIndex(cmbxTimeRelative.ItemIndex());
    settings.SetDefaultRemindType(cmbxRemindType.ItemIndex());
  });
}

bool TframKKSettingsWatchlist::ValidateSettings(TString& oMessage, TControl*& oControl) {
  oMessage.clear();
  oControl = nullptr;
  return true;
}

void TframKKSettingsWatchlist::chckbxUpdateOnIntervalClick(TObject*) {
  spnedtInterval.SetEnabled(chckbxUpdateOnInterval.Checked());
}

void TframKKSettingsWatchlist::chckbxShowItemCountClick(TObject*) {
  chckbxShowItemCountRecursive.SetEnabled(chckbxShowItemCount.Checked());
}

void TframKKSettingsWatchlist::btnSoundfileClick(TObject*) {
  TOpenDialog dialog;
  dialog.Title = _resSettingsSoundfileTitle;
  dialog.Filter = _resSettingsSoundfileFilter;
  dialog.FileMustExist = true;
  dialog.FileName = edtSoundfile.Text();
  if (dialog.Execute()) edtSoundfile.SetText(dialog.FileName);
}

void TframKKSettingsWatchlist::ValidateEnablings(TObject*) {
  const bool automatic = chckbxAutoActivateReminder.Checked();
  const bool defaults = automatic && rdbtnUseDefaultSettings.Checked();
  const bool span = defaults && rdbtnTimeSpan.Checked();
  const bool relative = defaults && rdbtnTimeRelative.Checked();
  const auto enable = [](bool iEnabled, std::initializer_list<TControl*> iControls) {
    for (TControl* control : iControls) control->SetEnabled(iEnabled);
  };
  enable(automatic, {&rdbtnUseLastSettings, &rdbtnUseDefaultSettings});
  enable(defaults,
         {&rdbtnTimeSpan, &rdbtnTimeRelative, &lblTimeRelative, &cmbxRemindType, &Label3});
  enable(span, {&spnedtHours, &lblHours, &spnedtMinutes, &lblMinutes, &spnedtSeconds, &lblSeconds});
  enable(relative, {&cmbxTimeRelative});
}

}  // namespace kk
