#pragma once

#include "host/controls/TEdit.h"
#include "host/controls/TLabel.h"
#include "host/controls/TPanel.h"

namespace kk {

/// A key of the settings' section "Communication" on a page: a label and a line to edit it, in a
/// row. Main thread.
class TOptionsRow : public TObject {
 public:
  /// iName: what follows "pnl", "lbl" and "edt" in the controls' names.
  TOptionsRow(TPanel& ioFrame, TStringView iName, TStringView iCaption, TStringView iKey);

  TPanel Row;
  TLabel Label;
  TEdit Edit;

 protected:
  static constexpr TStringView cSection = u"Communication";
  const TString& Key() const { return FKey; }

 private:
  TString FKey;
};

}  // namespace kk
