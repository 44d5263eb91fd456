#include "tests/support/TFaultyFileLayer.h"

#include <algorithm>
#include <cerrno>

namespace kk {

void TFaultyFileLayer::FailCall(int iCall, int iError) {
  FCalls.clear();
  FFailName.clear();
  FFailCall = iCall;
  FError = iError;
}

void TFaultyFileLayer::FailAll(const std::string& iName, int iError) {
  FailCall(-1, iError);
  FFailName = iName;
}

bool TFaultyFileLayer::Fails(const char* iName) {
  FCalls.emplace_back(iName);
  const bool fails = static_cast<int>(FCalls.size()) - 1 == FFailCall || FFailName == iName;
  if (fails) errno = FError;
  return fails;
}

int TFaultyFileLayer::Open(const char* iPath, int iFlags, unsigned iMode) {
  return Fails("open") ? -1 : MachineFileLayer().Open(iPath, iFlags, iMode);
}

long TFaultyFileLayer::Write(int iFile, const void* iBytes, size_t iCount) {
  if (Fails("write")) return -1;
  const size_t count = FMaxWrite == 0 ? iCount : std::min(iCount, FMaxWrite);
  return MachineFileLayer().Write(iFile, iBytes, count);
}

int TFaultyFileLayer::Flush(int iFile) {
  return Fails("flush") ? -1 : MachineFileLayer().Flush(iFile);
}

int TFaultyFileLayer::Close(int iFile) {
  const int result = MachineFileLayer().Close(iFile);
  return Fails("close") ? -1 : result;
}

int TFaultyFileLayer::Rename(const char* iOldPath, const char* iNewPath) {
  return Fails("rename") ? -1 : MachineFileLayer().Rename(iOldPath, iNewPath);
}

int TFaultyFileLayer::Unlink(const char* iPath) {
  return Fails("unlink") ? -1 : MachineFileLayer().Unlink(iPath);
}

}  // namespace kk
