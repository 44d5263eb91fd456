#pragma once

#include <string>
#include <vector>

#include "host/common/TFileHelper.h"

namespace kk {

/// The machine's file layer while it lives, but with one call that fails where the test says.
/// Calls are counted from 0; "close" closes even if it fails, as the machine's does.
class TFaultyFileLayer : public IFileLayer {
 public:
  TFaultyFileLayer() : FBefore(SetFileLayer(this)) {}
  ~TFaultyFileLayer() override { SetFileLayer(FBefore); }

  /// The call of this number fails with the error; -1 for none. The count begins anew.
  void FailCall(int iCall, int iError);
  /// Every call of this name fails with the error: "open", "write", "flush", "close", "rename",
  /// "unlink".
  void FailAll(const std::string& iName, int iError);
  /// Writes take so many bytes at most; 0 for all.
  void SetMaxWrite(size_t iBytes) { FMaxWrite = iBytes; }
  /// The calls since then, by name.
  const std::vector<std::string>& Calls() const { return FCalls; }

  int Open(const char* iPath, int iFlags, unsigned iMode) override;
  long Write(int iFile, const void* iBytes, size_t iCount) override;
  int Flush(int iFile) override;
  int Close(int iFile) override;
  int Rename(const char* iOldPath, const char* iNewPath) override;
  int Unlink(const char* iPath) override;

 private:
  bool Fails(const char* iName);

  IFileLayer* FBefore;
  std::vector<std::string> FCalls;
  std::string FFailName;
  int FFailCall = -1;
  int FError = 0;
  size_t FMaxWrite = 0;
};

}  // namespace kk
