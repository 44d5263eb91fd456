#include "reminders/TRemindItem.h"

#include "host/base/Log.h"
#include "host/base/TStringList.h"

namespace kk {

std::unique_ptr<TRemindItem> TRemindItem::Clone() const {
  auto clone = std::make_unique<TRemindItem>(FId);
  clone->Copy(*this);
  return clone;
}

void TRemindItem::Copy(const TRemindItem& iSource) {
  if (&iSource == this) return;
  FId = iSource.FId;
  FRemindTypes = iSource.FRemindTypes;
  FRemindTime = iSource.FRemindTime;
  FLstDetails.Clear();
  for (const TRemindDetailsBase* details : iSource.FLstDetails) FLstDetails.Add(details->Clone());
}

void TRemindItem::DumpParams() const {
  TStringList kinds;
  for (const TRemindType type : cRemindTypes) {
    if (FRemindTypes.Has(type)) kinds.Add(RemindTypeText(type));
  }
  LogDetails(_resLoggingRemindItemId, {GUIDToString(FId)});
  LogDetails(_resLoggingRemindItemTime, {DateTimeToStr(FRemindTime)});
  LogDetails(_resLoggingRemindItemTypes, {kinds.GetDelimited(u", ")});
}

}  // namespace kk
