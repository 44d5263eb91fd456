#pragma once

#include "host/base/Exception.h"
#include "persistence/TWatchlistHandler.h"
#include "plugin/texts/UnitKKPluginWatchlistResourceStrings.h"

namespace kk {

/// The handler, for cells: views may paint on when it is gone, and then this raises Exception.
inline TWatchlistHandler& ColumnHandler() {
  if (Handler() == nullptr) throw Exception(_resRefusedNotReady);
  return *Handler();
}

}  // namespace kk
