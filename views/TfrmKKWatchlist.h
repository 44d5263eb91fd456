#pragma once

#include "host/base/TMainLoop.h"
#include "host/controls/TfrmKKCommonSectionBase.h"
#include "reminders/IRemindThread.h"
#include "updating/adding/TfrmWatchlistAddProgress.h"
#include "views/TWatchlistCategoryCommands.h"
#include "views/TWatchlistItemCommands.h"
#include "views/TWatchlistUpdateCommands.h"

namespace kk {

/// The section "Beobachten": the frame around the commands, adding through a first refresh, and
/// what becomes of refreshed results and delivered reminders. What shows the list and imports files
/// is installed from outside; until it is, nothing is shown, and the log says what can't be done.
/// Owned by the plug-in's root; it lives while the handler does. Main thread.
class TfrmKKWatchlist : public TfrmKKCommonSectionBase, private IAddProgressOwner {
 public:
  TfrmKKWatchlist();
  ~TfrmKKWatchlist() override;

  TGuid GetFormID() const override;
  TString GetIniSectionName() const override;
  /// The host's setting decides whether the section runs at once or after 300 ms.
  void Initialize(const TIntf<IApplication>& iApplication) override;
  void Uninitialize() override;
  /// What the setting puts off: fills the tree and listens to updaters and reminders. Runs once, a
  /// second call does nothing. Who can't wait for it may call it.
  void InitializeWithDelay();

  /// Builds the tree on the screen anew; with the flag the selection stays.
  void BuildCategoriesTree(bool iKeepSelection) override;
  /// Adds the results that can be refreshed to the target. The target has a group of the source.
  void AddWithUpdate(const TIntf<IInterfaceList>& iResults, TWatchlistIntegration& iIntegration,
                     TWatchlistCategory& iTarget);
  /// Imports without asking and saves; false if nothing was imported.
  bool ImportInBackgroundFromFile(TStringView iFileName);
  bool ImportInBackgroundFromKKMobileStream(TMemoryStream& iStream);

  TWatchlistCategoryCommands& Categories() { return FCategories; }
  TWatchlistItemCommands& Items() { return FItems; }
  TWatchlistUpdateCommands& Updates() { return FUpdates; }
  TWatchlistReminderCommands& Reminders() { return FReminders; }
  TWatchlistImport& Import() { return *FSeams.Import; }
  TfrmWatchlistAddProgress& FormAddProgress() { return FFormAddProgress; }
  /// The results of the last add; the next one replaces them.
  const IInterfaceList& AddedSearchResults() const { return *FAddedSearchResults; }

  /// Borrowed; null goes back to none.
  void SetView(TWatchlistView* iView);
  void SetImport(TWatchlistImport* iImport);
  /// Told of each end of a refresh, with the updater as the sender, when the list has taken the
  /// result in; for an added one, when its item stands in the list. What it throws is swallowed.
  void SetOnUpdateFinished(TNotifyEventSearchResult iEvent) { FOnUpdateFinished = iEvent; }

  /// Told of each reminder that is on its way to the user, behind the views. What it throws is
  /// swallowed.
  void SetOnReminderDue(TNotifyProcessRemindItem iEvent) { FOnReminderDue = iEvent; }

 protected:
  void Loaded() override;

 private:
  struct TFinished {
    TObject* Updater;
    TIntf<ISearchResult> Result;
    bool Succeeded;
  };

  void SaveAll() override;
  bool SaveImported(bool iImported);
  /// iListens: whether the section hears of the updaters' events from now on.
  void BindUpdaters(bool iListens);
  void BindReminders(bool iListens);
  /// Tells the host that the section was closed.
  void FormClose(TObject* Sender);
  void StopDelay();
  void DoInitializeWithDelayTimer();
  void DoShowFormAddProgress(TObject* /*Sender*/) {}  // does nothing, as required
  void DoCloseFormAddProgress(TObject* Sender);
  void DoUpdaterFinishedItem(TObject* Sender, const TIntf<ISearchResult>& iSearchResult,
                             bool iSucceeded);
  void DoUpdaterProgress(TObject* Sender);
  void DoUpdaterAfterAdd(TObject* Sender, int iAddCount);
  /// The reminder is on its way to the user: its marks go from the views.
  void DoProcessElapsedRemindItem(TObject* Sender, TRemindItem& iItem);
  void TakeOver(TWatchlistItemUpdater& iUpdater, const TIntf<ISearchResult>& iSearchResult);

  TWatchlistView FNoView;
  TWatchlistImport FNoImport;
  TWatchlistSeams FSeams{&FNoView, &FNoImport, this};
  TWatchlistCategoryCommands FCategories{FSeams};
  TWatchlistReminderCommands FReminders{FSeams};
  TWatchlistItemCommands FItems{FSeams, FReminders};
  TWatchlistUpdateCommands FUpdates;
  TfrmWatchlistAddProgress FFormAddProgress{*this, this};
  TIntf<IInterfaceList> FAddedSearchResults = NewInterfaceList();
  TIntf<IInterfaceList> FResultsToAdd = NewInterfaceList();  // the one list of all adds
  TNotifyEventSearchResult FOnUpdateFinished;
  TNotifyProcessRemindItem FOnReminderDue;
  std::vector<TFinished> FFinished;  // ends that the updater's own listener has still to hear of
  bool FInitialized = false;
  TMainLoop::TTimerId FDelayTimer = 0;
};

}  // namespace kk
