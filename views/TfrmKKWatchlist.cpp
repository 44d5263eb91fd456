#include "views/TfrmKKWatchlist.h"

#include <utility>

#include "host/base/Guard.h"
#include "host/base/TClock.h"
#include "host/common/TIniFileSectionBase.h"
#include "reminders/TRemindHandler.h"
#include "settings/TIniFileSectionWatchlist.h"
#include "views/WatchlistModel.h"

namespace kk {

namespace {

constexpr int cInitializeDelayMs = 300;

}  // namespace

TfrmKKWatchlist::TfrmKKWatchlist()
    : TfrmKKCommonSectionBase(nullptr, u"TfrmKKWatchlist", _resToolButtonCaption) {
  using TSelf = TfrmKKWatchlist;
  SetOnClose(TNotifyEvent::Of<&TSelf::FormClose>(this));
  FFormAddProgress.SetOnShow(TNotifyEvent::Of<&TSelf::DoShowFormAddProgress>(this));
  FFormAddProgress.SetOnClose(TNotifyEvent::Of<&TSelf::DoCloseFormAddProgress>(this));
}

TfrmKKWatchlist::~TfrmKKWatchlist() {
  StopDelay();
  BindReminders(false);
  BindUpdaters(false);
}

TGuid TfrmKKWatchlist::GetFormID() const { return cMainMenuFormIDWatchlist; }

TString TfrmKKWatchlist::GetIniSectionName() const { return TString(cSettingsSectionWatchlist); }

void TfrmKKWatchlist::Loaded() {
  SetCaption(_resToolButtonCaption);
  TfrmKKCommonSectionBase::Loaded();
}

void TfrmKKWatchlist::Initialize(const TIntf<IApplication>& iApplication) {
  TfrmKKCommonSectionBase::Initialize(iApplication);
  if (!TIniFileSectionGeneral().GetDelayedStart()) {
    InitializeWithDelay();
    return;
  }
  FDelayTimer = MainLoop().StartTimer(cInitializeDelayMs, [this] { DoInitializeWithDelayTimer(); });
}

void TfrmKKWatchlist::DoInitializeWithDelayTimer() {
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
  BuildCategoriesTree(false);
  BindUpdaters(true);
  BindReminders(true);
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

void TfrmKKWatchlist::BindReminders(bool iListens) {
  if (Handler() == nullptr) return;
  using TSelf = TfrmKKWatchlist;
  Handler()->RemindHandler().SetOnProcessElapsedItem(
      iListens ? TNotifyProcessRemindItem::Of<&TSelf::DoProcessElapsedRemindItem>(this)
               : TNotifyProcessRemindItem());
}

void TfrmKKWatchlist::Uninitialize() {
  // First: no reminder reaches views that are being taken down.
  BindReminders(false);
  StopDelay();
  BindUpdaters(false);
  TfrmKKCommonSectionBase::Uninitialize();
}

void TfrmKKWatchlist::FormClose(TObject*) {
  if (Application()) Application()->SectionClosed();
}

void TfrmKKWatchlist::SetView(TWatchlistView* iView) {
  FSeams.View = iView != nullptr ? iView : &FNoView;
}

void TfrmKKWatchlist::SetImport(TWatchlistImport* iImport) {
  FSeams.Import = iImport != nullptr ? iImport : &FNoImport;
}

void TfrmKKWatchlist::BuildCategoriesTree(bool iKeepSelection) {
  FSeams.View->BuildCategoriesTree(iKeepSelection);
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
  FReminders.AutoEnableReminder(false, *FAddedSearchResults);
}

bool TfrmKKWatchlist::ImportInBackgroundFromFile(TStringView iFileName) {
  return SaveImported(FSeams.Import->ExecuteInBackground(iFileName));
}

bool TfrmKKWatchlist::ImportInBackgroundFromKKMobileStream(TMemoryStream& iStream) {
  return SaveImported(FSeams.Import->ExecuteInBackgroundFromKKMobileStream(iStream));
}

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
  Guarded(u"RefreshSearchResult", [&] { FSeams.View->RefreshSearchResult(iSearchResult); });
  Guarded(u"RefreshCurrentSearchResultIfEquals",
          [&] { FSeams.View->RefreshCurrentSearchResultIfEquals(iSearchResult); });
  Guarded(u"RepaintNode", [&] { FSeams.View->RepaintNode(*item); });
}

void TfrmKKWatchlist::DoProcessElapsedRemindItem(TObject* Sender, TRemindItem& iItem) {
  Guarded(u"RefreshRowOfReminder", [&] { FSeams.View->RefreshRowOfReminder(iItem.Id()); });
  const bool shown = Guarded(u"RefreshDetailsOfReminder",
                             [&] { FSeams.View->RefreshDetailsOfReminder(iItem.Id()); });
  if (!shown) Guarded(u"ShowNoResult", [&] { FSeams.View->ShowNoResult(); });
  if (FOnReminderDue) Guarded(u"OnReminderDue", [&] { FOnReminderDue(Sender, iItem); });
}

void TfrmKKWatchlist::DoUpdaterProgress(TObject* Sender) {
  FSeams.View->DoUpdaterProgress(Sender);
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
  FSeams.View->DoUpdaterAfterAdd(Sender, iAddCount);
}

}  // namespace kk
