#pragma once

#include "host/base/TStringList.h"
#include "host/common/TParserOrWriterBaseSimpleXML.h"
#include "host/common/TSimpleXMLDocument.h"

namespace kk {

/// The base of the loaders: reads a value from a named child of a node. A missing child gives the
/// empty value of the type, or the default where one is given.
class TParserBaseSimpleXML : public TParserOrWriterBaseSimpleXML {
 public:
  static TString GetValueAsString(TSimpleXMLNode iNode, TStringView iName,
                                  TStringView iDefault = {});
  /// Of the node itself.
  static TString GetValueAsString(TSimpleXMLNode iNode);
  /// The lines that WriteStringList joined; the list is emptied before. A missing child and one
  /// without text give no lines.
  static void GetValueAsStringList(TSimpleXMLNode iNode, TStringView iName, TStringList& ioLines,
                                   char16_t iDelimiter);
  static bool GetValueAsBoolean(TSimpleXMLNode iNode, TStringView iName, bool iDefault = false);
  /// Text that is no number gives the default.
  static int64_t GetValueAsInteger(TSimpleXMLNode iNode, TStringView iName, int64_t iDefault = 0);
  static TDateTime GetValueAsDateTime(TSimpleXMLNode iNode, TStringView iName,
                                      TDateTime iDefault = {});
  /// Text that is no GUID gives the empty one.
  static TGuid GetValueAsGUID(TSimpleXMLNode iNode, TStringView iName);
  static TString GetAttributeAsString(TSimpleXMLNode iNode, TStringView iName);
};

}  // namespace kk
