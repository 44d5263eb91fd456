#pragma once

#include <optional>
#include <vector>

#include "host/contract/ISearchResultUpdate.h"

namespace kk {

/// The watch list as it stands, as plain values for hosts without a section on a screen.
struct TWatchlistItemInfo {
  TGuid Id;
  TString Name;
  TDateTime LastUpdate;  ///< zero when never
  TDateTime EndTime;     ///< zero for an offer without an end
  std::vector<TString> Note;
  TIntf<ISearchResult> SearchResult;  ///< may be empty
};
struct TWatchlistGroupInfo {
  TGuid PluginId;
  TString Name;
  std::vector<TWatchlistItemInfo> Items;
};
struct TWatchlistCategoryInfo {
  TGuid Id;
  TString Name;
  std::vector<TString> Description;
  bool Expanded = false;
  std::vector<TWatchlistGroupInfo> Groups;
  std::vector<TWatchlistCategoryInfo> Categories;
};
struct TWatchlistReminderInfo {
  TGuid Id;  ///< of the item's search result
  TDateTime Time;
  std::vector<int> Types;  ///< 0 sound, 1 window, 2 SMS, 3 calendar, 4 e-mail; ascending
  TString SoundFile = {};  ///< empty for none
};
using TNotifyEventReminder =
    TDelegate<void(TObject* Sender, const TWatchlistReminderInfo& iReminder)>;
struct TWatchlistInfo {
  std::vector<TWatchlistCategoryInfo> Categories;
  std::vector<TWatchlistReminderInfo> Reminders;
};

/// What goes into an export file.
struct TWatchlistExportChoice {
  std::vector<TGuid> Categories;  ///< each with all below it; none for the whole tree
  std::vector<TGuid> Sources;     ///< ids of their plug-ins; none for all
};

/// The commands of the section by ids, for a host that has no section: the terminal and scripts.
/// They follow the section's rules and ask its questions through the host's dialogs. Offered by the
/// watch list's plug-in once it is initialised. Main thread.
///
/// What the rules refuse (an unknown id, a name in use, the category for everything unassigned, too
/// deep a nesting) raises Exception with a German text for the user and changes nothing. A Boolean
/// result is false if the user said no.
class IWatchlistAccess : public IInterface {
 public:
  using TParent = IInterface;
  static constexpr TGuid cIid = GuidLiteral("{0C6C3F0E-7B52-4D2F-9B36-9F6B0C1C5A11}");

  virtual TWatchlistInfo GetTree() const = 0;

  /// A new category under the parent, or at the top level. Answers its id.
  virtual TGuid AddCategory(const std::optional<TGuid>& iParent, TStringView iName,
                            const std::vector<TString>& iDescription) = 0;
  virtual void RenameCategory(const TGuid& iCategory, TStringView iName) = 0;
  virtual void DescribeCategory(const TGuid& iCategory, const std::vector<TString>& iLines) = 0;
  /// To the end of the target's children, or of the top level. Never into itself or its subtree.
  virtual void MoveCategory(const TGuid& iCategory, const std::optional<TGuid>& iTarget) = 0;
  /// Asks. With all that it holds; the reminders of its items go, too.
  virtual bool DeleteCategory(const TGuid& iCategory) = 0;

  virtual void MoveItems(const std::vector<TGuid>& iItems, const TGuid& iTarget) = 0;
  /// Asks. The items' reminders go, too.
  virtual bool DeleteItems(const std::vector<TGuid>& iItems) = 0;
  /// Asks when there are several.
  virtual bool SetNote(const std::vector<TGuid>& iItems, const std::vector<TString>& iLines) = 0;

  /// Opens the editor of reminders (TfrmKKWatchlistEditItemRemind) for those of the items that end
  /// in the future; asks first when there are several. Does nothing if there are none.
  virtual void EditReminders(const std::vector<TGuid>& iItems) = 0;
  /// Asks. With their appointments in the calendar.
  virtual bool DeleteReminders(const std::vector<TGuid>& iItems) = 0;
  /// Told of each reminder that has left the list because its time has come, before it is
  /// delivered. Nothing is missed if it is set before the main loop turns for the first time. The
  /// receiver takes it back (an empty event) before it dies.
  virtual void SetOnReminderDue(TNotifyEventReminder iEvent) = 0;
  /// Whether reminders have come, gone or changed since the list was saved.
  virtual bool HasUnsavedReminders() const = 0;

  /// Queue what can be refreshed; answer how many results went into the queues.
  virtual int RefreshAll() = 0;
  virtual int RefreshCategory(const TGuid& iCategory) = 0;
  virtual int RefreshItems(const std::vector<TGuid>& iItems) = 0;
  /// How many results wait in the queues or are under way, those of adds included.
  virtual int OpenUpdates() const = 0;
  /// Takes back what waits in the queues: refreshes are not made, adds are given up. A request that
  /// is under way comes to its end by itself.
  virtual void CancelUpdates() = 0;
  /// Told of each end of a refresh, adds included, after the list has taken the result in. The
  /// receiver takes it back (an empty event) before it dies.
  virtual void SetOnUpdateFinished(TNotifyEventSearchResult iEvent) = 0;

  /// Writes the file now. False if that failed; the log says why.
  virtual bool Save() = 0;

  /// Writes a file "*.wch" with the categories, their items and the reminders of these, over one
  /// that is there. False if it could not be written: the log says why, and what was there is there
  /// still. No item to write raises Exception, and so does the watch list's own file.
  virtual bool ExportToFile(TStringView iFileName, const TWatchlistExportChoice& iChoice) = 0;
  /// Takes over what such a file has and the list has not: with the file's categories, or all into
  /// the one of this name, old or new. Asks for one if the file has none. False if that did not go
  /// through, which the log or a message has told; what was taken over by then stays.
  virtual bool ImportFromFile(TStringView iFileName, TStringView iCategoryName) = 0;
  /// The section's import for this file: the user chooses what to take over, and the section is
  /// shown then. False if nothing was taken over.
  virtual bool OfferImport(TStringView iFileName) = 0;
  /// Writes the document for the program on the telephone; raises Exception if that fails, and for
  /// the watch list's own file.
  virtual void ExportToMobile(TStringView iFileName) = 0;
  /// As ImportFromFile. A document of another version has nothing to take over and is no failure.
  /// Raises Exception if the file can't be read.
  virtual bool ImportFromMobile(TStringView iFileName) = 0;

  /// Prints the category's own items through the host's printing: a list for each of their sources,
  /// each after a print dialog. Nothing for a source that can't tell its results in lines.
  virtual void PrintCategory(const TGuid& iCategory) = 0;
};

}  // namespace kk
