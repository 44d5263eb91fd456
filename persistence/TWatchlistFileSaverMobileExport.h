#pragma once

#include <unordered_map>

#include "host/common/TFastWriterBaseSimpleXML.h"
#include "model/TLstWatchlistCategory.h"
#include "model/TLstWatchlistIntegration.h"

namespace kk {

/// Writes the watch list as one XML document for the program on the telephone: all categories side
/// by side, and the search results in the open, as the sources tell them. Reminders, notes and the
/// tree's structure do not go along. docs/format.md tells the document. Main thread.
///
/// What a source names in a way that no element can be named (XML 1.0 and Namespaces in XML 1.0; up
/// to U+FFFF) stays out, so that the rest can be read, and an error in the log says so for each
/// source.
class TWatchlistFileSaverMobileExport : public TFastWriterBaseSimpleXML {
 public:
  /// UTF-8. Raises Exception if a source begins an element that it does not end, and EInOutError if
  /// the file can't be written; a file that was there stays then.
  static void Save(TStringView iFileName, const TLstWatchlistCategory& iLstCategory,
                   const TLstWatchlistIntegration& iLstIntegration);

 private:
  /// Items by the id of their category, in order.
  using TItemsByCategory = std::unordered_map<TGuid, TIntf<IInterfaceList>>;

  void SaveCategories(const TLstWatchlistCategory& iLst);
  void SaveCategory(const TWatchlistCategory& iCategory);
  void SaveSearchResults(const TLstWatchlistCategory& iLstCategory,
                         const TLstWatchlistIntegration& iLstIntegration);
  void SaveSearchresultsForIntegration(const TLstWatchlistCategory& iLstCategory,
                                       const TWatchlistIntegration& iIntegration);
  void SaveSearchresultsForCategory(const TWatchlistCategory& iCategory,
                                    const TItemsByCategory& iItems,
                                    const TWatchlistIntegration& iIntegration);
  void WriteLine(TStringView iLine);
  void TellLeftOut(const IWatchlistIntegration& iSource);

  /// Of one source: how many fields, and the names of the first few.
  struct TLeftOut {
    int64_t Count = 0;
    std::vector<TString> Names;
  } FLeftOut;
};

}  // namespace kk
