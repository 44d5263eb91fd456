#pragma once

#include <memory>

#include "host/controls/TCommonToolbarKK.h"
#include "host/controls/TfrmKKCommonSectionBase.h"
#include "reminders/IRemindThread.h"
#include "updating/adding/TfrmWatchlistAddProgress.h"
#include "views/TWatchlistAutoRefresh.h"
#include "views/TWatchlistImport.h"
#include "views/TWatchlistPanesView.h"
#include "views/TWatchlistTabCommands.h"
#include "views/TWatchlistTreeCommands.h"

namespace kk {

/// The section "Beobachten": it holds panes, commands, timers and adding together, brings them up
/// in stages and takes them down again, and keeps what becomes of refreshed results and delivered
/// reminders. Where it is never shown, all of it works just the same. Owned by the plug-in's root;
/// it lives while the handler does. Main thread.
class TfrmKKWatchlist : public TfrmKKCommonSectionBase, private IAddProgressOwner {
 public:
  TfrmKKWatchlist();
  ~TfrmKKWatchlist() override;

  TGuid GetFormID() const override;
  TString GetIniSectionName() const override;
  /// The host's setting decides whether the section runs at once or after 300 ms.
  void Initialize(const TIntf<IApplication>& iApplication) override;
  /// Keeps selection and sizes if the section was shown, and takes the panes down.
  void Uninitialize() override;
  /// What the setting puts off: fills the panes and listens to updaters and reminders. Runs once, a
  /// second call does nothing. Who can't wait for it may call it. What fails passes on.
  void InitializeWithDelay();
  void MouseWheelHandler(IMouseWheel& ioWheel) override;

  /// Builds the tree anew; with the flag the selection stays.
  void BuildCategoriesTree(bool iKeepSelection) override;
  /// Adds the results that can be refreshed to the target. The target has a group of the source.
  void AddWithUpdate(const TIntf<IInterfaceList>& iResults, TWatchlistIntegration& iIntegration,
                     TWatchlistCategory& iTarget);
  /// Imports without asking and saves; false if nothing was imported.
  bool ImportInBackgroundFromFile(TStringView iFileName);
  bool ImportInBackgroundFromKKMobileStream(TMemoryStream& iStream);

  TWatchlistPanes& Panes() { return FPanes; }
  TWatchlistStatus& Status() { return FStatus; }
  TWatchlistCategoryCommands& Categories() { return FCommands.Categories; }
  TWatchlistItemCommands& Items() { return FCommands.Items; }
  TWatchlistUpdateCommands& Updates() { return FCommands.Updates; }
  TWatchlistReminderCommands& Reminders() { return FCommands.Reminders; }
  TfrmWatchlistAddProgress& FormAddProgress() { return FFormAddProgress; }
  /// The results of the last add; the next one replaces them.
  const IInterfaceList& AddedSearchResults() const { return *FAddedSearchResults; }

  /// Borrowed; null goes back to none.
  void SetImport(TWatchlistImport* iImport);
  /// Told of each end of a refresh, with the updater as the sender, when the list has taken the
  /// result in; for an added one, when its item stands in the list. What it throws is swallowed.
  void SetOnUpdateFinished(TNotifyEventSearchResult iEvent) { FOnUpdateFinished = iEvent; }
  /// Told of each reminder that is on its way to the user, behind the views. What it throws is
  /// swallowed.
  void SetOnReminderDue(TNotifyProcessRemindItem iEvent) { FOnReminderDue = iEvent; }

  TToolbar tlbrNavigation{this, u"tlbrNavigation"};

 protected:
  void Loaded() override;
  void FirstShow() override;

 private:
  struct TFinished {
    TObject* Updater;
    TIntf<ISearchResult> Result;
    bool Succeeded;
  };

  void SaveAll() override;
  bool SaveImported(bool iImported);
  void BindExplorerBar();
  /// iListens: whether the section hears of it from now on, here and below.
  void BindSettings(bool iListens);
  void BindUpdaters(bool iListens);
  void BindColumns(bool iListens);
  void BindReminders(bool iListens);
  void StoreSettings();
  /// Tells the host that the section was closed.
  void FormClose(TObject* Sender);
  void StopDelay();
  void tmrInitializeWithDelayTimer();
  void DoShowFormAddProgress(TObject* /*Sender*/) {}  // does nothing, as required
  void DoCloseFormAddProgress(TObject* Sender);
  void DoClickExplorerbarMoreImport(TObject* Sender);
  void DoClickExplorerbarMoreExport(TObject* Sender);
  void DoClickExplorerbarMorePrint(TObject* Sender);
  void DoUpdaterFinishedItem(TObject* Sender, const TIntf<ISearchResult>& iSearchResult,
                             bool iSucceeded);
  void DoUpdaterProgress(TObject* Sender);
  void DoUpdaterAfterAdd(TObject* Sender, int iAddCount);
  /// The reminder is on its way to the user: its marks go from the views.
  void DoProcessElapsedRemindItem(TObject* Sender, TRemindItem& iItem);
  void TakeOver(TWatchlistItemUpdater& iUpdater, const TIntf<ISearchResult>& iSearchResult);

  // In the order in which they stand from top to bottom, the toolbar above.
  TWatchlistPanes FPanes{this};
  TWatchlistStatus FStatus{this};
  TfrmWatchlistAddProgress FFormAddProgress{*this, this};
  TIntf<IInterfaceList> FAddedSearchResults = NewInterfaceList();
  TIntf<IInterfaceList> FResultsToAdd = NewInterfaceList();  // the one list of all adds
  TWatchlistPanesView FView{FPanes, FStatus};
  TWatchlistCommands FCommands{{FView, this}};
  TWatchlistTreeCommands FTreeCommands{FPanes, FCommands};
  TWatchlistTabCommands FTabCommands{FPanes, FCommands};
  TWatchlistAutoRefresh FAutoRefresh{FCommands.Updates};
  TWatchlistImport FOwnImport;
  TWatchlistImport* FImport = &FOwnImport;
  std::unique_ptr<TCommonToolbarKK> FToolbar;
  TNotifyEventSearchResult FOnUpdateFinished;
  TNotifyProcessRemindItem FOnReminderDue;
  std::vector<TFinished> FFinished;  // ends that the updater's own listener has still to hear of
  bool FInitialized = false;
  bool FListensToSettings = false;
  bool FInMouseWheel = false;
  TMainLoop::TTimerId FDelayTimer = 0;
};

}  // namespace kk
