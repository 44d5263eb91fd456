#pragma once

#include "host/base/TString.h"

namespace kk {

/// The host's dialog that asks for a file to open, or for one to write. Main thread.
struct TOpenDialog {
  TString Title;
  /// "Sounddatei (*.wav)|*.wav": name and pattern in turn, divided by "|".
  TString Filter;
  bool FileMustExist = false;
  /// Where it starts, and the chosen file with its full path after OK.
  TString FileName;
  /// A file is to be written: it need not be there, and one that is there is replaced only if the
  /// user agrees. The first pattern of the filter is added to a name without an extension.
  bool ForSaving = false;

  /// Shows it through the form host; true for OK. On a cancel the file name stays.
  bool Execute();
};

}  // namespace kk
