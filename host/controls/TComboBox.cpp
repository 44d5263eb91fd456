#include "host/controls/TComboBox.h"

#include "host/base/Exception.h"

namespace kk {

void TComboBox::AddItem(TStringView iText) {
  FItems.emplace_back(iText);
  Changed();
}

void TComboBox::Clear() {
  if (FItems.empty() && FText.empty()) return;
  FItems.clear();
  FItemIndex = -1;
  FText.clear();
  Changed();
}

void TComboBox::SetItemIndex(int iIndex) {
  if (iIndex == -1) {
    Put(-1, {});
  } else {
    Put(iIndex, FItems[CheckedIndex(iIndex, FItems.size())]);
  }
}

void TComboBox::SetText(TStringView iText) { Put(IndexOfText(iText), iText); }

bool TComboBox::Select(int iIndex) {
  return AsUser([this, iIndex] {
    if (iIndex < 0 || iIndex >= static_cast<int>(FItems.size())) return false;
    if (!Put(iIndex, FItems[static_cast<size_t>(iIndex)])) return false;
    if (FOnChange) FOnChange(this);
    return true;
  });
}

bool TComboBox::EnterText(TStringView iText) {
  return AsUser([this, iText] {
    if (!FEditable || !Put(IndexOfText(iText), iText)) return false;
    if (FOnChange) FOnChange(this);
    return true;
  });
}

int TComboBox::IndexOfText(TStringView iText) const {
  const auto search = [this](auto&& iEqual) {
    if (FItemIndex >= 0 && iEqual(FItems[static_cast<size_t>(FItemIndex)])) return FItemIndex;
    for (size_t i = 0; i < FItems.size(); ++i) {
      if (iEqual(FItems[i])) return static_cast<int>(i);
    }
    return -1;
  };
  const int exact = search([&](const TString& iEntry) { return iEntry == iText; });
  if (exact >= 0) return exact;
  return search([&](const TString& iEntry) { return SameText(iEntry, iText); });
}

bool TComboBox::Put(int iIndex, TStringView iText) {
  if (FItemIndex == iIndex && FText == iText) return false;
  FItemIndex = iIndex;
  FText = iText;
  Changed();
  return true;
}

}  // namespace kk
