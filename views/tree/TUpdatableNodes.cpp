#include "views/tree/TUpdatableNodes.h"

#include <algorithm>

#include "host/contract/ISearchResultUpdate.h"
#include "persistence/TWatchlistHandler.h"
#include "views/tree/WatchlistNodes.h"

namespace kk {

namespace {

bool SupportsUpdate(const TWatchlistPlugin& iGroup) {
  return static_cast<bool>(Supports<ISearchResultUpdate>(iGroup.Integration()));
}

// Stops at the first group that does: it is asked at each change of the focus.
bool AnySupportsUpdate(const TLstWatchlistCategory& iCategories) {
  return std::any_of(
      iCategories.begin(), iCategories.end(), [](const TWatchlistCategory* iCategory) {
        const TLstWatchlistPlugin& groups = iCategory->LstPlugin();
        return std::any_of(
                   groups.begin(), groups.end(),
                   [](const TWatchlistPlugin* iGroup) { return SupportsUpdate(*iGroup); }) ||
               AnySupportsUpdate(iCategory->LstCategory());
      });
}

}  // namespace

TUpdatableNodes::TUpdatableNodes() {
  if (Handler() == nullptr) return;
  Handler()->AddNotificationItem(TNotifyEvent::Of<&TUpdatableNodes::DoItemAdd>(this),
                                 TNotifyEvent::Of<&TUpdatableNodes::DoItemDelete>(this));
}

TUpdatableNodes::~TUpdatableNodes() {
  if (Handler() == nullptr) return;
  Handler()->RemoveNotificationItem(TNotifyEvent::Of<&TUpdatableNodes::DoItemAdd>(this),
                                    TNotifyEvent::Of<&TUpdatableNodes::DoItemDelete>(this));
}

bool TUpdatableNodes::CanUpdateNode(const TVirtualNode* iNode) {
  if (iNode == nullptr) return false;
  if (const auto* item = ItemAt(iNode)) return CanUpdate(*item);
  if (const auto* group = GroupAt(iNode)) return CanUpdate(*group);
  TLstWatchlistPlugin groups(false);
  if (const auto* category = CategoryAt(iNode)) {
    category->GetPlugins(groups);
  } else {
    Handler()->LstCategory().GetPlugins(groups);
  }
  return AnyCanUpdate(groups);
}

bool TUpdatableNodes::AnySourceCanUpdate() { return AnySupportsUpdate(Handler()->LstCategory()); }

bool TUpdatableNodes::AnyCanUpdate(const TLstWatchlistPlugin& iGroups) {
  return std::any_of(iGroups.begin(), iGroups.end(),
                     [this](const TWatchlistPlugin* iGroup) { return CanUpdate(*iGroup); });
}

bool TUpdatableNodes::CanUpdate(const TWatchlistItem& iItem) {
  if (!iItem.CanUpdate()) return false;
  const auto* group = Handler()->LstCategory().FindPluginByItemId(iItem.SearchResultId());
  return group != nullptr && SupportsUpdate(*group);
}

bool TUpdatableNodes::CanUpdate(const TWatchlistPlugin& iGroup) {
  TState& state = FStates[&iGroup];
  if (!state.None) FindUpdatable(iGroup, state);
  return !state.None;
}

void TUpdatableNodes::FindUpdatable(const TWatchlistPlugin& iGroup, TState& ioState) {
  const TLstWatchlistItem& items = iGroup.LstItem();
  const int count = SupportsUpdate(iGroup) ? items.GetCount() : 0;
  // Around once, from where one was found before.
  for (int i = 0; i < count; ++i) {
    const int index = (ioState.Updatable + i) % count;
    if (!items.GetItems(index).CanUpdate()) continue;
    ioState.Updatable = index;
    return;
  }
  ioState.None = true;  // not where a result has failed to answer
}

void TUpdatableNodes::Forget(const TWatchlistItem& iItem) {
  const TWatchlistPlugin* group = iItem.List() == nullptr ? nullptr : iItem.List()->Group();
  if (group != nullptr) {
    Forget(*group);
  } else {
    ForgetAll();
  }
}

void TUpdatableNodes::DoItemAdd(TObject* Sender) {
  Forget(dynamic_cast<const TWatchlistItem&>(*Sender));
}

}  // namespace kk
