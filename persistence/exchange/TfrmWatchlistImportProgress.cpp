#include "persistence/exchange/TfrmWatchlistImportProgress.h"

#include "host/base/TClock.h"
#include "host/base/TMainLoop.h"
#include "host/controls/TfrmMessageDlg.h"
#include "persistence/TWatchlistHandler.h"
#include "plugin/texts/UnitKKPluginWatchlistConsts.h"
#include "reminders/TLstRemindItemSync.h"

namespace kk {

namespace {

// The window moves and answers that often while the import runs.
constexpr int64_t cTurnMs = 10;

/// All items of one source.
struct TItemsOf : TLstWatchlistItem {
  TItemsOf(const TLstWatchlistCategory& iLst, const TWatchlistIntegration& iRecord)
      : TLstWatchlistItem(false) {
    iLst.GetItemsByPluginId(iRecord.Integration()->GetId(), *this, true);
  }
};

}  // namespace

TfrmWatchlistImportProgress::TfrmWatchlistImportProgress(TForm* iOwner, const TImportData& iData,
                                                         bool iInBackground)
    : TfrmKKCommonBase(iOwner, u"TfrmWatchlistImportProgress", _resImportProgressCaption),
      FNewCategoryName(iData.NewCategoryName),
      FLstCategory(iData.LstCategory),
      FLstRemindItem(iData.LstRemindItem),
      FLstIntegration(*iData.LstIntegration),
      FInBackground(iInBackground) {
  SetPosition(TPosition::poOwnerFormCenter);
  SetOnCloseQuery(TCloseQueryEvent::Of<&TfrmWatchlistImportProgress::CloseQuery>(this));
  FCategoryMerge.SetOnProgress(TNotifyEvent::Of<&TfrmWatchlistImportProgress::DoProgress>(this));
}

TfrmWatchlistImportProgress::~TfrmWatchlistImportProgress() {
  if (FOwnsCategoryList) std::unique_ptr<TLstWatchlistCategory>(FLstCategory).reset();
}

bool TfrmWatchlistImportProgress::Display(TForm* iOwner, const TImportData& iData,
                                          bool iInBackground) {
  TfrmWatchlistImportProgress form(iOwner, iData, iInBackground);
  if (iInBackground) {
    form.ExecuteImport();
  } else {
    // From within the modal loop, so that the window is on the screen before the work begins.
    form.PostUserMessage(cUserMessageGoOn);
    form.ShowModal();
  }
  return form.ModalResult() == cModalOK;
}

void TfrmWatchlistImportProgress::UserMessage(int iMessage) {
  if (iMessage == cUserMessageGoOn) ExecuteImport();
}

// Half an import is nobody's wish: the window stays until it is through.
void TfrmWatchlistImportProgress::CloseQuery(TObject*, bool& ioCanClose) { ioCanClose = !FRunning; }

void TfrmWatchlistImportProgress::ExecuteImport() {
  FRunning = true;
  int result = cModalCancel;
  try {
    RunPhases();
    result = cModalOK;
  } catch (const std::exception& e) {
    MessageDlg(MessageOf(e), TMsgDlgType::mtError, {TMsgDlgBtn::mbOK});
  }
  FRunning = false;
  SetModalResult(result);
}

void TfrmWatchlistImportProgress::RunPhases() {
  MainLoop().ProcessMessages();
  Begin(_resImportSteps);
  CalcTotalSteps();
  if (!FNewCategoryName.empty()) {
    Begin(_resImportNewCategory);
    PrepareImportDataWithNewCategory(FNewCategoryName);
  }
  Begin(_resImportCategories);
  FCategoryMerge.Execute(Handler()->LstCategory(), *FLstCategory, 0);
  Begin(_resImportItems);
  ImportItems();
  if (FLstRemindItem == nullptr || FLstRemindItem->GetCount() == 0) return;
  Begin(_resImportRemindItems);
  ImportRemindItems();
}

void TfrmWatchlistImportProgress::Begin(TStringView iPhase) {
  lblAction.SetCaption(iPhase);
  FNextTurn = 0;
  Turn();
}

void TfrmWatchlistImportProgress::CalcTotalSteps() {
  const bool flat = !FNewCategoryName.empty();
  int steps = FLstRemindItem != nullptr ? FLstRemindItem->GetCount() : 0;
  if (flat) {
    ++steps;
  } else {
    TLstWatchlistCategory categories(false);
    FLstCategory->GetCategories(categories, true);
    steps += categories.GetCount();
  }
  for (const TWatchlistIntegration* record : ChosenIntegrations()) {
    steps += TItemsOf(*FLstCategory, *record).GetCount() * (flat ? 2 : 1);
  }
  prgrsbarAdd.SetMaximum(steps);
  prgrsbarAdd.SetProgress(0);
}

// The structure of the file is dropped here, with all that belongs to sources that were not chosen.
void TfrmWatchlistImportProgress::PrepareImportDataWithNewCategory(TStringView iName) {
  const TDateTime now = Now();
  auto lst = std::make_unique<TLstWatchlistCategory>(true);
  TWatchlistCategory& category = lst->Add(std::make_unique<TWatchlistCategory>());
  category.SetId(NewGuid());
  category.SetName(iName);
  category.Description().Add(
      Format(_resImportDescription, {ShortDateToStr(now), LongTimeToStr(now)}));
  for (const TWatchlistIntegration* record : ChosenIntegrations()) {
    const TItemsOf items(*FLstCategory, *record);
    if (items.GetCount() == 0) continue;
    TLstWatchlistItem& target = category.LstPlugin()
                                    .Add(std::make_unique<TWatchlistPlugin>(record->Integration()))
                                    .LstItem();
    for (const TWatchlistItem* item : items) {
      DoProgress(this);
      auto moved = FLstCategory->RemoveItemById(item->SearchResultId());
      if (!moved) continue;
      moved->SetParentCategoryId(category.Id());
      target.Add(std::move(moved));
    }
  }
  FLstCategory = lst.release();
  FOwnsCategoryList = true;
}

void TfrmWatchlistImportProgress::ImportItems() {
  TSameSearchResults live;
  live.SetOnStep(TNotifyEvent::Of<&TfrmWatchlistImportProgress::DoStep>(this));
  for (TWatchlistIntegration* record : ChosenIntegrations()) {
    record->SetChangedSearchResults(true);
    record->SetChangedItems(true);
    const TItemsOf items(*FLstCategory, *record);
    for (const TWatchlistItem* item : items) {
      DoProgress(this);
      ImportItem(live, record->Integration(), *item);
    }
  }
}

void TfrmWatchlistImportProgress::ImportItem(TSameSearchResults& ioLive,
                                             const TIntf<IWatchlistIntegration>& iIntegration,
                                             const TWatchlistItem& iItem) {
  const TString id = GUIDToString(iItem.SearchResultId());
  if (const auto same = ioLive.Find(iIntegration->GetId(), iItem.SearchResult())) {
    FSLItemIdTranslation.SetValue(id, GUIDToString(*same));
    return;
  }
  TWatchlistCategory* category = LiveCategoryOf(iItem);
  if (category == nullptr) return;
  TLstWatchlistItem& items = category->LstPlugin().FindOrAdd(iIntegration).LstItem();
  TWatchlistItem& item = items.Add(std::make_unique<TWatchlistItem>());
  try {
    item.SetSearchResult(iItem.SearchResult());
  } catch (...) {  // an item without a result would be one that nobody can see or delete
    items.Extract(items.IndexOfPlaced(item));
    throw;
  }
  item.SetParentCategoryId(category->Id());
  item.SetLastUpdateDate(iItem.LastUpdateDate());
  item.SetDescription(iItem.Description());
  FSLItemIdTranslation.SetValue(id, id);
}

TWatchlistCategory* TfrmWatchlistImportProgress::LiveCategoryOf(const TWatchlistItem& iItem) const {
  const TLstWatchlistCategory& tree = Handler()->LstCategory();
  TWatchlistCategory* category =
      tree.FindCategoryById(FCategoryMerge.GetNewId(iItem.ParentCategoryId()));
  return category != nullptr ? category : tree.FindCategoryById(cEmptyGuid);
}

// Looks like a mistake and is required: the count is taken once and the index goes on behind an
// extraction, too. The reminder that moves up is passed over, and the last steps read past the end
// of the shortened list, which fails. Taken from its front, the list moves none of the others.
void TfrmWatchlistImportProgress::ImportRemindItems() {
  TLstRemindItem passed(true);
  const auto pass = [&](std::unique_ptr<TRemindItem> iReminder) {
    passed.Add(std::move(iReminder));
  };
  const auto next = [&] { return FLstRemindItem->Extract(FLstRemindItem->First()); };
  const int count = FLstRemindItem->GetCount();
  int i = 0;
  for (; i < count && FLstRemindItem->GetCount() > 0; ++i) {
    DoProgress(this);
    std::unique_ptr<TRemindItem> reminder = next();
    if (ImportRemindItem(reminder)) {
      if (FLstRemindItem->GetCount() > 0) pass(next());
    } else {
      pass(std::move(reminder));
    }
  }
  FLstRemindItem->Append(passed, false);
  if (i == count) return;
  DoProgress(this);
  FLstRemindItem->GetItems(i);
}

bool TfrmWatchlistImportProgress::ImportRemindItem(std::unique_ptr<TRemindItem>& ioReminder) {
  if (Now() > ioReminder->RemindTime()) return false;
  const int index = FSLItemIdTranslation.IndexOfName(GUIDToString(ioReminder->Id()));
  if (index < 0) return false;
  const TGuid id = StringToGUID(FSLItemIdTranslation.GetValueFromIndex(index));
  TLstRemindItemSync& live = Handler()->GetLstRemind();
  // Required as well: the live list always says no, so an item may get a second reminder.
  if (live.HasSearchResultId(id)) return false;
  ioReminder->SetId(id);
  live.Add(std::move(ioReminder));
  return true;
}

void TfrmWatchlistImportProgress::DoProgress(TObject*) {
  prgrsbarAdd.SetProgress(prgrsbarAdd.Progress() + 1);
  Turn();
}

void TfrmWatchlistImportProgress::DoStep(TObject*) { Turn(); }

void TfrmWatchlistImportProgress::Turn() {
  if (FInBackground || SteadyMs() < FNextTurn) return;
  MainLoop().ProcessMessages();
  FNextTurn = SteadyMs() + cTurnMs;
}

std::vector<TWatchlistIntegration*> TfrmWatchlistImportProgress::ChosenIntegrations() const {
  std::vector<TWatchlistIntegration*> chosen;
  for (TWatchlistIntegration* record : Handler()->LstIntegration()) {
    if (FLstIntegration.IndexOf(record) >= 0) chosen.push_back(record);
  }
  return chosen;
}

}  // namespace kk
