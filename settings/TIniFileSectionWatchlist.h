#pragma once

#include <vector>

#include "host/base/TDateTime.h"
#include "host/base/TGuid.h"
#include "host/common/TIniFileSectionBase.h"
#include "host/contract/ISettingsKeys.h"

namespace kk {

/// The settings of the watch list: the section "Watchlist" of the settings file. There is no cache:
/// a getter reads the file, a setter writes it at once, so an object is made, used and dropped
/// where it is needed. A missing key and text that is no value read as the key's default, a number
/// out of range as the nearer bound. Names, defaults, ranges and meanings are in one table; see
/// Keys. Main thread.
class TIniFileSectionWatchlist : public TKKIniFileSectionPluginWithWindow {
 public:
  /// On the host's settings file.
  TIniFileSectionWatchlist();

  /// All keys, in the order in which a user reads them.
  static std::vector<TSettingsKeyInfo> Keys();

  // The section's window. Widths in pixels.
  int GetCategoryTreeWidth() const;
  void SetCategoryTreeWidth(int iValue);
  int GetExplorerBarWidth() const;
  void SetExplorerBarWidth(int iValue);
  bool GetShowItemCountInTree() const;
  void SetShowItemCountInTree(bool iValue);
  bool GetShowItemCountInTreeRecursive() const;
  void SetShowItemCountInTreeRecursive(bool iValue);
  bool GetShowAddDialog() const;
  void SetShowAddDialog(bool iValue);
  /// The id of the selected category as text, or empty.
  TString GetLastSelected() const;
  void SetLastSelected(TStringView iValue);

  // Sounds.
  bool GetStoreLastSelectedSoundFile() const;
  void SetStoreLastSelectedSoundFile(bool iValue);
  TString GetSoundFile() const;
  void SetSoundFile(TStringView iValue);

  // Refreshing by itself.
  bool GetUpdateOnStartup() const;
  void SetUpdateOnStartup(bool iValue);
  bool GetUpdateOnInterval() const;
  void SetUpdateOnInterval(bool iValue);
  int GetUpdateIntervalInHrs() const;
  void SetUpdateIntervalInHrs(int iValue);
  /// Kept to the second, as text in the user's locale; what can't be read there means never (0).
  TDateTime GetUpdateLastDate() const;
  void SetUpdateLastDate(TDateTime iValue);

  // The reminder editor's last state.
  /// A value of TRemindType; values beyond it come from other versions.
  int GetRemindType() const;
  void SetRemindType(int iValue);
  int GetRemindTimeSpanOffsetInSecs() const;
  void SetRemindTimeSpanOffsetInSecs(int iValue);
  /// The place in the editor's list of times before the end of the auction.
  int GetRemindTimeRelative() const;
  void SetRemindTimeRelative(int iValue);

  // Reminders that are set up by themselves.
  bool GetAutoActivateReminder() const;
  void SetAutoActivateReminder(bool iValue);
  bool GetUseDefaultReminderTimes() const;
  void SetUseDefaultReminderTimes(bool iValue);
  /// True: counted from now; false: back from the end of the auction.
  bool GetDefaultReminderAfterTime() const;
  void SetDefaultReminderAfterTime(bool iValue);
  int GetDefaultReminderHours() const;
  void SetDefaultReminderHours(int iValue);
  int GetDefaultReminderMinutes() const;
  void SetDefaultReminderMinutes(int iValue);
  int GetDefaultReminderSeconds() const;
  void SetDefaultReminderSeconds(int iValue);
  /// The place in the list of times, 0 to 13, in spite of the key's name "RelativeTimeInMinutes".
  int GetRelativeTimeIndex() const;
  void SetRelativeTimeIndex(int iValue);
  /// 0 for sound alone, 1 for the window.
  int GetDefaultRemindType() const;
  void SetDefaultRemindType(int iValue);

  // The category into which results of a source go without a question.
  /// Fills the list with the lines source=category. The values of all other keys of the section
  /// come along as lines without a name; that is required, and look-ups by name pass over them.
  void GetDefaultCategory(TStringList& ioList) const;
  /// The empty id if the source has none.
  TGuid GetDefaultCategory(const TGuid& iIntegrationId) const;
  /// The empty id takes the source's line out. The keys are written anew, numbered from 0. Each
  /// call adds a key with the value ";" for every line without a name; that is required.
  void SetDefaultCategory(const TGuid& iIntegrationId, const TGuid& iCategoryId);
  /// The names of the keys that begin with "DefaultCategory", whatever follows, in file order.
  void GetDefaultCategoryNodes(TStringList& ioList) const;
  bool HasDefaultCategoryNodes() const;
  void DeleteDefaultCategoryNodes();
  /// Deletes the keys and writes nothing back; that is required.
  void SetDefaultCategoryNodes(const TStringList& iList);

 private:
  struct TKey;
  int ReadNumber(const TKey& iKey) const;
  void WriteNumber(const TKey& iKey, int iValue);
  bool ReadFlag(const TKey& iKey) const;
  void WriteFlag(const TKey& iKey, bool iValue);
  TString ReadText(const TKey& iKey) const;
  void WriteText(const TKey& iKey, TStringView iValue);
};

}  // namespace kk
