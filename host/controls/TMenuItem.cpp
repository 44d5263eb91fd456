#include "host/controls/TMenuItem.h"

#include "host/base/Exception.h"

namespace kk {

TMenuItem::~TMenuItem() { Clear(); }

TMenuItem& TMenuItem::GetItems(int iIndex) const {
  return *FItems[CheckedIndex(iIndex, FItems.size())];
}

TMenuItem& TMenuItem::Add(std::unique_ptr<TMenuItem> iItem) {
  iItem->SetParent(this);
  FItems.push_back(std::move(iItem));
  return *FItems.back();
}

TMenuItem& TMenuItem::Add(TStringView iCaption, TNotifyEvent iOnClick) {
  TMenuItem& item = Add(std::make_unique<TMenuItem>(iCaption));
  item.SetOnClick(iOnClick);
  return item;
}

void TMenuItem::Clear() { std::exchange(FItems, {}).clear(); }

}  // namespace kk
