#pragma once

#include <cstdint>

namespace kk {

/// Where an object of the tree hangs: its owning list, and a number that rises along that list.
template <class TList>
struct TTreePlace {
  TList* List = nullptr;
  int64_t Order = 0;
};

}  // namespace kk
