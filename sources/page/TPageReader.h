#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "sources/page/THtmlTree.h"
#include "sources/page/TPageAddress.h"
#include "sources/page/TProduct.h"

namespace kk {

/// What a server sent, and for which addresses.
struct TPageBytes {
  std::string_view Body;
  std::string_view ContentType;
  /// As asked for, and behind redirects.
  TPageAddress Requested;
  TPageAddress Final;
};

/// What was read of a page.
struct TPageReading {
  std::optional<TProduct> Product;
  /// Why there is no product, in German.
  TString Reason;
};

/// Changes whenever a page may read differently than before: data of an earlier version are fetched
/// anew even if the page has not changed.
inline constexpr int cPageReaderVersion = 1;

/// Reads the product of a page: from JSON-LD, else from microdata, with OpenGraph as the fallback.
/// What the first syntax leaves open is taken from the others if they mean the same offer; a price
/// is taken from another only where the first says neither one nor that there is none. Nothing
/// fails. Any thread.
TPageReading ReadPage(const TPageBytes& iPage, const THtmlLimits& iLimits = {});

}  // namespace kk
