#pragma once

#include <string>
#include <vector>

#include "host/base/TStream.h"
#include "host/base/TStringList.h"
#include "host/common/TParserOrWriterBaseSimpleXML.h"

namespace kk {

/// The base of the savers: builds a document element by element, straight into UTF-8.
///
/// An element whose value equals its default is left out. Text comes back equal, blanks at its ends
/// and line breaks included ("\r" and "\n" are written as character references); only what XML 1.0
/// (section 2.2) can't hold at all is left out, character by character: control characters other
/// than tab and line breaks, U+FFFE, U+FFFF and unpaired surrogates. Names are the caller's and are
/// taken as they are. One thread at a time.
class TFastWriterBaseSimpleXML : public TParserOrWriterBaseSimpleXML {
 public:
  /// Whether the document begins with an XML declaration. Set at first; the savers of the watch
  /// list's streams clear it.
  void SetWriteDeclaration(bool iWrite) { FWriteDeclaration = iWrite; }

  /// The text as it comes back from a document: without the characters that XML can't hold.
  static TString HeldText(TStringView iText);

  void Clear();
  void BeginNode(TStringView iName);
  /// A name other than that of the node open last raises Exception.
  void EndNode(TStringView iName);
  void WriteString(TStringView iName, TStringView iValue, TStringView iDefault);
  void WriteBoolean(TStringView iName, bool iValue, bool iDefault);
  void WriteInteger(TStringView iName, int64_t iValue, int64_t iDefault);
  void WriteDateTime(TStringView iName, TDateTime iValue, TDateTime iDefault);
  /// The lines with the delimiter between them, in one element; there is no escape for a delimiter
  /// inside a line. The element is written even if it is empty.
  void WriteStringList(TStringView iName, const TStringList& iLines, char16_t iDelimiter);
  /// Depth of open nodes.
  int GetCurrentIndent() const { return static_cast<int>(FOpen.size()); }

  /// Writes the document at the stream's position: UTF-8 with its byte-order mark, lines ended by
  /// CR LF. A document in which nothing was written gives an empty text, without the mark.
  /// A document that TSimpleXMLDocument would refuse for its size raises Exception, and nothing is
  /// written.
  void SaveToStream(TStream& ioStream) const;

 private:
  void AppendLine(TStringView iName, TStringView iText);
  void AppendIndent();

  std::string FText;
  std::vector<TString> FOpen;
  bool FWriteDeclaration = true;
};

}  // namespace kk
