#pragma once

#include <memory>

#include "host/contract/IWatchlistIntegration.h"
#include "host/controls/TKK5SkinHeaderItemTabExt.h"
#include "host/controls/TPanel.h"
#include "views/menus/TWatchlistContextMenuExtender.h"
#include "views/tabs/TNotifications.h"
#include "views/tabs/TabEvents.h"

namespace kk {

class TTabControlKK;

/// The tab of one source: its head in the strip, the panel that hosts the source's view, and the
/// two objects by which the view tells what happens in it. Each event has the tab as its sender.
/// Owned by the tab control, which it needs. Main thread.
class TTab : public TObject {
 public:
  struct TEvents {
    TNotifyEvent OnClick;
    TNotifyEvent OnSelectionChanged;
    TTabEventWithInterfaces OnDelete;
    TTabEventWithInterfaces OnUpdate;
    TTabEventCategoryWithInterfaces OnMove;
    TTabEventWithInterfaces OnEditDescription;
    TTabEventWithInterfaces OnReminderAdd;
    TTabEventWithInterfaces OnReminderDelete;
  };

  /// The head is invisible and the panel hidden at first. What the view raises passes on; it then
  /// has been told to let go of its list.
  TTab(const TIntf<IWatchlistIntegration>& iIntegration,
       const TIntf<IWatchlistVisualization>& iVisualization, TTabControlKK& iTabControl);
  /// Releases; what the view raises is swallowed.
  ~TTab() override;
  /// Takes the tab apart, after which it is empty and only good for dying. What the view raises
  /// passes on, when all that is the tab's own has gone. A second call does nothing.
  void Release();

  /// Empty after Release, as the next one.
  const TIntf<IWatchlistIntegration>& Integration() const { return FIntegration; }
  const TIntf<IWatchlistVisualization>& Visualization() const { return FVisualization; }
  /// Null after Release, as the next one.
  TKK5SkinHeaderItemTabExt* HeaderItem() const { return FHeaderItem.get(); }
  TPanel* Container() const { return FContainer.get(); }
  TTabControlKK& TabControl() const { return FTabControl; }
  TIntf<INotifications> Notifications() const { return FNotifications; }
  TIntf<IContextMenuExtender> ContextMenuExtender() const { return FContextMenuExtender; }
  TEvents& Events() { return FEvents; }

  bool IsVisible() const { return FHeaderItem && FHeaderItem->Visible(); }
  bool IsSelected() const { return FHeaderItem && FHeaderItem->Selected(); }
  /// Marks the head as selected and does what a click on it does.
  void Select();
  void Show();
  void Hide();
  /// What the view has registered; empty if it has not.
  TIntf<ISearchResults> GetSearchResults() const;

  /// Shows the panel in front and raises OnClick.
  void DoClick(TObject* Sender);
  void DoEnter(TObject* /*Sender*/) {}
  void DoLeave(TObject* Sender);
  /// Raises OnSelectionChanged if the tab is on show: a list in the background tells nobody.
  void DoSelectionChanged();
  void DoClose() {}
  void DoWaitFor() {}
  void DoUpdate(TObject* Sender, const TIntf<IInterfaceList>& iInterfaceList);
  void DoDelete(TObject* Sender, const TIntf<IInterfaceList>& iInterfaceList);
  void DoEditDescription(TObject* Sender, const TIntf<IInterfaceList>& iInterfaceList);
  void DoMove(TObject* Sender, TWatchlistCategory* iWatchlistCategory,
              const TIntf<IInterfaceList>& iInterfaceList);
  void DoReminderAdd(TObject* Sender, const TIntf<IInterfaceList>& iInterfaceList);
  void DoReminderDelete(TObject* Sender, const TIntf<IInterfaceList>& iInterfaceList);

 private:
  explicit TTab(TTabControlKK& iTabControl) : FTabControl(iTabControl) {}

  void InitHeaderTab();
  void InitResultListContainer();
  void InitNotifications();
  void InitContextMenuExtender();
  void FreeContainer();

  TTabControlKK& FTabControl;
  TIntf<IWatchlistIntegration> FIntegration;
  TIntf<IWatchlistVisualization> FVisualization;
  std::unique_ptr<TKK5SkinHeaderItemTabExt> FHeaderItem;
  std::unique_ptr<TPanel> FContainer;
  TIntf<TNotifications> FNotifications;
  TIntf<TWatchlistContextMenuExtender> FContextMenuExtender;
  TEvents FEvents;
};

/// The focused result of the tab's list; empty if it has none, or there is no tab. What the list
/// raises passes.
TIntf<ISearchResult> FocusedResultOf(const TTab* iTab);

}  // namespace kk
