#pragma once

#include <sys/types.h>

#include "bench/reliability/TReliabilityWorld.h"

namespace kk {

/// A way out whose other end is there and never says a word, set up in the world's settings:
/// "email" and "sms" are servers that take a connection, "sound" and "notifier" a sound server and
/// a session bus that are stopped (SIGSTOP). Main thread.
class TWayThatHangs {
 public:
  TWayThatHangs(TStringView iName, TReliabilityWorld& ioWorld);
  ~TWayThatHangs();
  TWayThatHangs(const TWayThatHangs&) = delete;
  TWayThatHangs& operator=(const TWayThatHangs&) = delete;

 private:
  /// The port of a server that takes connections and leaves them alone.
  int Listen();
  void Start(const std::vector<std::string>& iArguments, const std::string& iReady);

  int FServer = -1;
  pid_t FProcess = -1;
};

}  // namespace kk
