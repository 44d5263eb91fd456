#include "host/controls/TKK5SkinExplorerGroup.h"

#include <algorithm>

#include "host/controls/TExplorerBar.h"

namespace kk {

TKK5SkinExplorerGroup::TKK5SkinExplorerGroup(TExplorerBar* iBar, TStringView iName,
                                             TStringView iTitle)
    : TCaptionControl(iBar, iName, iTitle) {}

TKK5SkinExplorerGroup::~TKK5SkinExplorerGroup() {
  for (const TItem& item : FItems) item->RemoveObserver(*this);
}

void TKK5SkinExplorerGroup::SetBar(TExplorerBar* iBar, const TKK5SkinExplorerGroup* iBefore) {
  SetParent(iBar, iBefore);
}

std::vector<TKK5SkinExplorerGroup::TItem> TKK5SkinExplorerGroup::VisibleItems() const {
  std::vector<TItem> visible;
  TItem line;  // stands between what is there and what may come
  for (const TItem& item : FItems) {
    if (!item->GetVisible()) continue;
    if (item->GetKind() == TExplorerBarItemKind::ikSeparator) {
      if (!visible.empty()) line = item;
      continue;
    }
    if (line) visible.push_back(std::exchange(line, nullptr));
    visible.push_back(item);
  }
  return visible;
}

void TKK5SkinExplorerGroup::AddItem(const TItem& iItem) {
  if (std::find(FItems.begin(), FItems.end(), iItem) != FItems.end()) return;
  const auto place = std::find_if(FItems.begin(), FItems.end(), [&](const TItem& iOther) {
    return iOther->GetSortOrder() > iItem->GetSortOrder();
  });
  iItem->AddObserver(*this);
  FItems.insert(place, iItem);
  Changed();
}

void TKK5SkinExplorerGroup::DeleteItem(const TItem& iItem) {
  const auto place = std::find(FItems.begin(), FItems.end(), iItem);
  if (place == FItems.end()) return;
  iItem->RemoveObserver(*this);
  FItems.erase(place);
  Changed();
}

void TKK5SkinExplorerGroup::ClearItems() {
  if (FItems.empty()) return;
  for (const TItem& item : std::exchange(FItems, {})) item->RemoveObserver(*this);
  Changed();
}

bool TKK5SkinExplorerGroup::ClickItem(const TItem& iItem) {
  const TItem item = iItem;  // may be taken out, and so die, in its own handler
  return AsUser([&] {
    if (!FExpanded || std::find(FItems.begin(), FItems.end(), item) == FItems.end()) return false;
    if (!item->GetVisible() || item->GetKind() != TExplorerBarItemKind::ikLink) return false;
    item->Click();
    return true;
  });
}

bool TKK5SkinExplorerGroup::ClickTitle() {
  return AsUser([this] {
    SetExpanded(!FExpanded);
    return true;
  });
}

void TKK5SkinExplorerGroup::ItemChanged(IExplorerBarItem& /*iItem*/) { Changed(); }

}  // namespace kk
