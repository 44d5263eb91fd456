#pragma once

#include "host/base/TString.h"

namespace kk {

/// An image by the name of its resource; the host draws it, from its own drawings or the package's,
/// sharp at every scale. An empty name is no image.
struct TBitmap {
  TString ResourceName;

  bool IsEmpty() const { return ResourceName.empty(); }
  friend bool operator==(const TBitmap&, const TBitmap&) = default;
};

/// A colour by its parts, 0 to 255.
struct TColor {
  uint8_t Red = 0, Green = 0, Blue = 0;
  friend constexpr bool operator==(const TColor&, const TColor&) = default;
};

/// The colour that counts as see-through in the images of the system.
inline constexpr TColor cTransparentColor{255, 0, 255};

}  // namespace kk
