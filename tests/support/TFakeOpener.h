#pragma once

#include <string>
#include <vector>

#include "host/common/OpenURL.h"

namespace kk {

/// Opens no browser: writes down the addresses.
class TFakeOpener : public IUrlOpener {
 public:
  TFakeOpener() : FBefore(SetUrlOpener(this)) {}
  ~TFakeOpener() override { SetUrlOpener(FBefore); }
  bool Open(const std::string& iUrl) override {
    Urls.push_back(iUrl);
    return Works;
  }
  std::vector<std::string> Urls;
  bool Works = true;

 private:
  IUrlOpener* FBefore;
};

}  // namespace kk
