#include "reminders/editor/RemindText.h"

#include "host/contract/IWatchlistVisualization.h"
#include "model/IWatchlistModelRoot.h"
#include "model/TLstWatchlistCategory.h"

namespace kk {

TIntf<IReminderText> FindReminderText(const TGuid& iSearchResultId, TReminderTextKind iKind) {
  const TLstWatchlistCategory& root = WatchlistModelRoot().RootCategories();
  const TWatchlistItem* const item = root.FindItemById(iSearchResultId);
  const TWatchlistPlugin* const group = root.FindPluginByItemId(iSearchResultId);
  if (item == nullptr || group == nullptr || !item->SearchResult()) return {};
  const auto view = Supports<IWatchlistVisualization>(group->Integration());
  if (!view) return {};
  return view->GetReminderText(static_cast<uint8_t>(iKind), item->SearchResult());
}

}  // namespace kk
