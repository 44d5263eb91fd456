#include "host/base/Exception.h"

namespace kk {

size_t CheckedIndex(int iIndex, size_t iCount) {
  if (iIndex < 0 || static_cast<size_t>(iIndex) >= iCount) {
    throw EListError(Format(u"Listenindex überschreitet das Maximum (%d)", {iIndex}));
  }
  return static_cast<size_t>(iIndex);
}

TString MessageOf(const std::exception& iException) {
  if (const auto* own = dynamic_cast<const Exception*>(&iException)) return own->Message();
  return FromUtf8(iException.what());
}

}  // namespace kk
