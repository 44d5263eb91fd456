#include "host/common/TParserBaseSimpleXML.h"

namespace kk {

TString TParserBaseSimpleXML::GetValueAsString(TSimpleXMLNode iNode, TStringView iName,
                                               TStringView iDefault) {
  const TSimpleXMLNode child = iNode.GetChildNode(iName);
  return child ? child.GetText() : TString(iDefault);
}

TString TParserBaseSimpleXML::GetValueAsString(TSimpleXMLNode iNode) { return iNode.GetText(); }

void TParserBaseSimpleXML::GetValueAsStringList(TSimpleXMLNode iNode, TStringView iName,
                                                TStringList& ioLines, char16_t iDelimiter) {
  ioLines.SetDelimited(GetValueAsString(iNode, iName), iDelimiter);
}

bool TParserBaseSimpleXML::GetValueAsBoolean(TSimpleXMLNode iNode, TStringView iName,
                                             bool iDefault) {
  const TSimpleXMLNode child = iNode.GetChildNode(iName);
  return child ? TextToBoolean(child.GetText()) : iDefault;
}

int64_t TParserBaseSimpleXML::GetValueAsInteger(TSimpleXMLNode iNode, TStringView iName,
                                                int64_t iDefault) {
  int64_t value = 0;
  return TryStrToInt(GetValueAsString(iNode, iName), value) ? value : iDefault;
}

TDateTime TParserBaseSimpleXML::GetValueAsDateTime(TSimpleXMLNode iNode, TStringView iName,
                                                   TDateTime iDefault) {
  const TSimpleXMLNode child = iNode.GetChildNode(iName);
  return child ? TextToDateTime(child.GetText()) : iDefault;
}

TGuid TParserBaseSimpleXML::GetValueAsGUID(TSimpleXMLNode iNode, TStringView iName) {
  TGuid value;
  return TryStringToGuid(GetValueAsString(iNode, iName), value) ? value : cEmptyGuid;
}

TString TParserBaseSimpleXML::GetAttributeAsString(TSimpleXMLNode iNode, TStringView iName) {
  return iNode.GetAttribute(iName);
}

}  // namespace kk
