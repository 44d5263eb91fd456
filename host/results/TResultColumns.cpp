#include "host/results/TResultColumns.h"

#include <algorithm>

#include "host/base/Exception.h"

namespace kk {

namespace {

int Bounded(int iWidth) {
  return std::clamp(iWidth, TResultColumn::cMinWidth, TResultColumn::cMaxWidth);
}

}  // namespace

size_t TResultColumns::Checked(int iIndex) const { return CheckedIndex(iIndex, FColumns.size()); }

int TResultColumns::IndexOf(const TGuid& iId) const {
  const auto column = std::find_if(FColumns.begin(), FColumns.end(),
                                   [&](const auto& iColumn) { return iColumn.Id == iId; });
  return column == FColumns.end() ? -1 : static_cast<int>(column - FColumns.begin());
}

int TResultColumns::VisibleCount() const {
  return static_cast<int>(std::count_if(FColumns.begin(), FColumns.end(),
                                        [](const auto& iColumn) { return iColumn.Visible; }));
}

int TResultColumns::Add(TResultColumn iColumn, int iPlace) {
  const size_t place = CheckedIndex(iPlace, FColumns.size() + 1);
  iColumn.Width = Bounded(iColumn.Width);
  FColumns.push_back(std::move(iColumn));
  FOrder.insert(FOrder.begin() + static_cast<ptrdiff_t>(place), GetCount() - 1);
  return GetCount() - 1;
}

void TResultColumns::Delete(int iIndex) {
  FColumns.erase(FColumns.begin() + static_cast<ptrdiff_t>(Checked(iIndex)));
  std::erase(FOrder, iIndex);
  for (int& index : FOrder) index -= index > iIndex ? 1 : 0;
}

bool TResultColumns::SetVisible(int iIndex, bool iVisible) {
  return std::exchange(FColumns[Checked(iIndex)].Visible, iVisible) != iVisible;
}

bool TResultColumns::SetWidth(int iIndex, int iWidth) {
  const int width = Bounded(iWidth);
  return std::exchange(FColumns[Checked(iIndex)].Width, width) != width;
}

bool TResultColumns::Move(int iIndex, int iPlace) {
  (void)Checked(iIndex);
  const auto from = std::find(FOrder.begin(), FOrder.end(), iIndex);
  const auto to = FOrder.begin() + static_cast<ptrdiff_t>(Checked(iPlace));
  if (from == to) return false;
  if (from < to) {
    std::rotate(from, from + 1, to + 1);
  } else {
    std::rotate(to, from, from + 1);
  }
  return true;
}

}  // namespace kk
