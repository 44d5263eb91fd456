#include "views/TfrmKKWatchlist.h"

#include <utility>

#include "host/base/Guard.h"
#include "host/base/TClock.h"
#include "host/common/TIniFileSectionBase.h"
#include "host/contract/IReminderHost.h"
#include "host/controls/IMouseWheel.h"
#include "persistence/exchange/TfrmKKWatchlistExport.h"
#include "reminders/TRemindHandler.h"
#include "settings/TIniFileSectionWatchlist.h"
#include "views/WatchlistModel.h"
#include "views/explorerbar/ExplorerbarDefaultItems.h"
#include "views/print/TfrmKKWatchlistPrint.h"
#include "views/tabs/BuildTabs.h"

namespace kk {

namespace {

constexpr int cInitializeDelayMs = 300;
constexpr int cMinWidth = 600;
constexpr int cMinHeight = 520;

// One that comes and goes within a command leaves refreshing by itself to one that stays: it would
// begin it, and with that the user's interval, and not bring it to an end.
bool StaysHost(const TIntf<IApplication>& iApplication) {
  const auto host = Supports<IReminderHost>(iApplication);
  return !host || host->DeliversReminders();
}

}  // namespace

TfrmKKWatchlist::TfrmKKWatchlist()
    : TfrmKKCommonSectionBase(nullptr, u"TfrmKKWatchlist", _resToolButtonCaption) {
  using TSelf = TfrmKKWatchlist;
  SetMinSize(cMinWidth, cMinHeight);
  SetOnClose(TNotifyEvent::Of<&TSelf::FormClose>(this));
  FFormAddProgress.SetOnShow(TNotifyEvent::Of<&TSelf::DoShowFormAddProgress>(this));
  FFormAddProgress.SetOnClose(TNotifyEvent::Of<&TSelf::DoCloseFormAddProgress>(this));
}

TfrmKKWatchlist::~TfrmKKWatchlist() {
  StopDelay();
  BindReminders(false);
  BindColumns(false);
  BindUpdaters(false);
  BindSettings(false);
  FPanes.FreeExplorerBar();
  FToolbar.reset();
  FPanes.FreeTabControl();
}

TGuid TfrmKKWatchlist::GetFormID() const { return cMainMenuFormIDWatchlist; }

TString TfrmKKWatchlist::GetIniSectionName() const { return TString(cSettingsSectionWatchlist); }

void TfrmKKWatchlist::Loaded() {
  SetCaption(_resToolButtonCaption);
  TfrmKKCommonSectionBase::Loaded();
}

void TfrmKKWatchlist::Initialize(const TIntf<IApplication>& iApplication) {
  TfrmKKCommonSectionBase::Initialize(iApplication);
  BindSettings(true);
  FPanes.Tree.DoChangeIniFile(nullptr);
  FToolbar = std::make_unique<TCommonToolbarKK>(iApplication, cPluginId, tlbrNavigation);
  FAutoRefresh.SetEnabled(StaysHost(iApplication));
  if (!TIniFileSectionGeneral().GetDelayedStart()) {
    InitializeWithDelay();
    return;
  }
  FDelayTimer =
      MainLoop().StartTimer(cInitializeDelayMs, [this] { tmrInitializeWithDelayTimer(); });
}

void TfrmKKWatchlist::tmrInitializeWithDelayTimer() {
  StopDelay();
  InitializeWithDelay();
}

void TfrmKKWatchlist::StopDelay() {
  const auto timer = std::exchange(FDelayTimer, 0);
  if (timer != 0) MainLoop().StopTimer(timer);
}

void TfrmKKWatchlist::InitializeWithDelay() {
  // First, so that a failure does not make it run again.
  if (std::exchange(FInitialized, true)) return;
  FTabCommands.Bind(FPanes.MakeTabControl().Events());
  BuildCategoriesTree(false);
  BuildTabs(*FPanes.TabControl());
  FPanes.ExplorerBar()->Init();
  BindExplorerBar();
  ExtendExplorerbarWithDefaultItems(*FPanes.ExplorerBar());
  RestoreExplorerbarDefaultItems(*FPanes.ExplorerBar());
  BindUpdaters(true);
  BindColumns(true);
  BindReminders(true);
  FAutoRefresh.tmrAutoRefreshTimer(nullptr);
  // On the screen before its delay was over: there was no tree then in which to select.
  if (WasShown()) FPanes.Tree.RestoreSelection();
}

void TfrmKKWatchlist::BindExplorerBar() {
  using TSelf = TfrmKKWatchlist;
  using TTreeCommands = TWatchlistTreeCommands;
  using TTabCommands = TWatchlistTabCommands;
  TTreeCommands* const tree = &FTreeCommands;
  TTabCommands* const tab = &FTabCommands;
  TExplorerBarWatchlist& bar = *FPanes.ExplorerBar();
  bar.SetOnClickCategoryEdit(
      TNotifyEvent::Of<&TTreeCommands::DoClickExplorerbarCategoryEdit>(tree));
  bar.SetOnClickCategoryUpdate(
      TNotifyEvent::Of<&TTreeCommands::DoClickExplorerbarCategoryUpdate>(tree));
  bar.SetOnClickRemindAdd(TNotifyEvent::Of<&TTabCommands::DoClickExplorerbarRemindAdd>(tab));
  bar.SetOnClickRemindDelete(TNotifyEvent::Of<&TTabCommands::DoClickExplorerbarRemindDelete>(tab));
  bar.SetOnClickRemindEdit(TNotifyEvent::Of<&TTabCommands::DoClickExplorerbarRemindEdit>(tab));
  bar.SetOnClickDetailsUpdate(
      TNotifyEvent::Of<&TTabCommands::DoClickExplorerbarDetailsUpdate>(tab));
  bar.SetOnClickDetailsEditDescription(
      TNotifyEvent::Of<&TTabCommands::DoClickExplorerbarDetailsEditDescription>(tab));
  bar.SetOnClickMoreImport(TNotifyEvent::Of<&TSelf::DoClickExplorerbarMoreImport>(this));
  bar.SetOnClickMoreExport(TNotifyEvent::Of<&TSelf::DoClickExplorerbarMoreExport>(this));
  bar.SetOnClickMorePrint(TNotifyEvent::Of<&TSelf::DoClickExplorerbarMorePrint>(this));
}

void TfrmKKWatchlist::BindSettings(bool iListens) {
  if (std::exchange(FListensToSettings, iListens) == iListens) return;
  const auto onChange = TNotifyEvent::Of<&TWatchlistCategoryTree::DoChangeIniFile>(&FPanes.Tree);
  if (iListens) {
    IniFile().AddNotifyOnChange(onChange);
  } else {
    IniFile().RemoveNotifyOnChange(onChange);
  }
}

void TfrmKKWatchlist::BindUpdaters(bool iListens) {
  if (Handler() == nullptr) return;
  using TSelf = TfrmKKWatchlist;
  for (TWatchlistIntegration* integration : Handler()->LstIntegration()) {
    TWatchlistItemUpdater& updater = integration->Updater();
    updater.SetOnProgress(iListens ? TNotifyEvent::Of<&TSelf::DoUpdaterProgress>(this)
                                   : TNotifyEvent());
    updater.SetOnAfterAdd(iListens ? TNotifyEventAfterAdd::Of<&TSelf::DoUpdaterAfterAdd>(this)
                                   : TNotifyEventAfterAdd());
    updater.SetOnUpdateFinished(
        iListens ? TNotifyEventSearchResult::Of<&TSelf::DoUpdaterFinishedItem>(this)
                 : TNotifyEventSearchResult());
  }
}

void TfrmKKWatchlist::BindColumns(bool iListens) {
  if (Handler() == nullptr) return;
  using TCommands = TWatchlistTabCommands;
  Handler()->SetOnAdditionalColumnEditClick(
      iListens ? TNotifyEvent::Of<&TCommands::DoAdditionalColumnEditClick>(&FTabCommands)
               : TNotifyEvent());
}

void TfrmKKWatchlist::BindReminders(bool iListens) {
  if (Handler() == nullptr) return;
  using TSelf = TfrmKKWatchlist;
  Handler()->RemindHandler().SetOnProcessElapsedItem(
      iListens ? TNotifyProcessRemindItem::Of<&TSelf::DoProcessElapsedRemindItem>(this)
               : TNotifyProcessRemindItem());
}

void TfrmKKWatchlist::FirstShow() {
  // The toolbar stands on top of the section's column from its making: that is its alignment.
  if (FToolbar) FToolbar->Init();
  const TIniFileSectionWatchlist settings;
  FPanes.Tree.pnlCategories.SetWidth(settings.GetCategoryTreeWidth());
  FPanes.pnlExplorerBandBar.SetWidth(settings.GetExplorerBarWidth());
  FPanes.Tree.RestoreSelection();
}

void TfrmKKWatchlist::StoreSettings() {
  if (!WasShown() || !FInitialized) return;
  TIniFileSectionWatchlist settings;
  FPanes.Tree.StoreSelection();
  settings.SaveWindowSize(ShownWidth(), ShownHeight());
  settings.SetCategoryTreeWidth(FPanes.Tree.pnlCategories.Width());
  settings.SetExplorerBarWidth(FPanes.pnlExplorerBandBar.Width());
}

void TfrmKKWatchlist::Uninitialize() {
  Guarded(u"TfrmKKWatchlist.Uninitialize", [this] { StoreSettings(); });
  // No reminder reaches views that are being taken down.
  BindReminders(false);
  BindSettings(false);
  StopDelay();
  BindColumns(false);
  BindUpdaters(false);
  FPanes.Tree.Clear();
  FPanes.HideAll();
  FPanes.FreeExplorerBar();
  FToolbar.reset();
  FPanes.FreeTabControl();
  TfrmKKCommonSectionBase::Uninitialize();
}

void TfrmKKWatchlist::FormClose(TObject*) {
  if (Application()) Application()->SectionClosed();
}

void TfrmKKWatchlist::MouseWheelHandler(IMouseWheel& ioWheel) {
  if (FInMouseWheel) return;
  struct TInside {
    bool& Flag;
    explicit TInside(bool& ioFlag) : Flag(ioFlag) { Flag = true; }
    ~TInside() { Flag = false; }
  } inside(FInMouseWheel);
  TControl* target = this;
  TControl* child = ioWheel.ControlAtPointer(*target);
  while (child != nullptr && child != target) {
    target = child;
    child = ioWheel.ControlAtPointer(*target);
  }
  if (ioWheel.Perform(*target) == 0) TfrmKKCommonSectionBase::MouseWheelHandler(ioWheel);
}

void TfrmKKWatchlist::SetImport(TWatchlistImport* iImport) {
  FImport = iImport != nullptr ? iImport : &FOwnImport;
}

void TfrmKKWatchlist::BuildCategoriesTree(bool iKeepSelection) {
  FView.BuildCategoriesTree(iKeepSelection);
}

void TfrmKKWatchlist::SaveAll() { Handler()->SaveAll(); }

void TfrmKKWatchlist::AddWithUpdate(const TIntf<IInterfaceList>& iResults,
                                    TWatchlistIntegration& iIntegration,
                                    TWatchlistCategory& iTarget) {
  // Looks like a mistake and is required: the panel gets one and the same list at every add, so
  // that a second add before the first has ended takes the first one's open results out of it;
  // their ends add nothing then. The panel empties that list, the reminders need one that stays.
  FAddedSearchResults->Clear();
  FResultsToAdd->Clear();
  for (int i = 0; i < iResults->GetCount(); ++i) {
    FAddedSearchResults->Add(iResults->Get(i));
    FResultsToAdd->Add(iResults->Get(i));
  }
  FFormAddProgress.AddWithUpdate(FResultsToAdd, iIntegration, iTarget);
}

void TfrmKKWatchlist::DoCloseFormAddProgress(TObject*) {
  if (!TIniFileSectionWatchlist().GetAutoActivateReminder()) return;
  // Looks like a mistake and is required: also for results whose first refresh failed.
  FCommands.Reminders.AutoEnableReminder(false, *FAddedSearchResults);
}

bool TfrmKKWatchlist::ImportInBackgroundFromFile(TStringView iFileName) {
  return SaveImported(FImport->ExecuteInBackground(iFileName));
}

bool TfrmKKWatchlist::ImportInBackgroundFromKKMobileStream(TMemoryStream& iStream) {
  return SaveImported(FImport->ExecuteInBackgroundFromKKMobileStream(iStream));
}

void TfrmKKWatchlist::DoClickExplorerbarMoreImport(TObject*) {
  SaveImported(FImport->Display(this));
}

void TfrmKKWatchlist::DoClickExplorerbarMoreExport(TObject*) {
  TfrmKKWatchlistExport::Display(this);
}

void TfrmKKWatchlist::DoClickExplorerbarMorePrint(TObject*) { TfrmKKWatchlistPrint::Display(this); }

bool TfrmKKWatchlist::SaveImported(bool iImported) {
  if (!iImported) return false;
  SaveAll();
  BuildCategoriesTree(true);
  return true;
}

void TfrmKKWatchlist::DoUpdaterFinishedItem(TObject* Sender,
                                            const TIntf<ISearchResult>& iSearchResult,
                                            bool iSucceeded) {
  FFinished.push_back({Sender, iSearchResult, iSucceeded});
  // A failed refresh leaves no mark in the model.
  if (iSucceeded) TakeOver(dynamic_cast<TWatchlistItemUpdater&>(*Sender), iSearchResult);
}

void TfrmKKWatchlist::TakeOver(TWatchlistItemUpdater& iUpdater,
                               const TIntf<ISearchResult>& iSearchResult) {
  TWatchlistIntegration* integration = FindIntegration(iUpdater.Integration()->GetId());
  if (integration == nullptr) return;
  TWatchlistItem* item = RootCategories().FindItemById(iSearchResult->GetId());
  if (item == nullptr) return;
  item->SetLastUpdateDate(Now());
  item->SetSearchResult(iSearchResult);
  integration->SetChangedSearchResults(true);
  integration->SetChangedItems(true);
  Guarded(u"RefreshSearchResult", [&] { FView.RefreshSearchResult(iSearchResult); });
  Guarded(u"RefreshCurrentSearchResultIfEquals",
          [&] { FView.RefreshCurrentSearchResultIfEquals(iSearchResult); });
  Guarded(u"RepaintNode", [&] { FView.RepaintNode(*item); });
}

void TfrmKKWatchlist::DoProcessElapsedRemindItem(TObject* Sender, TRemindItem& iItem) {
  Guarded(u"RefreshRowOfReminder", [&] { FView.RefreshRowOfReminder(iItem.Id()); });
  const bool shown =
      Guarded(u"RefreshDetailsOfReminder", [&] { FView.RefreshDetailsOfReminder(iItem.Id()); });
  if (!shown) Guarded(u"ShowNoResult", [&] { FView.ShowNoResult(); });
  if (FOnReminderDue) Guarded(u"OnReminderDue", [&] { FOnReminderDue(Sender, iItem); });
}

void TfrmKKWatchlist::DoUpdaterProgress(TObject* Sender) {
  FView.DoUpdaterProgress(Sender);
  // The updater raises it behind the entry's own listener, which adds the item of a new result.
  std::vector<TFinished> finished;
  std::erase_if(FFinished, [&](const TFinished& iEnd) {
    if (iEnd.Updater != Sender) return false;
    finished.push_back(iEnd);
    return true;
  });
  for (const TFinished& end : finished) {
    if (!FOnUpdateFinished) return;
    Guarded(u"OnUpdateFinished", [&] { FOnUpdateFinished(Sender, end.Result, end.Succeeded); });
  }
}

void TfrmKKWatchlist::DoUpdaterAfterAdd(TObject* Sender, int iAddCount) {
  FView.DoUpdaterAfterAdd(Sender, iAddCount);
}

}  // namespace kk
