#include "sources/page/TPageResults.h"

#include <unordered_set>

#include "host/base/Exception.h"

namespace kk {

namespace {

template <class Function>
void ForEachResult(const TIntf<IInterfaceList>& iResults, Function iFunction) {
  if (!iResults) return;
  for (int i = 0; i < iResults->GetCount(); ++i) {
    if (const auto result = GetAs<ISearchResult>(*iResults, i)) iFunction(result);
  }
}

}  // namespace

TIntf<ISearchResult> TPageResults::GetItems(int iIndex) const {
  return FResults[CheckedIndex(iIndex, FResults.size())];
}

TIntf<ISearchResult> TPageResults::GetSelectedItems(int iIndex) const {
  return FResults[FIndexById.at(FSelected[CheckedIndex(iIndex, FSelected.size())])];
}

TIntf<ISearchResult> TPageResults::GetFocused() const {
  return FSelected.empty() ? TIntf<ISearchResult>() : GetSelectedItems(0);
}

bool TPageResults::Set(const TIntf<IInterfaceList>& iResults) {
  FResults.clear();
  ForEachResult(iResults, [&](const auto& iResult) { FResults.push_back(iResult); });
  Index();
  return SetSelected(FSelected);
}

bool TPageResults::Remove(const TIntf<IInterfaceList>& iResults) {
  std::unordered_set<TGuid> ids;
  ForEachResult(iResults, [&](const auto& iResult) { ids.insert(iResult->GetId()); });
  std::erase_if(FResults, [&](const auto& iResult) { return ids.contains(iResult->GetId()); });
  Index();
  return SetSelected(FSelected);
}

bool TPageResults::Select(const TIntf<IInterfaceList>& iResults) {
  std::vector<TGuid> ids;
  ForEachResult(iResults, [&](const auto& iResult) { ids.push_back(iResult->GetId()); });
  return SetSelected(std::move(ids));
}

void TPageResults::Replace(const TIntf<ISearchResult>& iResult) {
  if (!iResult) return;
  const auto entry = FIndexById.find(iResult->GetId());
  if (entry != FIndexById.end()) FResults[entry->second] = iResult;
}

void TPageResults::Index() {
  FIndexById.clear();
  for (size_t i = 0; i < FResults.size(); ++i) FIndexById.emplace(FResults[i]->GetId(), i);
}

bool TPageResults::SetSelected(std::vector<TGuid> iSelected) {
  std::erase_if(iSelected, [&](const TGuid& iId) { return !FIndexById.contains(iId); });
  if (iSelected == FSelected) return false;
  FSelected = std::move(iSelected);
  return true;
}

}  // namespace kk
