#pragma once

#include <cstdlib>

#include "TFuzzHost.h"
#include "persistence/TWatchlistHandler.h"
#include "tests/support/TFakeSource.h"
#include "tests/support/TTempFolder.h"

namespace kk {

/// A live list with an item, into which others come.
template <class TSource>
class TExchangeFuzzWorld {
 public:
  explicit TExchangeFuzzWorld(const TGuid& iSource)
      : Source(MakeIntf<TSource>(u"Quelle", iSource)) {
    CreateHandler(nullptr);
    Handler()->LstIntegration().Add(Source);
    TWatchlistCategory& category =
        Handler()->LstCategory().Add(std::make_unique<TWatchlistCategory>());
    category.SetId(FKept);
    category.SetName(u"Mein Eigen");
    category.LstPlugin()
        .FindOrAdd(Source)
        .LstItem()
        .Add(std::make_unique<TWatchlistItem>())
        .SetSearchResult(MakeIntf<TFakeSearchResult>(u"Uhr", FKept));
  }
  ~TExchangeFuzzWorld() {
    FreeHandler();
    FreeBuriedCategories();
  }
  TExchangeFuzzWorld(const TExchangeFuzzWorld&) = delete;
  TExchangeFuzzWorld& operator=(const TExchangeFuzzWorld&) = delete;

  /// Whatever came in: the item is there, and the list can be saved.
  void Check() const {
    const TWatchlistItem* item = Handler()->LstCategory().FindItemById(FKept);
    if (item == nullptr || item->GetName() != u"Uhr") std::abort();
    Handler()->SaveAll();
    if (Handler()->LastSaveFailed()) std::abort();
  }

  TTempFolder Folder{true};
  TFuzzHost Host;
  TIntf<TSource> Source;

 private:
  static constexpr TGuid FKept = GuidLiteral("{7E57AB1E-0000-0000-0000-000000000001}");
};

}  // namespace kk
