#pragma once

#include <map>

#include "apps/cli/TCliContext.h"

namespace kk {

class TExampleShop;

/// "demo": watches three articles of the example shop while their prices change.
class TCliDemo {
 public:
  TCliDemo(TCliContext& ioContext, TExampleShop& ioShop) : FContext(ioContext), FShop(ioShop) {}
  /// False if anything failed or the user has interrupted.
  bool Run();

 private:
  using TValues = std::vector<std::pair<TString, TString>>;
  using TSnapshot = std::map<TGuid, TValues>;

  bool Add();
  bool Refresh();
  TSnapshot Snapshot() const;
  void PrintChanges(const TSnapshot& iBefore);
  void Conclude();

  TCliContext& FContext;
  TExampleShop& FShop;
};

}  // namespace kk
