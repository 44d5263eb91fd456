#pragma once

#include "host/results/TResultView.h"

namespace kk {

/// A list of this source's results: its columns, and a double click, Return or an entry of the
/// popup menu that opens the page in the browser. Main thread.
class TPageList : public TResultView {
 public:
  /// iEmptyText: what is told while there are no results.
  explicit TPageList(TStringView iEmptyText);

 private:
  void DoOpenPage(TObject* Sender, const TIntf<ISearchResult>& iResult);
  void DoOpenFocused(TObject* Sender);
};

}  // namespace kk
