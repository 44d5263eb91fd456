#pragma once

#include "host/base/TStringList.h"
#include "persistence/TWatchlistFileLoader.h"

namespace kk {

/// Reads a file that was exported: one without categories or reminders is no failure, and tells
/// that it has none. Main thread.
///
/// Looks like a mistake and is required: as with every load, the records of the sources that the
/// file holds count as unchanged afterwards, whatever is taken over of it.
class TWatchlistFileLoaderImport : public TWatchlistFileLoader {
 public:
  using TWatchlistFileLoader::TWatchlistFileLoader;

  bool HasCategories() const { return FHasCategories; }
  bool HasRemindItems() const { return FHasRemindItems; }
  /// Looks like a mistake and is required: nobody enters a source, so the answer is always false.
  bool GetHasIntegration(const TGuid& iId) const;

 protected:
  void FoundCategories(bool iFound) override { FHasCategories = iFound; }
  void FoundRemindItems() override { FHasRemindItems = true; }

 private:
  bool FHasCategories = false;
  bool FHasRemindItems = false;
  TStringList FHasIntegrations;
};

}  // namespace kk
