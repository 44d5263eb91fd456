#pragma once

#include "host/controls/TMenuItem.h"
#include "host/controls/TTabStrip.h"
#include "views/tabs/TTabs.h"

namespace kk {

/// The tabs of the section: one for each source with a view, made once and for good. A change of
/// category shows and hides them, in one step of the strip. What happens in a tab is told by the
/// events, which have the control as their sender. Main thread.
class TTabControlKK : public TObject {
 public:
  struct TEvents {
    TSwitchTabEvent OnSwitchTab;
    TTabEvent OnTabSelectionChanged;
    TTabEventWithInterfaces OnTabUpdate;
    TTabEventWithInterfaces OnTabDelete;
    TTabEventWithInterfaces OnTabEditDescription;
    TTabEventCategoryWithInterfaces OnTabMove;
    TTabEventWithInterfaces OnTabReminderAdd;
    TTabEventWithInterfaces OnTabReminderDelete;
  };

  /// Strip and container are borrowed and outlive the control.
  TTabControlKK(TTabStrip& iTabControl, TPanel& iContainer);
  /// Takes all tabs apart; what their views raise is swallowed.
  ~TTabControlKK() override;

  /// Makes the tab, invisible, and answers its index.
  int AddIntegration(const TIntf<IWatchlistIntegration>& iIntegration,
                     const TIntf<IWatchlistVisualization>& iVisualization);

  /// Opens a change of several tabs; does nothing in one that is open.
  void BeginAdd();
  /// Ends the change: the selected tab stays if it is visible, else the first visible one is
  /// selected. The switch is raised in any case but that of no tab before and after. Does nothing
  /// without BeginAdd.
  void EndAdd();
  void HideAll();
  /// Nothing for an integration without a tab, here and below.
  void ShowIntegration(const TIntf<IWatchlistIntegration>& iIntegration);
  /// Nothing for a tab that is hidden.
  void SelectIntegration(const TIntf<IWatchlistIntegration>& iIntegration);

  TTabs& Tabs() { return FTabs; }
  TTabStrip& TabControl() const { return FTabControl; }
  TPanel& Container() const { return FContainer; }
  /// -1 until a tab was selected; it stays where no tab is visible any more.
  int CurrentIndex() const { return FCurrentIndex; }
  bool Adding() const { return FAdding; }
  /// Made since BeginAdd.
  const TTabs& AddedTabs() const { return FAddedTabs; }
  /// Null or empty if there is none.
  TTab* GetCurrentTab() const { return TabAt(FCurrentIndex); }
  TTab* FindTab(const TIntf<IWatchlistIntegration>& iIntegration) const;
  TIntf<IWatchlistIntegration> GetCurrentIntegration() const;
  /// An index out of range raises EListError.
  TIntf<IWatchlistIntegration> GetIntegrations(int iIndex) const;
  TEvents& Events() { return FEvents; }

  /// Redraws the result's row in every tab, since it may be on show in several. A view that fails
  /// does not keep the others from being told.
  void RefreshSearchResult(const TIntf<ISearchResult>& iSearchResult);
  /// Takes all tabs apart. What a view raises passes on; its tab has gone then.
  void Clear();
  /// As Clear, but the current index stays. False, always.
  bool CloseTabs();
  /// The visible tabs by their menu captions, the selected one checked. The entries are good for as
  /// long as the menu is open.
  void FillChevronMenu(TMenuItem& ioMenu);

 private:
  TTab* TabAt(int iIndex) const;
  void DoSwitchTab(int iFrom, int iTo);
  void DoSwitchTab(TTab* iFrom, TTab* iTo);
  void DoClickChevronItem(TObject* Sender);
  void DoTabControlBeforeChange(TObject* Sender, bool& oResult);
  void DoTabClick(TObject* Sender);
  void DoTabSelectionChanged(TObject* Sender);
  void DoTabUpdate(TObject* Sender, TTab& iTab, const TIntf<IInterfaceList>& iInterfaceList);
  void DoTabDelete(TObject* Sender, TTab& iTab, const TIntf<IInterfaceList>& iInterfaceList);
  void DoTabEditDescription(TObject* Sender, TTab& iTab,
                            const TIntf<IInterfaceList>& iInterfaceList);
  void DoTabMove(TObject* Sender, TTab& iTab, TWatchlistCategory* iWatchlistCategory,
                 const TIntf<IInterfaceList>& iInterfaceList);
  void DoTabReminderAdd(TObject* Sender, TTab& iTab, const TIntf<IInterfaceList>& iInterfaceList);
  void DoTabReminderDelete(TObject* Sender, TTab& iTab,
                           const TIntf<IInterfaceList>& iInterfaceList);

  TTabs FTabs{true};
  TTabStrip& FTabControl;
  TPanel& FContainer;
  int FCurrentIndex = -1;
  bool FAdding = false;
  TTabs FAddedTabs{false};
  TEvents FEvents;
};

}  // namespace kk
