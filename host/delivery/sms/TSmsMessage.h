#pragma once

#include <string>

#include "host/base/TDateTime.h"
#include "host/base/TString.h"

namespace kk {

/// One text message as the gateway takes it.
struct TSmsMessage {
  /// Digits, perhaps behind a "+"; empty if the user's number is none.
  std::string To;
  TString Text;
  TDateTime When;

  /// Takes the number as people write it: "+49 (0)170 123-45.67" is "+491701234567". What has other
  /// characters, fewer than 3 or more than 17 digits (E.164 has 15, and "00" before them) is none.
  TSmsMessage(TStringView iText, TStringView iNumber, TDateTime iWhen);

  /// The JSON object, in UTF-8; the moment in UTC (RFC 3339).
  std::string Json() const;
  /// The same for the same number, text and moment: a name-based UUID (RFC 9562, version 5).
  std::string IdempotencyKey() const;
};

}  // namespace kk
