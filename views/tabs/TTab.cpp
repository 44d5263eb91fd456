#include "views/tabs/TTab.h"

#include "host/base/Guard.h"
#include "views/tabs/TTabControlKK.h"

namespace kk {

// From the end of the first constructor on the tab counts as made: a failure in this one ends it.
TTab::TTab(const TIntf<IWatchlistIntegration>& iIntegration,
           const TIntf<IWatchlistVisualization>& iVisualization, TTabControlKK& iTabControl)
    : TTab(iTabControl) {
  FIntegration = iIntegration;
  FVisualization = iVisualization;
  InitHeaderTab();
  InitResultListContainer();
  InitNotifications();
  InitContextMenuExtender();
}

TTab::~TTab() {
  Guarded(u"TTab", [this] { Release(); });
}

void TTab::InitHeaderTab() {
  FHeaderItem = std::make_unique<TKK5SkinHeaderItemTabExt>(FTabControl.TabControl(),
                                                           FVisualization->GetCaption());
  FHeaderItem->SetVisible(false);
  FHeaderItem->SetImage(FVisualization->GetImage());
  FHeaderItem->SetImageSelected(FVisualization->GetImageSelected());
  FHeaderItem->SetOnClick(TNotifyEvent::Of<&TTab::DoClick>(this));
  FHeaderItem->SetOnMouseEnter(TNotifyEvent::Of<&TTab::DoEnter>(this));
  FHeaderItem->SetOnMouseLeave(TNotifyEvent::Of<&TTab::DoLeave>(this));
}

void TTab::InitResultListContainer() {
  FContainer = std::make_unique<TPanel>(&FTabControl.Container());
  FContainer->SetVisible(false);
  FContainer->SetStretches(true);
  FVisualization->SetContainer(FContainer.get());
}

void TTab::InitNotifications() {
  using TCallback = TNotifications::TCallback;
  FNotifications = MakeIntf<TNotifications>(TCallback::Of<&TTab::DoSelectionChanged>(this),
                                            TCallback::Of<&TTab::DoClose>(this),
                                            TCallback::Of<&TTab::DoWaitFor>(this));
  FVisualization->AddExtension(FNotifications);
}

void TTab::InitContextMenuExtender() {
  using TEvent = TNotifyEventInterfaceList;
  TWatchlistContextMenuExtender::TEvents events;
  events.OnUpdate = TEvent::Of<&TTab::DoUpdate>(this);
  events.OnDelete = TEvent::Of<&TTab::DoDelete>(this);
  events.OnEditDescription = TEvent::Of<&TTab::DoEditDescription>(this);
  events.OnMove = TNotifyEventCategoryInterfaceList::Of<&TTab::DoMove>(this);
  events.OnReminderAdd = TEvent::Of<&TTab::DoReminderAdd>(this);
  events.OnReminderDelete = TEvent::Of<&TTab::DoReminderDelete>(this);
  FContextMenuExtender = MakeIntf<TWatchlistContextMenuExtender>(FVisualization, events);
  FVisualization->AddExtension(FContextMenuExtender);
}

void TTab::Release() {
  if (!FVisualization) return;
  struct TEnd {
    TTab& Tab;
    ~TEnd() { Tab.FreeContainer(); }
  } end{*this};
  if (FContainer) FContainer->SetVisible(false);
  FHeaderItem.reset();
  // The view and the extender hold each other; callbacks must not reach a tab that is gone.
  if (FContextMenuExtender) FContextMenuExtender->Detach();
  FContextMenuExtender = nullptr;
  FVisualization->ReleaseList();
  FVisualization->ReleaseListData();
}

void TTab::FreeContainer() {
  Guarded(u"TTab.FreeContainer", [this] { FVisualization->SetContainer(nullptr); });
  FVisualization = nullptr;
  FIntegration = nullptr;
  FContainer.reset();
  if (FNotifications) FNotifications->Detach();
  FNotifications = nullptr;
}

void TTab::Select() {
  if (FHeaderItem) {
    FHeaderItem->SetSelected(true);
    FTabControl.TabControl().Repaint();
  }
  DoClick(this);
}

void TTab::Show() {
  FHeaderItem->SetVisible(true);
  FVisualization->ShowList();
}

void TTab::Hide() {
  FHeaderItem->SetVisible(false);
  FContainer->SetVisible(false);
  FVisualization->HideList();
}

TIntf<ISearchResults> TTab::GetSearchResults() const {
  return FNotifications ? FNotifications->GetSearchResults() : nullptr;
}

void TTab::DoClick(TObject*) {
  if (!FContainer) return;
  FContainer->SetVisible(true);
  FContainer->BringToFront();
  if (FEvents.OnClick) FEvents.OnClick(this);
}

void TTab::DoLeave(TObject*) { FTabControl.TabControl().SetHint({}); }

void TTab::DoSelectionChanged() {
  if (FEvents.OnSelectionChanged && IsVisible() && IsSelected()) FEvents.OnSelectionChanged(this);
}

void TTab::DoUpdate(TObject*, const TIntf<IInterfaceList>& iInterfaceList) {
  if (FEvents.OnUpdate) FEvents.OnUpdate(this, *this, iInterfaceList);
}

void TTab::DoDelete(TObject*, const TIntf<IInterfaceList>& iInterfaceList) {
  if (FEvents.OnDelete) FEvents.OnDelete(this, *this, iInterfaceList);
}

void TTab::DoEditDescription(TObject*, const TIntf<IInterfaceList>& iInterfaceList) {
  if (FEvents.OnEditDescription) FEvents.OnEditDescription(this, *this, iInterfaceList);
}

void TTab::DoMove(TObject*, TWatchlistCategory* iWatchlistCategory,
                  const TIntf<IInterfaceList>& iInterfaceList) {
  if (FEvents.OnMove) FEvents.OnMove(this, *this, iWatchlistCategory, iInterfaceList);
}

void TTab::DoReminderAdd(TObject*, const TIntf<IInterfaceList>& iInterfaceList) {
  if (FEvents.OnReminderAdd) FEvents.OnReminderAdd(this, *this, iInterfaceList);
}

void TTab::DoReminderDelete(TObject*, const TIntf<IInterfaceList>& iInterfaceList) {
  if (FEvents.OnReminderDelete) FEvents.OnReminderDelete(this, *this, iInterfaceList);
}

TIntf<ISearchResult> FocusedResultOf(const TTab* iTab) {
  const TIntf<ISearchResults> results = iTab != nullptr ? iTab->GetSearchResults() : nullptr;
  return results ? results->GetFocused() : nullptr;
}

}  // namespace kk
