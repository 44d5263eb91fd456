#pragma once

#include "host/common/THelperProcess.h"
#include "host/printing/TPdfPrinting.h"

namespace kk {

/// One run of the program that makes a PDF file. It is over when the object goes. One thread.
class TPdfProcess {
 public:
  /// Raises Exception if it can't be started.
  TPdfProcess(const TPdfOptions& iOptions, const std::string& iPath, std::string_view iJson);

  /// Waits for its end, and raises Exception with its reason if it failed, took too long, or if a
  /// stop was requested. Once.
  void Wait(const std::stop_token& iStop);

 private:
  using TClock = std::chrono::steady_clock;

  /// A file without a name, in memory, so that neither side waits for the other.
  class TMemoryFile {
   public:
    explicit TMemoryFile(const char* iName);
    ~TMemoryFile();
    TMemoryFile(const TMemoryFile&) = delete;
    TMemoryFile& operator=(const TMemoryFile&) = delete;
    int Handle() const { return FHandle; }
    void Write(std::string_view iBytes);
    /// The beginning, no more than iMax.
    std::string Read(size_t iMax) const;

   private:
    int FHandle;
  };

  /// Takes its end if it has come.
  bool HasEnded(int& oStatus);
  TString ReasonOf(int iStatus) const;

  TMemoryFile FInput{"kaufkobolde-print-input"};
  TMemoryFile FErrors{"kaufkobolde-print-errors"};
  const TClock::time_point FDeadline;
  THelperProcess FHelper;
};

}  // namespace kk
