#include "persistence/CatchAllCategory.h"

#include "plugin/texts/UnitKKPluginWatchlistResourceStrings.h"

namespace kk {

void AddCatchAllCategory(TLstWatchlistCategory& ioLst) {
  auto category = std::make_unique<TWatchlistCategory>();
  category->SetId(cEmptyGuid);
  category->SetName(_resEmptyCategoryName);
  ioLst.Add(std::move(category));
}

}  // namespace kk
