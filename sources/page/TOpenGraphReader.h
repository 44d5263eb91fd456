#pragma once

#include <optional>

#include "sources/page/TPageFacts.h"
#include "sources/page/TProductChooser.h"

namespace kk {

/// Reads the "product:" tags of OpenGraph (and "og:price", which some shops write for them).
/// Nothing without a price, since "og:type" alone says product on pages that sell none.
std::optional<TChosenProduct> ReadOpenGraph(const TPageFacts& iFacts);

/// The image that the page shows of itself, as an absolute address; empty if there is none.
TString OpenGraphImage(const TPageFacts& iFacts);

}  // namespace kk
