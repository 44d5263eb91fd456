#include <sys/mman.h>
#include <unistd.h>

#include <cstdint>
#include <cstdlib>

#include "host/base/Exception.h"
#include "host/common/TFileCompression.h"

namespace {

// The reader takes files; this one lies in memory.
class TMemoryFile {
 public:
  TMemoryFile(const uint8_t* iData, size_t iSize) : FFile(memfd_create("archive", 0)) {
    if (write(FFile, iData, iSize) != static_cast<ssize_t>(iSize)) std::abort();
  }
  ~TMemoryFile() { close(FFile); }
  TMemoryFile(const TMemoryFile&) = delete;
  TMemoryFile& operator=(const TMemoryFile&) = delete;
  kk::TString Name() const { return u"/proc/self/fd/" + kk::IntToStr(FFile); }

 private:
  int FFile;
};

template <class Function>
void MayFail(Function&& iFunction) {
  try {
    iFunction();
  } catch (const kk::EInOutError&) {
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* iData, size_t iSize) {
  kk::TFileCompression::SetMaxEntrySize(1 << 20);
  const TMemoryFile file(iData, iSize);
  MayFail([&] {
    kk::TStringList names;
    kk::TFileCompression::FilesInside(file.Name(), names, false);
    for (const kk::TString& name : names.Lines()) {
      MayFail([&] {
        kk::TMemoryStream stream;
        // Names are listed as they are found.
        if (!kk::TFileCompression::DecompressFile(file.Name(), name, stream)) std::abort();
        if (stream.GetSize() > kk::TFileCompression::MaxEntrySize()) std::abort();
      });
    }
  });
  MayFail([&] {
    for (const auto& stream : kk::TFileCompression::ReadPacked(file.Name())) {
      MayFail([&] { stream->GetStream(); });
    }
  });
  return 0;
}
