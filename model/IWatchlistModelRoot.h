#pragma once

namespace kk {

class TWatchlistItem;
class TLstWatchlistCategory;

/// The owner of the model, as the model itself reaches it: items tell it of their coming and going,
/// and the tree asks it for its root. The handler implements it and installs itself while it lives.
/// Main thread.
class IWatchlistModelRoot {
 public:
  virtual ~IWatchlistModelRoot() = default;

  /// The item has got a search result.
  virtual void NotifyItemAdd(TWatchlistItem& iItem) = 0;
  /// The item is about to die; its fields are still valid.
  virtual void NotifyItemDelete(TWatchlistItem& iItem) = 0;
  virtual TLstWatchlistCategory& RootCategories() = 0;
};

/// The installed root; asking for it without one raises Exception. DeleteEmptyPlugins and the
/// attaching of search results need one. An item that dies without one dies untold.
IWatchlistModelRoot& WatchlistModelRoot();
bool HasWatchlistModelRoot();
/// Borrowed; answers the one before.
IWatchlistModelRoot* SetWatchlistModelRoot(IWatchlistModelRoot* iRoot);

}  // namespace kk
