#pragma once

#include "host/base/TStringList.h"
#include "host/contract/ISearchResult.h"

namespace kk {

inline constexpr TGuid IID_SearchResultConverter =
    GuidLiteral("{99F8DC9C-E96C-4C57-9FE9-58EFF56C908E}");

/// Tells a result of its source in lines, for printing and for the terminal. Main thread.
class ISearchResultConverter : public IInterface {
 public:
  using TParent = IInterface;
  static constexpr TGuid cIid = IID_SearchResultConverter;

  /// With iHeader appends the titles of the columns, at least four, one a line. Otherwise appends
  /// the result's values in the same order, one a line. The result may be empty, or another
  /// source's: then it has no lines.
  virtual void Convert(bool iHeader, const TIntf<ISearchResult>& iSearchResult,
                       TStringList& ioLines) = 0;
};

}  // namespace kk
