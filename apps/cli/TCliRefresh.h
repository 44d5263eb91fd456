#pragma once

#include "apps/cli/TCliArguments.h"
#include "apps/cli/TCliContext.h"

namespace kk {

/// "refresh": refreshes all, a category or an item, and waits for the end.
class TCliRefresh {
 public:
  explicit TCliRefresh(TCliContext& ioContext) : FContext(ioContext) {}
  /// False if something could not be refreshed or the user has interrupted.
  bool Run(const TCliArguments& iCall);

 private:
  int Start(const TWatchlistInfo& iTree, const TCliArguments& iCall);

  TCliContext& FContext;
};

}  // namespace kk
