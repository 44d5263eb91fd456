#pragma once

#include "model/TLstWatchlistIntegration.h"
#include "persistence/TWatchlistFileSaver.h"

namespace kk {

/// Writes a chosen part of the watch list into a file of its own, in the format of the watch list
/// file with some entries left out. Main thread.
///
/// Whole entries go out: there is no choice by category, so the reminders are those of all sources.
class TWatchlistFileSaverExport : public TWatchlistFileSaver {
 public:
  using TWatchlistFileSaver::TWatchlistFileSaver;

  bool IncludeRemindItems() const { return FIncludeRemindItems; }
  void SetIncludeRemindItems(bool iInclude) { FIncludeRemindItems = iInclude; }
  bool IncludeCategories() const { return FIncludeCategories; }
  void SetIncludeCategories(bool iInclude) { FIncludeCategories = iInclude; }
  /// The records of the sources to export, borrowed: the very ones that SaveToFile gets.
  TLstWatchlistIntegration& IncludeIntegrations() { return FIncludeIntegrations; }
  /// Looks like a mistake and is required: appends a new record for each interface of the list,
  /// which is then no record that SaveToFile gets, so that nothing of these sources is written. The
  /// new records live as long as the saver.
  void SetIncludeIntegrations(const IInterfaceList& iIntegrations);

  /// A file that is there is deleted first: nothing of it is kept, and there is no backup. The file
  /// of the watch list itself is refused (Exception): it would lose what was not chosen.
  void SaveToFile(const TLstWatchlistCategory& iLstCategory, const TLstRemindItem& iLstRemindItem,
                  const TLstWatchlistIntegration& iLstIntegration) override;

 protected:
  bool CanSaveCategories() const override { return FIncludeCategories; }
  bool CanSaveRemindItems(const TLstRemindItem&) const override { return FIncludeRemindItems; }
  bool CanSaveIntegration(const TWatchlistIntegration& iIntegration) const override;
  bool CanSaveItems(const TWatchlistIntegration& iIntegration) const override {
    return CanSaveIntegration(iIntegration);
  }
  bool CanSaveSearchResults(const TWatchlistIntegration& iIntegration) const override {
    return CanSaveIntegration(iIntegration);
  }

 private:
  bool FIncludeRemindItems = false;
  bool FIncludeCategories = false;
  TLstWatchlistIntegration FOwnRecords{true};
  TLstWatchlistIntegration FIncludeIntegrations{false};
};

}  // namespace kk
