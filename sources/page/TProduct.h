#pragma once

#include <optional>

#include "host/base/TDateTime.h"
#include "sources/page/TAvailability.h"
#include "sources/page/TPrice.h"

namespace kk {

/// What a page offers its product for. Every part may be unknown.
struct TOffer {
  std::optional<TPrice> Price;
  /// ISO 4217, upper case.
  TString Currency;
  TAvailability Availability = TAvailability::avUnknown;
  TString Seller;
  /// Local time; zero when there is no end.
  TDateTime EndTime;

  friend bool operator==(const TOffer&, const TOffer&) = default;
};

/// What a page says about its product.
struct TProduct {
  TString Name;
  /// Absolute address.
  TString Image;
  TOffer Offer;

  friend bool operator==(const TProduct&, const TProduct&) = default;
};

}  // namespace kk
