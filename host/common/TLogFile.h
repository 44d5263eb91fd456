#pragma once

#include <memory>

#include "host/base/Log.h"

namespace kk {

/// The log as a file that is rotated: "kaufkobolde.log", and older ones as "kaufkobolde.1.log" to
/// "kaufkobolde.3.log", 1 MiB each.
///
/// Each entry is one line of UTF-8 and on the disk's way when Write returns: time, level, sender
/// and text. Line breaks become blanks and other control characters are left out, so that no text
/// can fake a line or steer a terminal. With iVerbose every line goes to stderr, too, and debug
/// lines are written; without it they are left out. A file that can't be opened or written costs no
/// more than its lines: errors and exceptions go to stderr then. Any thread.
class TLogFile : public ILogSink {
 public:
  static constexpr size_t cMaxFileSize = size_t{1} << 20;
  static constexpr size_t cOldFiles = 3;

  /// The folder of the file is made if it is missing. Raises nothing.
  TLogFile(TStringView iFileName, bool iVerbose);
  ~TLogFile() override;
  TLogFile(const TLogFile&) = delete;
  TLogFile& operator=(const TLogFile&) = delete;

  void Write(TLogLevel iLevel, TStringView iSender, TStringView iText) override;

  bool IsOpen() const;

 private:
  struct TImpl;
  std::unique_ptr<TImpl> FImpl;
};

/// Where the host's log lies: "kaufkobolde.log" in the folder for the state.
TString DefaultLogFileName();

}  // namespace kk
