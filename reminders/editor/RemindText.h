#pragma once

#include "host/base/TGuid.h"
#include "host/contract/IReminderText.h"

namespace kk {

/// How the view of a source numbers the kinds of reminders; not the order of TRemindType.
enum class TReminderTextKind : uint8_t { rtkSMS, rtkEMail, rtkWindow, rtkOutlook };

/// What the source of a watched item proposes as text. Empty if the item is not in the tree (any
/// more) or has no result, or if its source has no view. Main thread; what the source raises
/// passes.
TIntf<IReminderText> FindReminderText(const TGuid& iSearchResultId, TReminderTextKind iKind);

}  // namespace kk
