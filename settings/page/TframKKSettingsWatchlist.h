#pragma once

#include "host/controls/TButton.h"
#include "host/controls/TCheckBox.h"
#include "host/controls/TComboBox.h"
#include "host/controls/TEdit.h"
#include "host/controls/TLabel.h"
#include "host/controls/TPanel.h"
#include "host/controls/TRadioButton.h"
#include "host/controls/TSpinEdit.h"
#include "plugin/texts/UnitKKPluginWatchlistResourceStrings.h"

namespace kk {

/// What a user sees of the settings of the watch list: its section of the settings file, control by
/// control. It keeps no copy of the settings. Main thread.
class TframKKSettingsWatchlist final : public TPanel {
 public:
  TframKKSettingsWatchlist();

  void LoadSettings();
  /// As one write; EInOutError if it fails, and nothing is saved then.
  void SaveSettings();
  /// There is no rule that can fail: no message, no control, true.
  bool ValidateSettings(TString& oMessage, TControl*& oControl);
  void SettingsChanged() {}

  void chckbxUpdateOnIntervalClick(TObject* Sender);
  void chckbxShowItemCountClick(TObject* Sender);
  void btnSoundfileClick(TObject* Sender);
  /// What can be set depends on the choices around the reminders.
  void ValidateEnablings(TObject* Sender = nullptr);

  // Column by column: what stands in a row has a panel of its own.
  TPanel pnlUpdate{this, u"pnlUpdate", _resSettingsUpdate};
  TCheckBox chckbxUpdateOnStartup{&pnlUpdate, u"chckbxUpdateOnStartup",
                                  _resSettingsUpdateOnStartup};
  TPanel pnlInterval{&pnlUpdate, u"pnlInterval"};
  TCheckBox chckbxUpdateOnInterval{&pnlInterval, u"chckbxUpdateOnInterval",
                                   _resSettingsUpdateOnInterval};
  TSpinEdit spnedtInterval{&pnlInterval, u"spnedtInterval"};
  TLabel lblInterval{&pnlInterval, u"lblInterval", _resSettingsInterval};

  TPanel pnlView{this, u"pnlView", _resSettingsView};
  TCheckBox chckbxShowAddDialog{&pnlView, u"chckbxShowAddDialog", _resSettingsShowAddDialog};
  TCheckBox chckbxShowItemCount{&pnlView, u"chckbxShowItemCount", _resSettingsShowItemCount};
  TCheckBox chckbxShowItemCountRecursive{&pnlView, u"chckbxShowItemCountRecursive",
                                         _resSettingsShowItemCountRecursive};

  TPanel pnlReminder{this, u"pnlReminder", _resSettingsReminder};
  TPanel pnlSoundfile{&pnlReminder, u"pnlSoundfile"};
  TLabel lblSoundfile{&pnlSoundfile, u"lblSoundfile", _resSettingsSoundfile};
  TEdit edtSoundfile{&pnlSoundfile, u"edtSoundfile"};
  TButton btnSoundfile{&pnlSoundfile, u"btnSoundfile", _resSettingsChooseSoundfile};
  TCheckBox chckbxStoreLastSelectedSoundfile{&pnlReminder, u"chckbxStoreLastSelectedSoundfile",
                                             _resSettingsStoreLastSelectedSoundfile};
  TCheckBox chckbxAutoActivateReminder{&pnlReminder, u"chckbxAutoActivateReminder",
                                       _resSettingsAutoActivateReminder};
  TRadioButton rdbtnUseLastSettings{&pnlReminder, u"rdbtnUseLastSettings",
                                    _resSettingsUseLastSettings};
  TRadioButton rdbtnUseDefaultSettings{&pnlReminder, u"rdbtnUseDefaultSettings",
                                       _resSettingsUseDefaultSettings};

  // Moved to the right, as what belongs to the choice above.
  TPanel pnlDefaults{&pnlReminder, u"pnlDefaults"};
  TPanel pnlIndent{&pnlDefaults, u"pnlIndent"};
  TPanel pnlDefaultReminderSettings{&pnlDefaults, u"pnlDefaultReminderSettings"};
  TPanel pnlRemindType{&pnlDefaultReminderSettings, u"pnlRemindType"};
  TLabel Label3{&pnlRemindType, u"Label3", _resSettingsRemindType};
  TComboBox cmbxRemindType{&pnlRemindType, u"cmbxRemindType"};
  TRadioButton rdbtnTimeSpan{&pnlDefaultReminderSettings, u"rdbtnTimeSpan", _resSettingsTimeSpan};
  TPanel pnlTimeSpan{&pnlDefaultReminderSettings, u"pnlTimeSpan"};
  TSpinEdit spnedtHours{&pnlTimeSpan, u"spnedtHours"};
  TLabel lblHours{&pnlTimeSpan, u"lblHours", _resSettingsHours};
  TSpinEdit spnedtMinutes{&pnlTimeSpan, u"spnedtMinutes"};
  TLabel lblMinutes{&pnlTimeSpan, u"lblMinutes", _resSettingsMinutes};
  TSpinEdit spnedtSeconds{&pnlTimeSpan, u"spnedtSeconds"};
  TLabel lblSeconds{&pnlTimeSpan, u"lblSeconds", _resSettingsSeconds};
  TRadioButton rdbtnTimeRelative{&pnlDefaultReminderSettings, u"rdbtnTimeRelative"};
  TPanel pnlTimeRelative{&pnlDefaultReminderSettings, u"pnlTimeRelative"};
  TComboBox cmbxTimeRelative{&pnlTimeRelative, u"cmbxTimeRelative"};
  TLabel lblTimeRelative{&pnlTimeRelative, u"lblTimeRelative", _resSettingsTimeRelative};
};

}  // namespace kk
