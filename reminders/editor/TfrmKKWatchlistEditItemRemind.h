#pragma once

#include "host/controls/TCheckBox.h"
#include "host/controls/TComboBox.h"
#include "host/controls/TEdit.h"
#include "host/controls/TLabel.h"
#include "host/controls/TRadioButton.h"
#include "host/controls/TSpinEdit.h"
#include "host/controls/TStatusBar.h"
#include "host/controls/TfrmKKCommonBase.h"
#include "plugin/texts/UnitKKPluginWatchlistResourceStrings.h"
#include "reminders/TLstRemindItemForEdit.h"
#include "reminders/TRemindDetailsOutlook.h"

namespace kk {

/// The editor: when and how to be reminded of one or several articles. It shows the first reminder
/// of its list and sets up all of them. Messages and appointments are handed to their services
/// while it closes, so an accepted editor has sent them. Main thread.
class TfrmKKWatchlistEditItemRemind final : public TfrmKKCommonBase {
 public:
  /// Modal; true for OK. The list is private to the caller. After a cancel its reminders can be
  /// changed as well: a step that failed leaves those before it as they have become. What a source
  /// raises is told to the user, and the window stays open.
  static bool Display(TForm* iOwner, TLstRemindItemForEdit& ioLst);
  /// The same with the default settings and without a window; true. A reminder whose time would be
  /// past gets the time 0. A source that raises ends the setting up; those behind it stay as they
  /// were.
  static bool DisplayWithoutDisplaying(TForm* iOwner, TLstRemindItemForEdit& ioLst);

  /// Enters an appointment, local time, and keeps its entry id in the details. False on failure,
  /// which the user has been told then.
  static bool AddOutlookAppointment(TRemindDetailsOutlook& ioDetails, TDateTime iDateTime);
  /// Takes the appointment out of the calendar and empties the entry id, also if that failed: the
  /// appointment is abandoned then. Raises nothing; failures go to the log.
  static void DeleteOutlookAppointment(TRemindDetailsOutlook& ioDetails);

  void FormCloseQuery(TObject* Sender, bool& ioCanClose);
  void cmbxRemindTypeChange(TObject* Sender);
  void chckbxSoundfileClick(TObject* Sender);
  void btnSoundfileClick(TObject* Sender);
  /// The choice between the two ways to tell the time.
  void rdbtnTimeClick(TObject* Sender);
  /// Any of the figures behind that choice.
  void TimeChange(TObject* Sender);

  // Column by column: what stands in a row has a panel of its own.
  TLabel lblRemindType{this, u"lblRemindType", _resEditRemindType};
  TComboBox cmbxRemindType{this, u"cmbxRemindType"};
  TPanel pnlSoundfile{this, u"pnlSoundfile"};
  TCheckBox chckbxSoundfile{&pnlSoundfile, u"chckbxSoundfile"};
  TLabel lblSoundfile{&pnlSoundfile, u"lblSoundfile", _resEditRemindSoundFile};
  TEdit edtSoundFile{&pnlSoundfile, u"edtSoundFile"};
  TButton btnSoundfile{&pnlSoundfile, u"btnSoundfile", _resEditRemindChooseSoundFile};
  TPanel pnlTime{this, u"pnlTime"};
  TRadioButton rdbtnTimeSpan{&pnlTime, u"rdbtnTimeSpan", _resEditRemindTimeSpan};
  TPanel pnlTimeSpan{&pnlTime, u"pnlTimeSpan"};
  TSpinEdit spnedtHours{&pnlTimeSpan, u"spnedtHours"};
  TLabel lblHours{&pnlTimeSpan, u"lblHours", _resEditRemindHours};
  TSpinEdit spnedtMinutes{&pnlTimeSpan, u"spnedtMinutes"};
  TLabel lblMinutes{&pnlTimeSpan, u"lblMinutes", _resEditRemindMinutes};
  TSpinEdit spnedtSeconds{&pnlTimeSpan, u"spnedtSeconds"};
  TLabel lblSeconds{&pnlTimeSpan, u"lblSeconds", _resEditRemindSeconds};
  TRadioButton rdbtnTimeRelative{&pnlTime, u"rdbtnTimeRelative"};
  TPanel pnlTimeRelative{&pnlTime, u"pnlTimeRelative"};
  TComboBox cmbxTimeRelative{&pnlTimeRelative, u"cmbxTimeRelative"};
  TLabel lblTimeRelative{&pnlTimeRelative, u"lblTimeRelative", _resEditRemindTimeRelative};
  TPanel pnlButtons{this, u"pnlButtons"};
  TButton btnOK{&pnlButtons, u"btnOK", _resEditRemindOK, cModalOK};
  TButton btnCancel{&pnlButtons, u"btnCancel", _resEditRemindCancel, cModalCancel};
  TStatusBar stsbrTime{this, u"stsbrTime"};

 private:
  /// iLst: not empty; borrowed.
  TfrmKKWatchlistEditItemRemind(TForm* iOwner, TLstRemindItemForEdit& ioLst);

  // Filling.
  void SetData();
  void SetDataFromDefaultSettings();
  void SetSound();
  void SetTimes(int iHours, int iMinutes, int iSeconds, int iRelativeIndex, bool iIsTimeSpan);
  void UpdateSoundEnabling();
  void UpdateTimeEnabling();
  void ShowTime();

  // What is chosen.
  TRemindType SelectedType() const;
  /// With whole seconds, within the years 1 to 9999.
  TDateTime GetDateTime(const TRemindItemForEdit& iItem) const;

  // The checks before the window closes; each tells the user what it refuses.
  bool CheckSoundFile();
  bool CheckTimes();
  bool CheckEMail();
  bool CheckSms();

  // Taking over.
  bool GetData();
  bool GetData(TRemindItemForEdit& ioItem);
  void GetSound(TRemindItemForEdit& ioItem);
  void StoreSettings();
  bool PrepareRemindWindow(TRemindItemForEdit& ioItem);
  bool PrepareRemindEmail(TRemindItemForEdit& ioItem);
  bool PrepareRemindSMS(TRemindItemForEdit& ioItem);
  bool PrepareRemindOutlook(TRemindItemForEdit& ioItem);

  /// The moment it was opened: what a time span counts from, however long it stays open.
  TDateTime FStartNow;
  TLstRemindItemForEdit& FLst;
};

}  // namespace kk
