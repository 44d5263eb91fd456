#pragma once

#include "host/contract/ISearchResultConverter.h"
#include "sources/page/TPageData.h"

namespace kk {

/// Tells a result in the columns of this source. Main thread.
class TPageConverter : public TInterfaced<ISearchResultConverter> {
 public:
  /// A result of another source has no lines.
  void Convert(bool iHeader, const TIntf<ISearchResult>& iSearchResult,
               TStringList& ioLines) override;
};

/// One line of what a page says.
TString LineText(TStringView iText);
/// A page's price as it is shown; empty when it isn't known.
TString PriceText(const TPageData& iData);
/// "20.11.2026 18:30"; empty for no time.
TString TimeText(TDateTime iTime);

}  // namespace kk
