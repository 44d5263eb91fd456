#include "updating/adding/TfrmWatchlistAddProgress.h"

#include "host/base/Guard.h"
#include "host/base/TClock.h"
#include "host/base/TMainLoop.h"
#include "model/IWatchlistModelRoot.h"
#include "model/TLstWatchlistCategory.h"

namespace kk {

namespace {

// The user may have deleted the category while its results were under way.
bool IsInTree(const TWatchlistCategory& iCategory) {
  TLstWatchlistCategory all(false);
  WatchlistModelRoot().RootCategories().GetCategories(all, true);
  return all.IndexOf(&iCategory) >= 0;
}

}  // namespace

TfrmWatchlistAddProgress::TfrmWatchlistAddProgress(IAddProgressOwner& iOwner, TControl* iParent)
    : TPanel(iParent, u"TfrmWatchlistAddProgress", _resAddProgressCaption), FOwner(iOwner) {
  SetVisible(false);
  SetPosition(TPosition::poOwnerFormCenter);
  btnCancel.SetOnClick(TNotifyEvent::Of<&TfrmWatchlistAddProgress::btnCancelClick>(this));
}

void TfrmWatchlistAddProgress::AddWithUpdate(const TIntf<IInterfaceList>& iList,
                                             TWatchlistIntegration& iIntegration,
                                             TWatchlistCategory& iTargetCategory) {
  TWatchlistItemUpdater& updater = iIntegration.Updater();
  updater.BeginAdd();
  try {
    Queue(*iList, updater);
    if (iList->GetCount() > 0) {
      Announce(iList->GetCount());
      FLstAddItem.Add(iList, iIntegration, iTargetCategory);
    }
  } catch (const std::exception&) {
    updater.EndAdd();
    throw;
  }
  // Last, because a source that can't refresh finishes everything in here.
  updater.EndAdd();
}

void TfrmWatchlistAddProgress::Queue(IInterfaceList& ioList, TWatchlistItemUpdater& ioUpdater) {
  // Each entry goes in front of those before: backwards, they keep the order of the list.
  const auto onFinished =
      TNotifyEventSearchResult::Of<&TfrmWatchlistAddProgress::DoUpdaterFinishedItem>(this);
  for (int i = ioList.GetCount() - 1; i >= 0; --i) {
    const auto result = GetAs<ISearchResult>(ioList, i);
    if (!ioUpdater.AddPriorized(result, onFinished)) ioList.Delete(i);
  }
}

void TfrmWatchlistAddProgress::Announce(int iCount) {
  if (Visible()) {
    prgrsbarAdd.SetMaximum(prgrsbarAdd.Maximum() + iCount);
    return;
  }
  prgrsbarAdd.SetMaximum(iCount);
  prgrsbarAdd.SetProgress(1);
  ShowMe();
}

void TfrmWatchlistAddProgress::ShowMe() {
  Show();
  BringToFront();
  MainLoop().ProcessMessages();
}

void TfrmWatchlistAddProgress::DoUpdaterFinishedItem(TObject* /*Sender*/,
                                                     const TIntf<ISearchResult>& iSearchResult,
                                                     bool iSucceeded) {
  if (FLstAddItem.GetCount() == 0) {
    Close();
    return;
  }
  if (prgrsbarAdd.Maximum() > prgrsbarAdd.Progress()) {
    prgrsbarAdd.SetProgress(prgrsbarAdd.Progress() + 1);
  }
  if (iSucceeded) Guarded(u"TfrmWatchlistAddProgress.AddItem", [&] { AddItem(iSearchResult); });
  FLstAddItem.RemoveItemById(iSearchResult->GetId());
  if (FLstAddItem.GetCount() == 0) {
    FinishAdd();
  } else {
    MainLoop().ProcessMessages();
  }
}

void TfrmWatchlistAddProgress::AddItem(const TIntf<ISearchResult>& iSearchResult) {
  const TGuid id = iSearchResult->GetId();
  const int index = FLstAddItem.IndexOfItemId(id);
  if (index < 0) return;
  const TAddItem& batch = FLstAddItem.GetItems(index);
  if (!IsInTree(batch.TargetCategory())) return;
  TWatchlistCategory& category = batch.TargetCategory();
  TWatchlistIntegration& integration = batch.Integration();
  TWatchlistPlugin* const group = category.LstPlugin().FindById(integration.Integration()->GetId());
  if (group == nullptr) return;
  // Cloned before there is an item, so that a failure leaves none without a result.
  const TIntf<ISearchResult> clone = iSearchResult->Clone();
  if (!clone) return;
  TWatchlistItem& item = group->LstItem().Add(std::make_unique<TWatchlistItem>());
  item.SetSearchResult(clone);
  item.SetParentCategoryId(category.Id());
  item.SetSearchResultId(id);
  item.SetLastUpdateDate(Now());
  integration.SetChangedItems(true);
  integration.SetChangedSearchResults(true);
}

void TfrmWatchlistAddProgress::FinishAdd() {
  Guarded(u"TfrmWatchlistAddProgress.SaveAll", [this] {
    WatchlistModelRoot().RootCategories().DeleteEmptyPlugins();
    FOwner.SaveAll();
  });
  Guarded(u"TfrmWatchlistAddProgress.BuildCategoriesTree",
          [this] { FOwner.BuildCategoriesTree(true); });
  Close();
}

void TfrmWatchlistAddProgress::btnCancelClick(TObject* /*Sender*/) {
  FLstAddItem.Clear();
  Close();
}

}  // namespace kk
