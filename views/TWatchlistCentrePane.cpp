#include "views/TWatchlistCentrePane.h"

#include <algorithm>

#include "persistence/TWatchlistHandler.h"
#include "plugin/texts/UnitKKPluginWatchlistResourceStrings.h"

namespace kk {

TWatchlistCentrePane::TWatchlistCentrePane(TControl* iParent)
    : TPanel(iParent, u"pnlTabs"), lblNoItems(this, u"lblNoItems", _resNoItems) {
  SetStretches(true);
  pnlWatchlistContainer.SetStretches(true);
  lblNoItems.SetStretches(true);
  lblNoItems.SetCentered(true);
  ShowWhetherEmpty();
  if (Handler() == nullptr) return;
  Handler()->AddNotificationItem(TNotifyEvent::Of<&TWatchlistCentrePane::DoItemAdd>(this),
                                 TNotifyEvent::Of<&TWatchlistCentrePane::DoItemDelete>(this));
}

TWatchlistCentrePane::~TWatchlistCentrePane() {
  if (Handler() == nullptr) return;
  Handler()->RemoveNotificationItem(TNotifyEvent::Of<&TWatchlistCentrePane::DoItemAdd>(this),
                                    TNotifyEvent::Of<&TWatchlistCentrePane::DoItemDelete>(this));
}

void TWatchlistCentrePane::ShowWhetherEmpty() {
  const bool hasItems =
      Handler() != nullptr && std::ranges::any_of(Handler()->LstCategory(), [](const auto* iRoot) {
        return iRoot->GetItemCount(true) > 0;
      });
  SetEmpty(!hasItems);
}

void TWatchlistCentrePane::ShowCategory(const TWatchlistCategory* iCategory) {
  const bool isEmpty = iCategory != nullptr && iCategory->LstPlugin().GetCount() == 0;
  FOfCategory = isEmpty ? _resNoItemsInCategory : TStringView();
  ShowWhetherEmpty();
}

void TWatchlistCentrePane::SetEmpty(bool iEmpty) {
  const TStringView text = iEmpty ? _resNoItems : FOfCategory;
  if (!text.empty()) lblNoItems.SetCaption(text);
  lblNoItems.SetVisible(!text.empty());
  tbcntrlWatchlist.SetVisible(text.empty());
  pnlWatchlistContainer.SetVisible(text.empty());
}

// A result that is about to be put into the list counts already.
void TWatchlistCentrePane::DoItemAdd(TObject*) { SetEmpty(false); }

// A dying item hangs in no list any more.
void TWatchlistCentrePane::DoItemDelete(TObject*) { ShowWhetherEmpty(); }

}  // namespace kk
