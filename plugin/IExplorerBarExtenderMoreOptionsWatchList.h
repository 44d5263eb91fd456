#pragma once

#include "host/base/TDelegate.h"
#include "host/contract/IExplorerBarExtender.h"

namespace kk {

/// Asks whether the link is to be seen.
using TNotifyAdd = TDelegate<void(TObject* Sender, bool& oVisible)>;

/// The link "Artikel beobachten..." as its owner sees it. It has no id: nobody queries it. Main
/// thread.
class IExplorerBarExtenderMoreOptionsWatchList : public IInterface {
 public:
  using TParent = IInterface;

  virtual TIntf<IExplorerBarItem> GetItem() const = 0;
  virtual TNotifyEvent GetOnItemClick() const = 0;
  /// Receivers take their events back (empty ones) before they die.
  virtual void SetOnItemClick(TNotifyEvent iEvent) = 0;
  virtual TNotifyAdd GetOnItemAdd() const = 0;
  virtual void SetOnItemAdd(TNotifyAdd iEvent) = 0;
};

}  // namespace kk
