#pragma once

#include <sys/types.h>

#include <string>

namespace kk {

/// A shop of any number of pages on this machine, in a process of its own, so that its work is not
/// counted with the program's. Each page is some 20 KB of HTML with a product in JSON-LD, whose
/// price is another one at each call. It is started before the process has a second thread.
class TBenchShop {
 public:
  TBenchShop();
  ~TBenchShop();
  TBenchShop(const TBenchShop&) = delete;
  TBenchShop& operator=(const TBenchShop&) = delete;

  /// Such as "http://127.0.0.1:40123".
  const std::string& Origin() const { return FOrigin; }

 private:
  pid_t FProcess = -1;
  std::string FOrigin;
};

}  // namespace kk
