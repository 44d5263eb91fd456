#pragma once

#include "host/base/TString.h"

namespace kk {

/// Before a command writes a file: where there is one of this name, asks whether it may go. Raises
/// Exception if it may not; who does not answer has not agreed. Main thread.
void AskToReplace(TStringView iFileName);

}  // namespace kk
