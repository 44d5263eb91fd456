#include "views/TWatchlistReminderCommands.h"

#include "host/base/Guard.h"
#include "host/contract/IWatchlistVisualization.h"
#include "persistence/TWatchlistHandler.h"
#include "reminders/TLstRemindItemSync.h"
#include "views/WatchlistQuestions.h"

namespace kk {

void TWatchlistReminderCommands::DeleteReminders(bool iAsk,
                                                 const TIntf<IWatchlistIntegration>& iIntegration,
                                                 const TIntf<IInterfaceList>& iResults) {
  if (iResults->GetCount() == 0) return;
  if (iAsk && !AskDeleteReminder()) return;
  const auto visualization = Supports<IWatchlistVisualization>(iIntegration);
  {
    TLstRemindItemSync& reminders = Handler()->LstRemind();
    const TLstRemindItemSync::TWriting writing(reminders);
    for (int i = 0; i < iResults->GetCount(); ++i) {
      const auto result = GetAs<ISearchResult>(*iResults, i);
      const auto reminder = result ? reminders.ExtractBySearchResultId(result->GetId()) : nullptr;
      if (!reminder) continue;
      LogInfo(_resLoggingSenderForm, _resLoggingReminderDeleted, {GUIDToString(reminder->Id())});
      Guarded(u"DeleteOutlookAppointment", [&] {
        const auto* details = dynamic_cast<const TRemindDetailsOutlook*>(
            reminder->LstDetails().ItemByType(rtOutlook));
        if (details != nullptr) FSeams.ReminderEditor->DeleteOutlookAppointment(*details);
      });
      if (visualization) visualization->RefreshResult(result);
    }
  }
  FSeams.View->ShowFocusedResult();
}

}  // namespace kk
