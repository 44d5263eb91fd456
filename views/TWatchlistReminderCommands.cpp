#include "views/TWatchlistReminderCommands.h"

#include "host/base/Guard.h"
#include "host/base/TClock.h"
#include "host/contract/IWatchlistVisualization.h"
#include "reminders/TLstRemindItemSync.h"
#include "reminders/editor/TfrmKKWatchlistEditItemRemind.h"
#include "views/WatchlistModel.h"
#include "views/WatchlistQuestions.h"

namespace kk {

namespace {

// What ends at this very moment has ended.
bool HasEnded(const ISearchResult& iResult, TDateTime iNow) {
  return iResult.HasEndTime() && iNow >= iResult.GetEndTime();
}

// The old reminders are copied: the live ones stay as they are until the editor has ended.
void FillForEdit(const IInterfaceList& iResults, TLstRemindItemForEdit& ioLst) {
  for (int i = 0; i < iResults.GetCount(); ++i) {
    const auto result = GetAs<ISearchResult>(iResults, i);
    // Counted from the local time, unlike what a result list offers: see DropEnded.
    if (!result || !result->HasEndTime() || HasEnded(*result, Now())) continue;
    auto reminder = Handler()->LstRemind().CloneItemBySearchResultId(result->GetId());
    if (!reminder) reminder = std::make_unique<TRemindItem>(result->GetId());
    ioLst.Add(*reminder).SetEndDate(result->GetEndTime());
  }
}

void AddReminders(const TLstRemindItemForEdit& iLst) {
  for (const TRemindItemForEdit* entry : iLst) {
    if (!entry->RemindTime().IsZero()) Handler()->LstRemind().Add(entry->Clone());
    // Looks like a mistake and is required: also for an entry that is not kept.
    LogInfo(_resLoggingSenderForm, _resLoggingReminderAdded);
    // The entry says what its copy in the list does; that one may have fired and died already.
    entry->DumpParams();
  }
}

void DropEnded(IInterfaceList& ioResults) {
  for (int i = ioResults.GetCount() - 1; i >= 0; --i) {
    const auto result = GetAs<ISearchResult>(ioResults, i);
    if (!result || HasEnded(*result, ExactTime().GetNow())) ioResults.Delete(i);
  }
}

void MoveToFront(IInterfaceList& ioResults, const TIntf<ISearchResult>& iResult) {
  const int index = iResult ? ioResults.IndexOf(iResult) : -1;
  if (index <= 0) return;
  ioResults.Delete(index);
  ioResults.Insert(0, iResult);
}

void RefreshRow(const TIntf<IWatchlistIntegration>& iIntegration,
                const TIntf<ISearchResult>& iResult) {
  const auto visualization = Supports<IWatchlistVisualization>(iIntegration);
  if (visualization) visualization->RefreshResult(iResult);
}

// False if there is no reminder for this id.
bool DeleteReminder(TLstRemindItemSync& ioReminders, const TGuid& iId) {
  const auto reminder = ioReminders.ExtractBySearchResultId(iId);
  if (!reminder) return false;
  LogInfo(_resLoggingSenderForm, _resLoggingReminderDeleted, {GUIDToString(reminder->Id())});
  Guarded(u"DeleteOutlookAppointment", [&] {
    auto* details =
        dynamic_cast<TRemindDetailsOutlook*>(reminder->LstDetails().ItemByType(rtOutlook));
    if (details != nullptr) TfrmKKWatchlistEditItemRemind::DeleteOutlookAppointment(*details);
  });
  return true;
}

}  // namespace

void TWatchlistReminderCommands::AutoEnableReminder(bool iShowEditor,
                                                    const IInterfaceList& iResults) {
  TLstRemindItemForEdit entries;
  FillForEdit(iResults, entries);
  if (entries.GetCount() == 0) return;
  const std::vector<TGuid> ids = IdsOf(iResults);
  const bool accepted =
      iShowEditor ? TfrmKKWatchlistEditItemRemind::Display(FSeams.Form, entries)
                  : TfrmKKWatchlistEditItemRemind::DisplayWithoutDisplaying(FSeams.Form, entries);
  if (!accepted) return;
  // Looks like a mistake and is required: also those that have no new one.
  for (const TGuid& id : ids) Handler()->LstRemind().DeleteBySearchResultId(id);
  AddReminders(entries);
}

bool TWatchlistReminderCommands::Edit(const IInterfaceList& iResults) {
  const int count = iResults.GetCount();
  if (count == 0 || (count > 1 && !AskEditReminders(count))) return false;
  AutoEnableReminder(true, iResults);
  return true;
}

void TWatchlistReminderCommands::DoTabReminderAdd(const TIntf<IWatchlistIntegration>& iIntegration,
                                                  const TIntf<IInterfaceList>& ioResults) {
  DropEnded(*ioResults);
  if (ioResults->GetCount() > 0) MoveToFront(*ioResults, FSeams.View.FocusedResult());
  if (!Edit(*ioResults)) return;
  for (int i = 0; i < ioResults->GetCount(); ++i) {
    RefreshRow(iIntegration, GetAs<ISearchResult>(*ioResults, i));
  }
  FSeams.View.ShowFocusedResult(iIntegration);
}

void TWatchlistReminderCommands::EditReminders(const TIntf<IInterfaceList>& ioResults) {
  DropEnded(*ioResults);
  if (!Edit(*ioResults)) return;
  for (int i = 0; i < ioResults->GetCount(); ++i) {
    const auto result = GetAs<ISearchResult>(*ioResults, i);
    // It may have gone while the editor stood.
    const TWatchlistItem* item = RootCategories().FindItemById(result->GetId());
    if (item != nullptr) RefreshRow(GroupOf(*item).Integration(), result);
  }
  FSeams.View.ShowFocusedResult({});
}

bool TWatchlistReminderCommands::DoTabReminderDelete(
    bool iAsk, const TIntf<IWatchlistIntegration>& iIntegration,
    const TIntf<IInterfaceList>& iResults) {
  if (iResults->GetCount() == 0 || (iAsk && !AskDeleteReminder())) return false;
  DeleteReminders(iIntegration, iResults, {});
  return true;
}

void TWatchlistReminderCommands::DeleteReminders(const TIntf<IWatchlistIntegration>& iIntegration,
                                                 const TIntf<IInterfaceList>& iResults,
                                                 const std::vector<TGuid>& iIds) {
  {
    TLstRemindItemSync& reminders = Handler()->LstRemind();
    const TLstRemindItemSync::TWriting writing(reminders);
    for (int i = 0; i < iResults->GetCount(); ++i) {
      const auto result = GetAs<ISearchResult>(*iResults, i);
      if (result && DeleteReminder(reminders, result->GetId())) RefreshRow(iIntegration, result);
    }
    for (const TGuid& id : iIds) DeleteReminder(reminders, id);
  }
  FSeams.View.ShowFocusedResult(iIntegration);
}

}  // namespace kk
