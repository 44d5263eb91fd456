#pragma once

#include "host/base/IInterfaceList.h"
#include "host/contract/IContextMenuExtender.h"
#include "host/contract/ISearchResults.h"
#include "host/contract/IWatchlistVisualization.h"
#include "host/controls/TMenuItem.h"
#include "model/TWatchlistCategory.h"

namespace kk {

/// A command for these results; the sender is the extender.
using TNotifyEventInterfaceList =
    TDelegate<void(TObject* Sender, const TIntf<IInterfaceList>& iInterfaceList)>;
/// The same with the category that the results go to.
using TNotifyEventCategoryInterfaceList =
    TDelegate<void(TObject* Sender, TWatchlistCategory* iWatchlistCategory,
                   const TIntf<IInterfaceList>& iInterfaceList)>;

/// The section's entries in the context menu of a source's view. Before each opening it decides
/// what can be done with the results of the view; a click becomes an event with the results that
/// it means. It holds the view, and the view holds it, until Detach. Main thread.
class TWatchlistContextMenuExtender : public TInterfaced<IContextMenuExtender>, public TObject {
 public:
  struct TEvents {
    TNotifyEventInterfaceList OnUpdate;
    TNotifyEventInterfaceList OnDelete;
    TNotifyEventInterfaceList OnEditDescription;
    TNotifyEventCategoryInterfaceList OnMove;
    TNotifyEventInterfaceList OnReminderAdd;
    TNotifyEventInterfaceList OnReminderDelete;
  };

  /// Whether the view can refresh is asked here, once for the entries' being there at all. Who
  /// receives the events detaches the extender before it dies.
  TWatchlistContextMenuExtender(TIntf<IWatchlistVisualization> iVisualization,
                                const TEvents& iEvents);

  // IContextMenuExtender
  int GetCount() const override { return static_cast<int>(FMenuItems.size()); }
  TMenuItem& GetItems(int iIndex) override;
  /// Does not look at its arguments: what counts is the selection.
  void BeforeContextMenuPopup(const TIntf<ISearchResult>& iSearchResult,
                              const TGuid& iColumnId) override;

  /// New lists of the view's results in its order; empty ones for a view without ISearchResults.
  TIntf<IInterfaceList> GetAll() const;
  TIntf<IInterfaceList> GetSelected() const;
  /// Those whose end has passed by the exact time.
  TIntf<IInterfaceList> GetFinished() const;
  /// Over all results of the view.
  bool HasWithEndDate() const;
  bool HasAtLeastOneFinished() const;

  /// May be changed at any time; an empty event is not raised.
  TEvents& Events() { return FEvents; }
  /// Lets go of the view and of the events; the entries do nothing any more. A view may keep the
  /// extension for longer than its tab lives.
  void Detach();

 private:
  TMenuItem& Add(TStringView iCaption, TNotifyEvent iOnClick = {}, TStringView iShortCut = {});
  void InitMenuItems();
  void PrepareRefreshItems(const TIntf<ISearchResults>& iResults);
  void DoClickRefreshSelected(TObject* Sender);
  void DoClickRefreshAll(TObject* Sender);
  void DoClickMoveSelected(TObject* Sender);
  void DoClickDeleteSelected(TObject* Sender);
  void DoClickDeleteFinished(TObject* Sender);
  void DoClickDeleteAll(TObject* Sender);
  void DoClickDescription(TObject* Sender);
  void DoClickReminderAdd(TObject* Sender);
  void DoClickReminderDelete(TObject* Sender);

  TIntf<IWatchlistVisualization> FIntegration;
  std::vector<std::unique_ptr<TMenuItem>> FMenuItems;
  TMenuItem* FMenuItemReminderAdd = nullptr;
  TMenuItem* FMenuItemReminderDelete = nullptr;
  TMenuItem* FMenuItemRefreshSelected = nullptr;
  TMenuItem* FMenuItemRefreshAll = nullptr;
  TMenuItem* FMenuItemMoveSelected = nullptr;
  TMenuItem* FMenuItemDeleteSelected = nullptr;
  TMenuItem* FMenuItemDeleteFinished = nullptr;
  TMenuItem* FMenuItemDeleteAll = nullptr;
  TMenuItem* FMenuItemDescription = nullptr;
  TEvents FEvents;
};

}  // namespace kk
