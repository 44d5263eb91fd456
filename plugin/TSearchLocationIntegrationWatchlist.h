#pragma once

#include <memory>
#include <vector>

#include "host/contract/IContextMenuExtender.h"
#include "host/contract/INotifications.h"
#include "host/controls/TMenuItem.h"
#include "plugin/TExplorerBarExtenderMoreOptionsWatchList.h"
#include "views/columns/TAdditionalColumnsWatchlist.h"

namespace kk {

class TfrmKKWatchlist;

/// What the watch list adds to one result view of another plug-in: an entry of its context menu, a
/// link of its explorer bar and columns. All of them add results through AddSearchResults. The
/// columns and the link are objects of their own, which this one answers for. A view that can be
/// painted anew is, whenever an item comes or goes. Main thread.
class TSearchLocationIntegrationWatchlist
    : public TInterfaced<IContextMenuExtender, INotifications>,
      public TObject {
 public:
  /// iForm: borrowed; without one nothing is added. It may be gone by the time when the handler is.
  TSearchLocationIntegrationWatchlist(const TGuid& iPluginId, const TGuid& iSearchLocationPluginId,
                                      TfrmKKWatchlist* iForm);
  ~TSearchLocationIntegrationWatchlist() override;

  // IContextMenuExtender
  int GetCount() const override { return static_cast<int>(FMenuItems.size()); }
  TMenuItem& GetItems(int iIndex) override;
  void BeforeContextMenuPopup(const TIntf<ISearchResult>& iSearchResult,
                              const TGuid& iColumnId) override;

  // INotifications
  TIntf<ISearchResults> GetSearchResults() const override { return FSearchResults; }
  void SetSearchResults(const TIntf<ISearchResults>& iSearchResults) override;
  void SelectionChanged() override;
  void Close() override {}
  void WaitFor() override {}

  const TGuid& PluginId() const { return FPluginId; }

  /// Adds new results and moves known ones to the category that the user chooses; the results are
  /// of the view's source. Does nothing for a view whose source, or the source that keeps its
  /// results, is not registered.
  void AddSearchResults(const TIntf<IInterfaceList>& iList);

 protected:
  bool QueryDelegated(const TGuid& iIid, void** oInterface) override;

 private:
  void DoAddSelection(TObject* Sender);
  void DoItemAdd(TObject* Sender, bool& oVisible);
  void DoColumnAdd(TObject* Sender, const TIntf<ISearchResult>& iResult);
  void DoColumnCheck(TObject* /*Sender*/) {}
  void DoItemsChanged(TObject* Sender);

  TGuid FPluginId;
  TGuid FSearchLocationPluginId;
  TfrmKKWatchlist* FForm;
  std::vector<std::unique_ptr<TMenuItem>> FMenuItems;
  TIntf<ISearchResults> FSearchResults;
  TIntf<IExplorerBarExtenderMoreOptionsWatchList> FExplorerBarExtender;
  TIntf<TAdditionalColumnsWatchlist> FAdditionalColumns;
};

}  // namespace kk
