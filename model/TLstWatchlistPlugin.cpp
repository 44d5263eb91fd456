#include "model/TLstWatchlistPlugin.h"

#include "model/TWatchlistCategory.h"

#include "model/TreeSearch.h"

namespace kk {

TLstWatchlistPlugin::TLstWatchlistPlugin(bool iOwnsObjects, TWatchlistCategory* iCategory)
    : TLstTree(iOwnsObjects), FCategory(iCategory) {}

TLstWatchlistPlugin::~TLstWatchlistPlugin() { TLstWatchlistPlugin::Clear(); }

int TLstWatchlistPlugin::IndexOfId(const TGuid& iPluginId) const {
  for (int i = 0; i < GetCount(); ++i) {
    if (SameGuid(At(i).GetId(), iPluginId)) return i;
  }
  return -1;
}

TWatchlistPlugin* TLstWatchlistPlugin::FindById(const TGuid& iPluginId) const {
  const int index = IndexOfId(iPluginId);
  return index < 0 ? nullptr : &At(index);
}

TWatchlistPlugin& TLstWatchlistPlugin::FindOrAdd(const TIntf<IWatchlistIntegration>& iIntegration) {
  TWatchlistPlugin* group = FindById(iIntegration->GetId());
  return group != nullptr ? *group : Add(std::make_unique<TWatchlistPlugin>(iIntegration));
}

void TLstWatchlistPlugin::FindEmptyPlugins(TLstWatchlistPlugin& ioLst) const {
  for (TWatchlistPlugin* group : *this) {
    if (group->LstItem().GetCount() == 0) ioLst.Add(*group);
  }
}

TWatchlistItem* TLstWatchlistPlugin::FindItemById(const TGuid& iItemId) const {
  if (OwnsObjects()) {
    if (const auto item = FindItemBelow(*this, iItemId)) return *item;
  }
  for (TWatchlistPlugin* group : *this) {
    const int index = group->LstItem().IndexOfSearchResultId(iItemId);
    if (index >= 0) return &group->LstItem().GetItems(index);
  }
  return nullptr;
}

std::unique_ptr<TWatchlistItem> TLstWatchlistPlugin::RemoveItemById(const TGuid& iItemId) {
  return TakeOutItem(FindItemById(iItemId));
}

void TLstWatchlistPlugin::Attached(TWatchlistPlugin& iGroup) {
  TLstTree::Attached(iGroup);
  if (FCategory != nullptr) FCategory->ForgetItemCount();
}

void TLstWatchlistPlugin::Detached(TWatchlistPlugin& iGroup) {
  if (FCategory != nullptr) FCategory->ForgetItemCount();
  TLstTree::Detached(iGroup);
}

}  // namespace kk
