#pragma once

#include "views/TWatchlistSeams.h"

namespace kk {

/// The section's commands on categories, by the objects of the model. What the rules refuse raises
/// Exception with a text for the user and changes nothing; where a menu offers a command, it asks
/// the predicates first. None of the commands writes the file or marks a source as changed, a
/// delete aside. Main thread.
class TWatchlistCategoryCommands {
 public:
  explicit TWatchlistCategoryCommands(const TWatchlistSeams& iSeams) : FSeams(iSeams) {}

  /// The category for everything unassigned can't be edited, moved, deleted or divided.
  static bool IsUnassigned(const TWatchlistCategory& iCategory);
  /// Whether the category is the other one or stands below it.
  static bool IsInSubtree(const TWatchlistCategory& iCategory, const TWatchlistCategory& iOther);
  /// The name with which the dialog for a new category opens: "Neu 1", ...
  static TString ProposeName();
  /// The check of the category dialog: only a name that differs from the old one, and only against
  /// the top level, whatever the level of the category, as required.
  static bool NameExists(TStringView iOldName, TStringView iName);

  /// Refuses a place that can take no new category, before the user has typed anything for it; null
  /// is the top level.
  static void CheckPlace(const TWatchlistCategory* iParent);
  /// A new category at the end of the parent's children, or of the top level.
  TWatchlistCategory& AddCategory(TWatchlistCategory* iParent, TStringView iName,
                                  const TStringList& iDescription);
  void RenameCategory(TWatchlistCategory& iCategory, TStringView iName);
  void DescribeCategory(TWatchlistCategory& iCategory, const TStringList& iLines);
  /// To the end of the target's children, or of the top level. To itself: does nothing.
  void DoMoveCategory(TWatchlistCategory* iTarget, TWatchlistCategory& iCategory);
  /// Asks, and deletes it with all that it holds and the reminders of that; false for no.
  bool DeleteCategory(TWatchlistCategory& iCategory);

 private:
  static void CheckName(TStringView iOldName, TStringView iName);
  static void CheckEditable(const TWatchlistCategory& iCategory);
  static void DeleteReminders(const TWatchlistCategory& iCategory);
  static void MarkAllChanged();

  const TWatchlistSeams& FSeams;
};

}  // namespace kk
