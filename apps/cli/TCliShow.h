#pragma once

#include "apps/cli/TCliArguments.h"
#include "apps/cli/TCliContext.h"

namespace kk {

/// "list" and "show".
class TCliShow {
 public:
  explicit TCliShow(TCliContext& ioContext) : FContext(ioContext) {}
  void List(bool iAsJson);
  void Item(TStringView iName, bool iAsJson);

 private:
  TCliContext& FContext;
};

}  // namespace kk
