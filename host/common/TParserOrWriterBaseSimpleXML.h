#pragma once

#include "host/base/TDateTime.h"
#include "host/base/TGuid.h"
#include "host/base/TObject.h"
#include "host/base/TString.h"

namespace kk {

/// The text forms that readers and writers of the system's XML share.
///   Boolean: "1" and "0"; readers take "true" and "false", too.
///   Date and time: ISO 8601 local time, "2026-11-20T18:30:00.250"; milliseconds only if not zero.
class TParserOrWriterBaseSimpleXML : public TObject {
 public:
  static TString BooleanToText(bool iValue);
  /// Any other text reads as false.
  static bool TextToBoolean(TStringView iText);
  static TString DateTimeToText(TDateTime iValue);
  /// Any other text reads as 0.
  static TDateTime TextToDateTime(TStringView iText);
};

}  // namespace kk
