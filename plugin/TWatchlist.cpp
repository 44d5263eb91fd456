#include "plugin/TWatchlist.h"

#include "host/base/Log.h"
#include "persistence/TWatchlistHandler.h"
#include "plugin/InsertSearchResult.h"
#include "plugin/texts/UnitKKPluginWatchlistResourceStrings.h"

namespace kk {

namespace {

bool Reject(TStringView iReason) {
  LogInfo(_resLoggingSenderIWatchlist, iReason);
  return false;
}

}  // namespace

bool TWatchlist::HasItem(const TGuid& iTargetPluginId, const TIntf<ISearchResult>& iSearchResult) {
  return Handler() != nullptr && Handler()->HasSearchResult(iTargetPluginId, iSearchResult);
}

bool TWatchlist::AddItem(const TGuid& iTargetPluginId, const TIntf<ISearchResult>& iSearchResult) {
  LogInfo(_resLoggingSenderIWatchlist, _resLoggingInsertItem);
  if (!iSearchResult) return Reject(_resLoggingInsertItemEmpty);
  const int index =
      Handler() != nullptr ? Handler()->LstIntegration().IndexOfId(iTargetPluginId) : -1;
  if (index < 0) {
    return Reject(Format(_resLoggingInsertItemUnknownPlugin, {GUIDToString(iTargetPluginId)}));
  }
  if (HasItem(iTargetPluginId, iSearchResult)) return Reject(_resLoggingInsertItemAlreadyKnown);
  // No affiliate is followed: the result goes to exactly the source named.
  TWatchlistIntegration& integration = Handler()->LstIntegration().GetItems(index);
  TfrmKKWatchlist* form = FOnGetForm(this);
  if (form == nullptr) return Reject(_resRefusedNotReady);
  return InsertSearchResult(iSearchResult, integration, form) ||
         Reject(_resLoggingInsertItemRejectedByUser);
}

}  // namespace kk
