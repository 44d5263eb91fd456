#pragma once

#include "host/base/TObject.h"
#include "host/contract/TCommonExplorerBarExtender.h"
#include "host/controls/TCommonExplorerBarItem.h"
#include "plugin/IExplorerBarExtenderMoreOptionsWatchList.h"

namespace kk {

/// Adds the link "Artikel beobachten..." to the explorer bar's panel of further options in another
/// plug-in's view. Main thread.
class TExplorerBarExtenderMoreOptionsWatchList
    : public TInterfaced<TCommonExplorerBarExtender, IExplorerBarExtenderMoreOptionsWatchList>,
      public TObject {
 public:
  TExplorerBarExtenderMoreOptionsWatchList();
  ~TExplorerBarExtenderMoreOptionsWatchList() override;

  /// Only to the panel of further options; OnItemAdd decides whether the link is to be seen, and
  /// without it it is.
  void AddItems(const TIntf<IExplorerBarPanel>& iExplorerBarPanel) override;

  TIntf<IExplorerBarItem> GetItem() const override { return FItem; }
  TNotifyEvent GetOnItemClick() const override { return FOnItemClick; }
  void SetOnItemClick(TNotifyEvent iEvent) override { FOnItemClick = iEvent; }
  TNotifyAdd GetOnItemAdd() const override { return FOnItemAdd; }
  void SetOnItemAdd(TNotifyAdd iEvent) override { FOnItemAdd = iEvent; }

 private:
  void DoItemClick(TObject* Sender);

  TNotifyEvent FOnItemClick;
  TNotifyAdd FOnItemAdd;
  TIntf<TCommonExplorerBarLink> FItem;
};

}  // namespace kk
