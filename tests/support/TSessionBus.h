#pragma once

#include <map>
#include <memory>
#include <optional>

#include "tests/support/TServerProcess.h"
#include "tests/support/TTempFolder.h"

namespace kk {

/// A D-Bus session of the test's own, which starts no services by itself: nothing of the machine's
/// session is seen or touched.
class TSessionBus {
 public:
  TSessionBus();

  const std::string& Address() const { return FAddress; }
  /// What a program needs to find this bus and no other.
  std::map<std::string, std::string> Environment() const;
  /// SIGSTOP freezes it, SIGCONT lets it go on.
  void Signal(int iSignal) { FDaemon->Signal(iSignal); }
  /// The bus goes away.
  void Stop() { FDaemon->Stop(); }

 private:
  TTempFolder FFolder;
  std::unique_ptr<TServerProcess> FDaemon;
  std::string FAddress;
};

/// Environment variables for the life of the object; the ones before come back.
class TTestEnvironment {
 public:
  explicit TTestEnvironment(const std::map<std::string, std::string>& iValues);
  ~TTestEnvironment();
  TTestEnvironment(const TTestEnvironment&) = delete;
  TTestEnvironment& operator=(const TTestEnvironment&) = delete;

 private:
  std::map<std::string, std::optional<std::string>> FBefore;
};

}  // namespace kk
