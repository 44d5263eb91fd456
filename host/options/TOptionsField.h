#pragma once

#include "host/controls/TEdit.h"
#include "host/controls/TLabel.h"
#include "host/controls/TPanel.h"

namespace kk {

/// A text of the settings' section "Communication" on a page: a label and a line to edit it, in a
/// row. Main thread.
class TOptionsField {
 public:
  /// iName: what follows "pnl", "lbl" and "edt" in the controls' names. iComplaint: what a user
  /// reads who has entered something else than the key takes (TCommunicationCheck).
  TOptionsField(TPanel& ioFrame, TStringView iName, TStringView iCaption, TStringView iKey,
                TStringView iComplaint = {});

  void Load();
  bool Validate(TString& oMessage, TControl*& oControl);
  /// A field that holds what the key does not take raises EConvertError.
  void Save();
  /// As it is stored; empty for none.
  TString Stored() const;
  /// What is in the field, without the blanks at its ends.
  TString Entered() const { return Trim(Edit.Text()); }

  TPanel Row;
  TLabel Label;
  TEdit Edit;

 private:
  TString FKey;
  TString FComplaint;
};

}  // namespace kk
