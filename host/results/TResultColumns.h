#pragma once

#include <vector>

#include "host/results/TResultColumn.h"

namespace kk {

/// The columns of a table: by index in the order in which they were added, and the order of their
/// places. An index or a place out of range raises EListError. Main thread.
class TResultColumns {
 public:
  int GetCount() const { return static_cast<int>(FColumns.size()); }
  const TResultColumn& GetItems(int iIndex) const { return FColumns[Checked(iIndex)]; }
  const std::vector<int>& Order() const { return FOrder; }
  int IndexOf(const TGuid& iId) const;
  /// How many of them show.
  int VisibleCount() const;

  /// At the place given, 0 to GetCount; answers its index.
  int Add(TResultColumn iColumn, int iPlace);
  void Delete(int iIndex);
  // These answer whether anything is another now.
  bool SetVisible(int iIndex, bool iVisible);
  /// Within the bounds of TResultColumn.
  bool SetWidth(int iIndex, int iWidth);
  bool Move(int iIndex, int iPlace);

 private:
  size_t Checked(int iIndex) const;

  std::vector<TResultColumn> FColumns;
  std::vector<int> FOrder;
};

}  // namespace kk
