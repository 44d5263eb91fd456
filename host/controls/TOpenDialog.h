#pragma once

#include "host/base/TString.h"

namespace kk {

/// The host's dialog that asks for a file to open. Main thread.
struct TOpenDialog {
  TString Title;
  /// "Sounddatei (*.wav)|*.wav": name and pattern in turn, divided by "|".
  TString Filter;
  bool FileMustExist = false;
  /// Where it starts, and the chosen file with its full path after OK.
  TString FileName;

  /// Shows it through the form host; true for OK. On a cancel the file name stays.
  bool Execute();
};

}  // namespace kk
