#include "persistence/exchange/TSameSearchResults.h"

#include "host/contract/ISearchResultSameKey.h"
#include "model/TLstWatchlistItem.h"
#include "model/TWatchlistPlugin.h"
#include "persistence/TWatchlistHandler.h"

namespace kk {

namespace {

constexpr int cStep = 1000;  // items

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

const TSameSearchResults::TSource& TSameSearchResults::SourceOf(const TGuid& iPluginId) {
  const auto known = FSources.find(iPluginId);
  if (known != FSources.end()) return known->second;
  TSource source;
  if (!LookThrough(iPluginId, true, source)) {
    source = {};
    LookThrough(iPluginId, false, source);
  }
  return FSources[iPluginId] = std::move(source);
}

// In the order of the scan: of several that are the same, the first one counts.
bool TSameSearchResults::LookThrough(const TGuid& iPluginId, bool iInSteps, TSource& oSource) {
  TLstWatchlistItem items(false);
  Handler()->LstCategory().GetItemsByPluginId(iPluginId, items, true);
  FHeard = false;
  int count = 0;
  for (const TWatchlistItem* item : items) {
    if (iInSteps && FOnStep && ++count % cStep == 0) FOnStep(this);
    if (FHeard) return false;
    if (!item->SearchResult()) continue;
    oSource.HasKeys = oSource.Enter(*item);
    if (!oSource.HasKeys) break;
  }
  return true;
}

void TSameSearchResults::DoItemAdd(TObject* Sender) {
  FHeard = true;
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

void TSameSearchResults::DoItemDelete(TObject*) {
  FHeard = true;
  FSources.clear();
}

}  // namespace kk
