#pragma once

#include "apps/cli/TCliArguments.h"
#include "apps/cli/TCliContext.h"

namespace kk {

/// "print": the items of a category as one PDF file, with the pages that the desktop prints. Main
/// thread.
class TCliPrint {
 public:
  /// Borrowed.
  explicit TCliPrint(TCliContext& ioContext) : FContext(ioContext) {}
  /// False if there is nothing to print, which leaves the file as it was. What goes wrong raises
  /// Exception.
  bool Run(const TCliArguments& iCall);

 private:
  TCliContext& FContext;
};

}  // namespace kk
