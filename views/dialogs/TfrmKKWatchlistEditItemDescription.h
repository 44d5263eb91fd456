#pragma once

#include "host/controls/TMemo.h"
#include "host/controls/TfrmKKCommonBase.h"
#include "plugin/texts/UnitKKPluginWatchlistResourceStrings.h"

namespace kk {

/// The editor of an item's note.
class TfrmKKWatchlistEditItemDescription final : public TfrmKKCommonBase {
 public:
  /// Modal; true for OK. Only then are the lines written back.
  static bool Display(TForm* iOwner, TStringList& ioLines);

  TMemo rchedtDescription{this, u"rchedtDescription"};
  TPanel pnlButtons{this, u"pnlButtons"};
  TButton btnOK{&pnlButtons, u"btnOK", _resEditOK, cModalOK};
  TButton btnCancel{&pnlButtons, u"btnCancel", _resEditCancel, cModalCancel};

 private:
  explicit TfrmKKWatchlistEditItemDescription(TForm* iOwner);
};

}  // namespace kk
