#pragma once

#include <mutex>

#include "host/base/Log.h"

namespace kk {

/// Hands the log on and keeps the first error that comes while it lives. Any thread.
class TLoggedErrors : public ILogSink {
 public:
  TLoggedErrors() : FBefore(SetLogSink(this)) {}
  ~TLoggedErrors() override { SetLogSink(FBefore); }
  TLoggedErrors(const TLoggedErrors&) = delete;
  TLoggedErrors& operator=(const TLoggedErrors&) = delete;

  void Write(TLogLevel iLevel, TStringView iSender, TStringView iText) override {
    if (FBefore != nullptr) FBefore->Write(iLevel, iSender, iText);
    if (iLevel != TLogLevel::llError && iLevel != TLogLevel::llException) return;
    const std::lock_guard lock(FMutex);
    if (FFirst.empty()) FFirst = iText;
  }

  /// Empty if there was none.
  TString First() const {
    const std::lock_guard lock(FMutex);
    return FFirst;
  }

 private:
  ILogSink* FBefore;
  mutable std::mutex FMutex;
  TString FFirst;
};

}  // namespace kk
