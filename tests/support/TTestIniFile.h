#pragma once

#include "host/common/TKKIniFile.h"

namespace kk {

/// A settings file that is the host's while it lives.
class TTestIniFile : public TKKIniFile {
 public:
  explicit TTestIniFile(TStringView iFileName) : TKKIniFile(iFileName), FBefore(SetIniFile(this)) {}
  ~TTestIniFile() override { SetIniFile(FBefore); }

 private:
  TKKIniFile* FBefore;
};

}  // namespace kk
