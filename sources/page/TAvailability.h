#pragma once

#include <string_view>

#include "host/base/TString.h"

namespace kk {

/// Whether an article can be had: ItemAvailability of schema.org.
enum class TAvailability {
  avUnknown,
  avInStock,
  avLimited,
  avOnlineOnly,
  avInStoreOnly,
  avPreOrder,
  avPreSale,
  avBackOrder,
  avMadeToOrder,
  avReserved,
  avOutOfStock,
  avSoldOut,
  avDiscontinued
};

/// From what pages write: "http://schema.org/InStock", "in_stock", "out of stock", "auf Lager".
/// UTF-8; unknown for everything else.
TAvailability AvailabilityFromText(std::string_view iText);
/// schema.org's name without its address; empty for unknown. Streams keep it.
std::string AvailabilityName(TAvailability iAvailability);
/// In German; empty for unknown.
TString AvailabilityDisplay(TAvailability iAvailability);

/// True for what can't be bought at the moment.
bool IsGone(TAvailability iAvailability);

}  // namespace kk
