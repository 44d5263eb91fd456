#pragma once

#include "host/base/TString.h"

namespace kk {

/// A text as it may go to a terminal, in one line: without control characters, without escape
/// sequences as a whole, and without the marks that turn the direction of writing round. Names come
/// from the network, and none of them may paint over what stands beside it. Tabs and line breaks
/// become a blank.
TString ForTerminal(TStringView iText);

/// The message of a failure in one line for the user.
TString ForTerminal(const std::exception& iException);

/// "1 Artikel", "3 Artikel", "1 Kategorie", "2 Kategorien".
TString Counted(size_t iCount, TStringView iSingular, TStringView iPlural);

}  // namespace kk
