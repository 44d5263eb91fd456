#pragma once

#include "host/base/TLstBase.h"
#include "views/tabs/TTab.h"

namespace kk {

/// Tabs in the order of their making, whatever the order of their heads. Main thread.
class TTabs : public TLstBase<TTab> {
 public:
  using TLstBase::TLstBase;

  TTab& Add(std::unique_ptr<TTab> iTab) { return Append(std::move(iTab)); }
  TTab& Add(TTab& iTab) { return Append(iTab); }
  /// An index out of range raises EListError.
  TTab& GetItems(int iIndex) const { return At(iIndex); }

  /// The first tab whose head is selected, visible or not; -1 if there is none.
  int IndexOfSelected() const;
  /// False if no tab is selected.
  bool IsSelectedVisible() const;
  /// Selects the first tab with a visible head; false if there is none.
  bool SelectFirstVisible() const;
};

}  // namespace kk
