#include "views/WatchlistModel.h"

#include "host/contract/ISearchResultUpdate.h"

namespace kk {

TLstWatchlistCategory& RootCategories() { return Handler()->LstCategory(); }

TWatchlistIntegration* FindIntegration(const TGuid& iPluginId) {
  const TLstWatchlistIntegration& integrations = Handler()->LstIntegration();
  const int index = integrations.IndexOfId(iPluginId);
  return index < 0 ? nullptr : &integrations.GetItems(index);
}

TWatchlistPlugin& GroupOf(const TWatchlistItem& iItem) { return *iItem.List()->Group(); }

TWatchlistCategory& CategoryOf(const TWatchlistPlugin& iGroup) {
  return *iGroup.List()->Category();
}

bool SupportsUpdate(const TIntf<IWatchlistIntegration>& iIntegration) {
  return static_cast<bool>(Supports<ISearchResultUpdate>(iIntegration));
}

TIntf<IInterfaceList> ListOf(const TIntf<ISearchResult>& iResult) {
  const TIntf<IInterfaceList> list = NewInterfaceList();
  list->Add(iResult);
  return list;
}

std::vector<TGuid> IdsOf(const IInterfaceList& iResults) {
  std::vector<TGuid> ids;
  for (int i = 0; i < iResults.GetCount(); ++i) {
    const auto result = GetAs<ISearchResult>(iResults, i);
    if (result) ids.push_back(result->GetId());
  }
  return ids;
}

}  // namespace kk
