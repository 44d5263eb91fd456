#include "tests/support/TLogRecorder.h"

#include <algorithm>

namespace kk {

void TLogRecorder::Write(TLogLevel iLevel, TStringView iSender, TStringView iText) {
  static constexpr const char* cNames[] = {"info", "error", "details", "exception", "debug"};
  const std::string sender = iLevel == TLogLevel::llDetails ? "" : ToUtf8(iSender) + ": ";
  const std::string line =
      std::string(cNames[static_cast<int>(iLevel)]) + " " + sender + ToUtf8(iText);
  const std::lock_guard lock(FMutex);
  (iLevel == TLogLevel::llDebug ? FDebugLines : FLines).push_back(line);
}

std::vector<std::string> TLogRecorder::Lines() const {
  const std::lock_guard lock(FMutex);
  return FLines;
}

std::vector<std::string> TLogRecorder::DebugLines() const {
  const std::lock_guard lock(FMutex);
  return FDebugLines;
}

bool TLogRecorder::Contains(const std::string& iLine) const {
  const std::vector<std::string> lines = Lines();
  return std::find(lines.begin(), lines.end(), iLine) != lines.end();
}

void TLogRecorder::Clear() {
  const std::lock_guard lock(FMutex);
  FLines.clear();
  FDebugLines.clear();
}

}  // namespace kk
