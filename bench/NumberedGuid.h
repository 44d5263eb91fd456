#pragma once

#include <cstdint>
#include <cstring>
#include <random>

#include "host/base/TGuid.h"

namespace kk {

/// Ids that are the same at every run.
inline TGuid NumberedGuid(uint32_t iKind, uint32_t iNumber) {
  std::mt19937_64 random((uint64_t{iKind} << 32) | iNumber);
  const uint64_t halves[] = {random(), random()};
  TGuid id;
  std::memcpy(id.Bytes.data(), halves, sizeof halves);
  return id;
}

}  // namespace kk
