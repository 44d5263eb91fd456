#include "persistence/exchange/TSameSearchResults.h"

#include "host/contract/ISearchResultSameKey.h"
#include "model/TLstWatchlistItem.h"
#include "model/TWatchlistPlugin.h"
#include "persistence/TWatchlistHandler.h"

namespace kk {

namespace {

std::optional<TString> KeyOf(const TIntf<ISearchResult>& iResult) {
  const auto keyed = Supports<ISearchResultSameKey>(iResult);
  if (!keyed) return std::nullopt;
  return keyed->GetSameKey();
}

}  // namespace

TSameSearchResults::TSameSearchResults() {
  using TSelf = TSameSearchResults;
  Handler()->AddNotificationItem(TNotifyEvent::Of<&TSelf::DoItemAdd>(this),
                                 TNotifyEvent::Of<&TSelf::DoItemDelete>(this));
}

TSameSearchResults::~TSameSearchResults() {
  using TSelf = TSameSearchResults;
  Handler()->RemoveNotificationItem(TNotifyEvent::Of<&TSelf::DoItemAdd>(this),
                                    TNotifyEvent::Of<&TSelf::DoItemDelete>(this));
}

std::optional<TGuid> TSameSearchResults::Find(const TGuid& iPluginId,
                                              const TIntf<ISearchResult>& iResult) {
  const TSource& source = SourceOf(iPluginId);
  const auto key = source.HasKeys ? KeyOf(iResult) : std::nullopt;
  if (key) {
    const auto hit = source.IdByKey.find(*key);
    return hit == source.IdByKey.end() ? std::nullopt : std::optional(hit->second);
  }
  const auto same = Handler()->FindSameSearchResult(iPluginId, iResult);
  return same ? std::optional(same->GetId()) : std::nullopt;
}

bool TSameSearchResults::TSource::Enter(const TWatchlistItem& iItem) {
  const auto key = KeyOf(iItem.SearchResult());
  if (!key) return false;
  IdByKey.try_emplace(*key, iItem.SearchResultId());
  KeyById.try_emplace(iItem.SearchResultId(), *key);
  return true;
}

// In the order of the scan: of several that are the same, the first one counts.
const TSameSearchResults::TSource& TSameSearchResults::SourceOf(const TGuid& iPluginId) {
  const auto [place, isNew] = FSources.try_emplace(iPluginId);
  TSource& source = place->second;
  if (!isNew) return source;
  TLstWatchlistItem items(false);
  Handler()->LstCategory().GetItemsByPluginId(iPluginId, items, true);
  for (const TWatchlistItem* item : items) {
    if (!item->SearchResult()) continue;
    source.HasKeys = source.Enter(*item);
    if (!source.HasKeys) break;
  }
  return source;
}

void TSameSearchResults::DoItemAdd(TObject* Sender) {
  const auto& item = dynamic_cast<const TWatchlistItem&>(*Sender);
  const TWatchlistPlugin* group = item.List() != nullptr ? item.List()->Group() : nullptr;
  if (group == nullptr) return FSources.clear();
  const auto known = FSources.find(group->GetId());
  if (known == FSources.end()) return;
  TSource& source = known->second;
  const auto key = KeyOf(item.SearchResult());
  // A new one is entered. Where it may stand before others in the scan, or was refreshed and is
  // another article now, the source is looked through anew at the next question.
  const bool isNew =
      key && !source.IdByKey.contains(*key) && !source.KeyById.contains(item.SearchResultId());
  if (!isNew || !source.HasKeys || !source.Enter(item)) FSources.erase(known);
}

void TSameSearchResults::DoItemDelete(TObject*) { FSources.clear(); }

}  // namespace kk
