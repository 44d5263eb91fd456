#pragma once

#include <mutex>
#include <string>
#include <vector>

#include "host/base/Log.h"

namespace kk {

/// Records the log while it lives. A line reads "info Sender: text", "error Sender: text",
/// "details text", "exception Sender: text"; debug lines are kept apart.
class TLogRecorder : public ILogSink {
 public:
  TLogRecorder() : FBefore(SetLogSink(this)) {}
  ~TLogRecorder() override { SetLogSink(FBefore); }

  void Write(TLogLevel iLevel, TStringView iSender, TStringView iText) override;

  std::vector<std::string> Lines() const;
  std::vector<std::string> DebugLines() const;
  bool Contains(const std::string& iLine) const;
  void Clear();

 private:
  mutable std::mutex FMutex;
  std::vector<std::string> FLines;
  std::vector<std::string> FDebugLines;
  ILogSink* FBefore;
};

}  // namespace kk
