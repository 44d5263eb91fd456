#include "views/TWatchlistAccess.h"

#include <unordered_map>
#include <unordered_set>

#include "host/common/TFastWriterBaseSimpleXML.h"
#include "host/common/TFileHelper.h"
#include "persistence/TWatchlistHandler.h"
#include "persistence/exchange/TWatchlistExport.h"
#include "persistence/exchange/TfrmKKWatchlistImport.h"
#include "reminders/TLstRemindItemSync.h"
#include "reminders/TRemindDetailsSound.h"
#include "views/WatchlistModel.h"
#include "views/WatchlistQuestions.h"
#include "views/print/TfrmKKWatchlistPrint.h"

namespace kk {

namespace {

TWatchlistCategory& Category(const TGuid& iId) {
  TWatchlistCategory* category = RootCategories().FindCategoryById(iId);
  if (category == nullptr) throw Exception(Format(_resRefusedNoSuchCategory, {GUIDToString(iId)}));
  return *category;
}

TWatchlistItem& Item(const TGuid& iId) {
  TWatchlistItem* item = RootCategories().FindItemById(iId);
  if (item == nullptr) throw Exception(Format(_resRefusedNoSuchItem, {GUIDToString(iId)}));
  return *item;
}

TWatchlistIntegration& Source(const TGuid& iId) {
  const TLstWatchlistIntegration& all = Handler()->LstIntegration();
  const int index = all.IndexOfId(iId);
  if (index < 0) throw Exception(Format(_resRefusedNoSuchSource, {GUIDToString(iId)}));
  return all.GetItems(index);
}

// What the file gives back, and that as it stands: a name that comes back as another's would not
// stay unique.
TString CategoryName(TStringView iName) { return TFastWriterBaseSimpleXML::HeldText(iName); }

TWatchlistCategory* CategoryOrTop(const std::optional<TGuid>& iId) {
  return iId ? &Category(*iId) : nullptr;
}

// Items of one source.
struct TBatch {
  TIntf<IWatchlistIntegration> Integration;
  TIntf<IInterfaceList> Results;  // of those items that have one
  std::vector<TGuid> Ids;
};

// The items by their sources; raises for the first id that is none. An id given twice counts once.
std::vector<TBatch> BySource(const std::vector<TGuid>& iIds) {
  std::vector<TBatch> batches;
  std::unordered_map<TGuid, size_t> places;
  std::unordered_set<TGuid> seen;
  for (const TGuid& id : iIds) {
    const TWatchlistItem& item = Item(id);
    if (!seen.insert(id).second) continue;
    const auto& integration = GroupOf(item).Integration();
    const auto [place, added] = places.try_emplace(integration->GetId(), batches.size());
    if (added) batches.push_back({integration, NewInterfaceList(), {}});
    TBatch& batch = batches[place->second];
    batch.Ids.push_back(id);
    if (item.SearchResult()) batch.Results->Add(item.SearchResult());
  }
  return batches;
}

int CountOf(const std::vector<TBatch>& iBatches) {
  size_t count = 0;
  for (const TBatch& batch : iBatches) count += batch.Ids.size();
  return static_cast<int>(count);
}

TWatchlistItemInfo InfoOf(const TWatchlistItem& iItem) {
  TWatchlistItemInfo info;
  info.Id = iItem.SearchResultId();
  info.Name = iItem.GetName();
  info.LastUpdate = iItem.LastUpdateDate();
  info.Note = iItem.Description().Lines();
  info.SearchResult = iItem.SearchResult();
  if (info.SearchResult && info.SearchResult->HasEndTime()) {
    info.EndTime = info.SearchResult->GetEndTime();
  }
  return info;
}

TWatchlistCategoryInfo InfoOf(const TWatchlistCategory& iCategory) {
  TWatchlistCategoryInfo info;
  info.Id = iCategory.Id();
  info.Name = iCategory.Name();
  info.Description = iCategory.Description().Lines();
  info.Expanded = iCategory.Expanded();
  for (const TWatchlistPlugin* group : iCategory.LstPlugin()) {
    TWatchlistGroupInfo& groupInfo = info.Groups.emplace_back();
    groupInfo.PluginId = group->GetId();
    groupInfo.Name = group->GetName();
    for (const TWatchlistItem* item : group->LstItem()) groupInfo.Items.push_back(InfoOf(*item));
  }
  for (const TWatchlistCategory* child : iCategory.LstCategory()) {
    info.Categories.push_back(InfoOf(*child));
  }
  return info;
}

TWatchlistReminderInfo InfoOf(const TRemindItem& iReminder) {
  TWatchlistReminderInfo info;
  info.Id = iReminder.Id();
  info.Time = iReminder.RemindTime();
  for (const TRemindType type : cRemindTypes) {
    if (iReminder.RemindTypes().Has(type)) info.Types.push_back(static_cast<int>(type));
  }
  // By the details, as the delivery goes: a sound plays also where the kinds don't name it.
  const auto* sound =
      dynamic_cast<const TRemindDetailsSound*>(iReminder.LstDetails().ItemByType(rtSound));
  if (sound != nullptr) info.SoundFile = sound->SoundFile();
  return info;
}

}  // namespace

void TWatchlistAccess::Detach() {
  if (FForm != nullptr) FForm->SetOnReminderDue({});
  FForm = nullptr;
}

TfrmKKWatchlist& TWatchlistAccess::Form() const {
  if (FForm == nullptr) throw Exception(_resRefusedNotReady);
  // A host that commands by ids does not wait for the section's delayed start.
  FForm->InitializeWithDelay();
  return *FForm;
}

TWatchlistInfo TWatchlistAccess::GetTree() const {
  Form();
  TWatchlistInfo info;
  for (const TWatchlistCategory* category : RootCategories()) {
    info.Categories.push_back(InfoOf(*category));
  }
  const TLstRemindItemSync& reminders = Handler()->LstRemind();
  const TLstRemindItemSync::TReading reading(reminders);
  for (int i = 0; i < reminders.GetCount(); ++i) {
    info.Reminders.push_back(InfoOf(reminders.GetItems(i)));
  }
  return info;
}

TGuid TWatchlistAccess::AddCategory(const std::optional<TGuid>& iParent, TStringView iName,
                                    const std::vector<TString>& iDescription) {
  TWatchlistCategoryCommands& commands = Form().Categories();
  TStringList lines;
  lines.Assign(iDescription);
  return commands.AddCategory(CategoryOrTop(iParent), CategoryName(iName), lines).Id();
}

void TWatchlistAccess::RenameCategory(const TGuid& iCategory, TStringView iName) {
  Form().Categories().RenameCategory(Category(iCategory), CategoryName(iName));
}

void TWatchlistAccess::DescribeCategory(const TGuid& iCategory,
                                        const std::vector<TString>& iLines) {
  TStringList lines;
  lines.Assign(iLines);
  Form().Categories().DescribeCategory(Category(iCategory), lines);
}

void TWatchlistAccess::MoveCategory(const TGuid& iCategory, const std::optional<TGuid>& iTarget) {
  TWatchlistCategoryCommands& commands = Form().Categories();
  TWatchlistCategory& category = Category(iCategory);
  TWatchlistCategory* target = CategoryOrTop(iTarget);
  // The command does nothing then; who asks by ids hears why.
  if (target == &category) throw Exception(_resRefusedIntoItself);
  commands.DoMoveCategory(target, category);
  FForm->Panes().ShowMoved();
}

bool TWatchlistAccess::DeleteCategory(const TGuid& iCategory) {
  return Form().Categories().DeleteCategory(Category(iCategory));
}

void TWatchlistAccess::MoveItems(const std::vector<TGuid>& iItems, const TGuid& iTarget) {
  TWatchlistItemCommands& commands = Form().Items();
  TWatchlistCategory& target = Category(iTarget);
  std::vector<TGuid> moving;
  for (const TGuid& id : iItems) {
    if (&CategoryOf(GroupOf(Item(id))) != &target) moving.push_back(id);
  }
  for (const TBatch& batch : BySource(moving)) {
    commands.MoveItems(batch.Integration, target, batch.Results, batch.Ids);
  }
  FForm->Panes().ShowMoved();
}

bool TWatchlistAccess::DeleteItems(const std::vector<TGuid>& iItems) {
  TWatchlistItemCommands& commands = Form().Items();
  const std::vector<TBatch> batches = BySource(iItems);
  if (batches.empty() || !AskDeleteItems(CountOf(batches))) return false;
  for (const TBatch& batch : batches) {
    commands.DeleteItems(batch.Integration, batch.Results, batch.Ids);
  }
  return true;
}

bool TWatchlistAccess::SetNote(const std::vector<TGuid>& iItems,
                               const std::vector<TString>& iLines) {
  TWatchlistItemCommands& commands = Form().Items();
  const std::vector<TBatch> batches = BySource(iItems);
  const int count = CountOf(batches);
  if (count == 0 || (count > 1 && !AskEditDescriptions(count))) return false;
  TStringList lines;
  lines.Assign(iLines);
  // Source by source, because the command marks the source of its first item alone.
  for (const TBatch& batch : batches) commands.SetDescriptions(batch.Ids, lines);
  FForm->Panes().RefreshCurrentSearchResult();
  return true;
}

void TWatchlistAccess::EditReminders(const std::vector<TGuid>& iItems) {
  TWatchlistReminderCommands& commands = Form().Reminders();
  const TIntf<IInterfaceList> results = NewInterfaceList();
  std::unordered_set<TGuid> seen;
  for (const TGuid& id : iItems) {
    const TWatchlistItem& item = Item(id);
    if (seen.insert(id).second && item.SearchResult()) results->Add(item.SearchResult());
  }
  commands.EditReminders(results);
}

bool TWatchlistAccess::DeleteReminders(const std::vector<TGuid>& iItems) {
  TWatchlistReminderCommands& commands = Form().Reminders();
  const std::vector<TBatch> batches = BySource(iItems);
  if (batches.empty() || !AskDeleteReminder()) return false;
  for (const TBatch& batch : batches) {
    commands.DeleteReminders(batch.Integration, batch.Results, batch.Ids);
  }
  return true;
}

void TWatchlistAccess::SetOnReminderDue(TNotifyEventReminder iEvent) {
  // A receiver may take its event back later than the section has gone.
  FOnReminderDue = {};
  if (FForm == nullptr && !iEvent) return;
  Form().SetOnReminderDue(TNotifyProcessRemindItem::Of<&TWatchlistAccess::DoReminderDue>(this));
  FOnReminderDue = iEvent;
}

void TWatchlistAccess::DoReminderDue(TObject* Sender, TRemindItem& iItem) {
  if (FOnReminderDue) FOnReminderDue(Sender, InfoOf(iItem));
}

bool TWatchlistAccess::HasUnsavedReminders() const {
  Form();
  return Handler()->LstRemind().GetChanged();
}

int TWatchlistAccess::RefreshAll() { return Form().Updates().UpdateAll(); }

int TWatchlistAccess::RefreshCategory(const TGuid& iCategory) {
  return Form().Updates().UpdateCategory(Category(iCategory));
}

int TWatchlistAccess::RefreshItems(const std::vector<TGuid>& iItems) {
  TWatchlistUpdateCommands& commands = Form().Updates();
  TLstWatchlistItem items(false);
  for (const TGuid& id : iItems) items.Add(Item(id));
  return commands.UpdateItems(items);
}

int TWatchlistAccess::OpenUpdates() const {
  Form();
  int count = 0;
  for (const TWatchlistIntegration* integration : Handler()->LstIntegration()) {
    count += integration->Updater().GetCount();
  }
  return count;
}

void TWatchlistAccess::CancelUpdates() {
  TfrmWatchlistAddProgress& add = Form().FormAddProgress();
  for (TWatchlistIntegration* integration : Handler()->LstIntegration()) {
    integration->Updater().RemoveWaiting();
  }
  if (add.LstAddItem().GetCount() > 0) add.btnCancelClick(&add);
}

void TWatchlistAccess::SetOnUpdateFinished(TNotifyEventSearchResult iEvent) {
  // A receiver may take its event back later than the section has gone.
  if (FForm == nullptr && !iEvent) return;
  Form().SetOnUpdateFinished(iEvent);
}

bool TWatchlistAccess::Save() {
  Form();
  Handler()->SaveAll();
  return !Handler()->LastSaveFailed();
}

bool TWatchlistAccess::ExportToFile(TStringView iFileName, const TWatchlistExportChoice& iChoice) {
  Form();
  TWatchlistExport exporting;
  for (const TGuid& id : iChoice.Categories) exporting.AddCategory(Category(id));
  for (const TGuid& id : iChoice.Sources) exporting.AddSource(Source(id));
  return exporting.SaveToFile(iFileName);
}

bool TWatchlistAccess::ImportFromFile(TStringView iFileName, TStringView iCategoryName) {
  BeforeImport();
  return Imported(
      TfrmKKWatchlistImport::ExecuteInBackground(iFileName, CategoryName(Trim(iCategoryName))));
}

bool TWatchlistAccess::OfferImport(TStringView iFileName) {
  TfrmKKWatchlist& form = BeforeImport();
  if (!Imported(TfrmKKWatchlistImport::Display(&form, iFileName))) return false;
  form.Show();
  return true;
}

void TWatchlistAccess::ExportToMobile(TStringView iFileName) {
  Form();
  TWatchlistExport::CheckFileName(iFileName);
  Handler()->SaveAllForMobileExport(iFileName);
}

bool TWatchlistAccess::ImportFromMobile(TStringView iFileName) {
  Form();
  TMemoryStream stream(ReadFileBytes(iFileName));
  return Imported(TfrmKKWatchlistImport::ExecuteInBackgroundFromKKMobileStream(stream));
}

// To read a file makes its sources count as unchanged, as required: what is not on the disk by then
// would not come there with the next save.
TfrmKKWatchlist& TWatchlistAccess::BeforeImport() {
  TfrmKKWatchlist& form = Form();
  Handler()->SaveAll();
  return form;
}

// What an import has taken over before it failed is shown as well.
bool TWatchlistAccess::Imported(bool iDone) {
  if (iDone) Handler()->SaveAll();
  FForm->BuildCategoriesTree(true);
  return iDone;
}

void TWatchlistAccess::PrintCategory(const TGuid& iCategory) {
  Form();
  TfrmKKWatchlistPrint::PrintCategory(Category(iCategory));
}

}  // namespace kk
