#pragma once

#include "reminders/TRemindItem.h"

// What a reminder holds of a kind: its details, and its mark in the set of kinds. One thread at a
// time, as the reminder itself.
namespace kk {

void IncludeType(TRemindItem& ioItem, TRemindType iType);
void ExcludeType(TRemindItem& ioItem, TRemindType iType);
/// The details and the mark.
void AddDetails(TRemindItem& ioItem, TRemindType iType,
                std::unique_ptr<TRemindDetailsBase> iDetails);
/// The first details of the kind, which have to be there, and the mark.
void DeleteDetails(TRemindItem& ioItem, TRemindType iType);

/// Borrowed; null if there are none.
template <class Details>
Details* DetailsOf(const TRemindItem& iItem, TRemindType iType) {
  return dynamic_cast<Details*>(iItem.LstDetails().ItemByType(iType));
}

}  // namespace kk
