#pragma once

#include "host/contract/IWatchlistIntegration.h"

namespace kk {

class TWatchlistCategory;

/// What the category tree reaches of the section's other panes: the explorer bar and the tabs of
/// the sources. The form implements it; it lives as long as the tree. Main thread.
class IWatchlistPanes {
 public:
  virtual ~IWatchlistPanes() = default;

  /// The explorer bar tells about this category, or about none. It is called from within painting
  /// and must not raise.
  virtual void SetSelectedCategory(TWatchlistCategory* iCategory, bool iCanUpdate) = 0;
  /// The category that the explorer bar tells about; null for none.
  virtual TWatchlistCategory* GetCurrentCategory() const = 0;
  virtual void RestoreExplorerbarDefaultItems() = 0;

  /// This category, or none, is now on show. Before its tabs are.
  virtual void CategoryOnShow(const TWatchlistCategory* iCategory) = 0;
  virtual void HideAll() = 0;
  /// Tabs that are shown in between become visible together.
  virtual void BeginAdd() = 0;
  virtual void ShowIntegration(const TIntf<IWatchlistIntegration>& iIntegration) = 0;
  virtual void EndAdd() = 0;
  virtual void SelectIntegration(const TIntf<IWatchlistIntegration>& iIntegration) = 0;
};

}  // namespace kk
