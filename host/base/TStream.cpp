#include "host/base/TStream.h"

#include <algorithm>
#include <cstring>

namespace kk {

std::string TStream::ReadRest() {
  std::string rest(GetSize() - GetPosition(), '\0');
  rest.resize(Read(rest.data(), rest.size()));
  return rest;
}

size_t TMemoryStream::Read(void* oBytes, size_t iCount) {
  const size_t count = std::min(iCount, FBytes.size() - FPosition);
  if (count > 0) std::memcpy(oBytes, FBytes.data() + FPosition, count);
  FPosition += count;
  return count;
}

void TMemoryStream::Write(const void* iBytes, size_t iCount) {
  if (iCount == 0) return;
  const size_t over = std::min(iCount, FBytes.size() - FPosition);
  FBytes.replace(FPosition, over, static_cast<const char*>(iBytes), iCount);
  FPosition += iCount;
}

void TMemoryStream::SetPosition(size_t iPosition) {
  FPosition = std::min(iPosition, FBytes.size());
}

void TMemoryStream::Clear() { SetBytes({}); }

void TMemoryStream::SetBytes(std::string iBytes) {
  FBytes = std::move(iBytes);
  FPosition = 0;
}

}  // namespace kk
