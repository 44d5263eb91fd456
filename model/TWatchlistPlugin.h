#pragma once

#include "host/contract/IWatchlistIntegration.h"
#include "model/TLstWatchlistItem.h"

namespace kk {

class TLstWatchlistPlugin;

/// The items of one source inside a category: a group. Owned by the category's list of groups. Main
/// thread.
class TWatchlistPlugin : public TObject {
 public:
  explicit TWatchlistPlugin(TIntf<IWatchlistIntegration> iIntegration);

  const TIntf<IWatchlistIntegration>& Integration() const { return FIntegration; }
  TLstWatchlistItem& LstItem() { return FLstItem; }
  const TLstWatchlistItem& LstItem() const { return FLstItem; }
  /// For this run only; no stream stores it.
  bool Expanded() const { return FExpanded; }
  void SetExpanded(bool iExpanded) { FExpanded = iExpanded; }

  /// The integration's, asked on every call.
  TGuid GetId() const { return FIntegration->GetId(); }
  TString GetName() const { return FIntegration->GetName(); }

  /// The owning list in which the group hangs, if it does, and where in it.
  TLstWatchlistPlugin* List() const { return FPlace.List; }
  const TTreePlace<TLstWatchlistPlugin>& Place() const { return FPlace; }

 private:
  friend class TLstTree<TWatchlistPlugin, TLstWatchlistPlugin>;

  TTreePlace<TLstWatchlistPlugin> FPlace;  // first: dying items still ask for it
  TIntf<IWatchlistIntegration> FIntegration;
  TLstWatchlistItem FLstItem;
  bool FExpanded = false;
};

}  // namespace kk
