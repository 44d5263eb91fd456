#pragma once

#include "host/base/TDateTime.h"
#include "host/controls/TCheckBox.h"
#include "host/controls/TComboBox.h"
#include "host/controls/TEdit.h"
#include "host/controls/TLabel.h"
#include "host/controls/TRadioButton.h"
#include "host/controls/TSpinEdit.h"
#include "host/controls/TStatusBar.h"
#include "host/controls/TfrmKKCommonBase.h"

namespace kk {

/// The editor of reminders as the watch list has it, with the rules that a caller meets: a sound
/// file that is there, and a time that is not past.
class TFakeRemindEditor : public TfrmKKCommonBase {
 public:
  /// iStart: the moment that spans count from.
  TFakeRemindEditor(TDateTime iStart, TDateTime iEnd);

  TDateTime Time() const;

  TComboBox cmbxRemindType{this, u"cmbxRemindType"};
  TPanel pnlSoundfile{this, u"pnlSoundfile"};
  TCheckBox chckbxSoundfile{&pnlSoundfile, u"chckbxSoundfile"};
  TEdit edtSoundFile{&pnlSoundfile, u"edtSoundFile"};
  TPanel pnlTime{this, u"pnlTime"};
  TRadioButton rdbtnTimeSpan{&pnlTime, u"rdbtnTimeSpan", u"Nach Ablauf von"};
  TPanel pnlTimeSpan{&pnlTime, u"pnlTimeSpan"};
  TSpinEdit spnedtHours{&pnlTimeSpan, u"spnedtHours"};
  TSpinEdit spnedtMinutes{&pnlTimeSpan, u"spnedtMinutes"};
  TSpinEdit spnedtSeconds{&pnlTimeSpan, u"spnedtSeconds"};
  TRadioButton rdbtnTimeRelative{&pnlTime, u"rdbtnTimeRelative"};
  TPanel pnlTimeRelative{&pnlTime, u"pnlTimeRelative"};
  TComboBox cmbxTimeRelative{&pnlTimeRelative, u"cmbxTimeRelative"};
  TPanel pnlButtons{this, u"pnlButtons"};
  TButton btnOK{&pnlButtons, u"btnOK", u"&OK", cModalOK};
  TButton btnCancel{&pnlButtons, u"btnCancel", u"&Abbrechen", cModalCancel};
  TStatusBar stsbrTime{this, u"stsbrTime"};

 private:
  void KindChange(TObject* Sender);
  void TimeChange(TObject* Sender);
  void CloseQuery(TObject* Sender, bool& ioCanClose);

  const TDateTime FStart;
  const TDateTime FEnd;
};

}  // namespace kk
