#pragma once

#include "host/common/TParserBaseSimpleXML.h"
#include "host/common/TSimpleXMLDocument.h"
#include "model/TLstWatchlistCategory.h"
#include "model/TLstWatchlistIntegration.h"

namespace kk {

/// Reads the document of the program on the telephone into a list of categories, from which the
/// import takes it over. docs/format.md tells the document. Main thread.
class TWatchlistFileLoaderMobileImport : public TParserBaseSimpleXML {
 public:
  /// From the stream's start. The list is emptied without freeing what is in it. A document of a
  /// version other than 1 leaves it empty and is no failure, as required. Raises EConvertError for
  /// what is no XML and for an id that is none.
  void LoadFromStream(TStream& iStream, const TLstWatchlistIntegration& iLstIntegration,
                      TLstWatchlistCategory& ioLstCategory);

 private:
  static void ParseCategories(TSimpleXMLNode iNode, TLstWatchlistCategory& ioLst);
  static void AddEmptyCategory(TLstWatchlistCategory& ioLst);
  static void ParseSearchResults(TSimpleXMLNode iNode,
                                 const TLstWatchlistIntegration& iLstIntegration,
                                 TLstWatchlistCategory& ioLst);
  static std::unique_ptr<TWatchlistItem> ParseWatchlistItem(TSimpleXMLNode iNode,
                                                            const TIntf<ISearchResult>& iResult);
  static void SaveToIntegration(std::unique_ptr<TWatchlistItem> iItem,
                                const TIntf<IWatchlistIntegration>& iIntegration,
                                TLstWatchlistCategory& ioLst);
};

}  // namespace kk
