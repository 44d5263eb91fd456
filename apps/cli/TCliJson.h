#pragma once

#include <string>

#include "host/base/TStringList.h"
#include "host/contract/ISettingsKeys.h"
#include "host/contract/IWatchlistAccess.h"

namespace kk {

/// An item with what its source tells of it: title and value, in the source's order.
struct TCliItemDetails {
  TWatchlistItemInfo Item;
  TString Source;
  TString Category;  ///< the path to it
  std::vector<std::pair<TString, TString>> Values;
  const TWatchlistReminderInfo* Reminder = nullptr;
};

/// A reminder with the item that it is for.
struct TCliReminder {
  TWatchlistReminderInfo Info;
  TString ItemName;  ///< empty where the item is gone
  bool HasItem = false;
  bool Overdue = false;  ///< its time has come, and it was not delivered
};

/// One key of the settings with what stands in the file.
struct TCliSetting {
  TSettingsKeyInfo Info;
  TString Value;
  bool IsDefault = true;
};

/// The watch list for programs: JSON in UTF-8 (RFC 8259), indented, without a line break at the
/// end. Ids are texts with braces, times ISO 8601 in local time or null. Characters that a terminal
/// would obey are escaped.
struct TCliJson {
  static std::string Tree(const TWatchlistInfo& iTree);
  static std::string Item(const TCliItemDetails& iDetails);
  static std::string Reminders(const std::vector<TCliReminder>& iReminders);
  static std::string Settings(const std::vector<TCliSetting>& iSettings);
};

/// The kinds of reminders as the files of this host name them, by their numbers; "?" for others.
TStringView ReminderTypeName(int iType);

}  // namespace kk
