#pragma once

#include "model/TLstWatchlistCategory.h"

namespace kk {

/// Appends the category for everything that belongs nowhere else.
void AddCatchAllCategory(TLstWatchlistCategory& ioLst);

}  // namespace kk
