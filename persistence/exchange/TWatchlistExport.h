#pragma once

#include <unordered_set>
#include <vector>

#include "model/TLstWatchlistCategory.h"
#include "model/TLstWatchlistIntegration.h"

namespace kk {

/// An export without a dialog, for hosts that have none: what goes is named. Main thread.
///
/// Other than behind the dialog, only the reminders of the items that go come along, and a file
/// that was there is there again if the new one could not be written.
class TWatchlistExport {
 public:
  /// With all below it. Without any, the whole tree goes.
  void AddCategory(TWatchlistCategory& iCategory) { FCategories.push_back(&iCategory); }
  /// A record of the handler's. Without any, all sources go.
  void AddSource(TWatchlistIntegration& iSource) { FSources.push_back(&iSource); }

  /// Raises Exception with a text for the user for what no export may write over: the watch list's
  /// own file, its backup, a folder, a device.
  static void CheckFileName(TStringView iFileName);
  /// False if the file could not be written; the log says why. Raises Exception with a text for the
  /// user if there is no item, and what CheckFileName does.
  bool SaveToFile(TStringView iFileName) const;

 private:
  std::vector<TWatchlistIntegration*> Sources() const;
  void GetTree(TLstWatchlistCategory& oTree) const;
  std::unordered_set<TGuid> ItemIds(const TLstWatchlistCategory& iTree) const;
  bool Write(TStringView iFileName, const TLstWatchlistCategory& iTree,
             const std::unordered_set<TGuid>& iItemIds) const;

  std::vector<TWatchlistCategory*> FCategories;
  std::vector<TWatchlistIntegration*> FSources;
};

}  // namespace kk
