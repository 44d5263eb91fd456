#pragma once

#include "host/options/TOptionsRow.h"

namespace kk {

/// A text of the settings' section "Communication" on a page. Main thread.
class TOptionsField : public TOptionsRow {
 public:
  /// iComplaint: what a user reads who has entered something else than the key takes
  /// (TCommunicationCheck).
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

 private:
  TString FComplaint;
};

}  // namespace kk
