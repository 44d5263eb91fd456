#pragma once

#include "host/results/TResultView.h"

namespace kk {

/// A list of this source's results: its columns, and a double click, Return or an entry of the
/// popup menu that opens the page in the browser. Main thread.
class TPageList : public TResultView {
 public:
  /// iLayoutKey: under which the settings file keeps the table's layout. iEmptyText: what is told
  /// while there are no results.
  TPageList(TStringView iLayoutKey, TStringView iEmptyText);

 private:
  void DoOpenPage(TObject* Sender, const TIntf<ISearchResult>& iResult);
  void DoOpenFocused(TObject* Sender);
};

}  // namespace kk
