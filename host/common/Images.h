#pragma once

#include "host/contract/TBitmap.h"

namespace kk {

/// An image of a package by the name of its resource. Names are unique over all packages, so the
/// module plays no part.
TBitmap CreateBmp(TStringView iModule, TStringView iResourceName);

/// Sets the bitmap to an image of the host's shared resources.
void GetImageFromCommonResources(TStringView iResourceName, TBitmap& ioBitmap);

}  // namespace kk
