#pragma once

#include "host/base/TString.h"

namespace kk {

/// What a user may enter in the section "Communication".
struct TCommunicationCheck {
  /// The value as it may be stored: a text loses the blanks at its ends, a secret stays as it is.
  /// Raises EConvertError with a German sentence where the key needs an address or a number and
  /// this is none; a folder becomes a full path, from the current one; empty is allowed everywhere.
  /// Addresses of servers are not shown, for they may hold a password.
  static TString Value(TStringView iKey, TStringView iValue);
};

}  // namespace kk
