#include "host/common/TParserOrWriterBaseSimpleXML.h"

namespace kk {

TString TParserOrWriterBaseSimpleXML::BooleanToText(bool iValue) { return iValue ? u"1" : u"0"; }

bool TParserOrWriterBaseSimpleXML::TextToBoolean(TStringView iText) {
  return iText == u"1" || SameText(iText, u"true");
}

TString TParserOrWriterBaseSimpleXML::DateTimeToText(TDateTime iValue) {
  return DateTimeToIso(iValue);
}

TDateTime TParserOrWriterBaseSimpleXML::TextToDateTime(TStringView iText) {
  TDateTime value;
  return TryIsoToDateTime(iText, value) ? value : TDateTime();
}

}  // namespace kk
