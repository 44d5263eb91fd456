#pragma once

#include <memory>
#include <string_view>

#include "host/base/TStream.h"
#include "host/base/TString.h"

namespace kk {

class TSimpleXMLNodeList;

/// An element of a document. A cheap handle: the document owns what it points at and must outlive
/// it. An empty handle stands for "no such element".
class TSimpleXMLNode {
 public:
  TSimpleXMLNode() = default;
  explicit TSimpleXMLNode(void* iElement) : FElement(iElement) {}

  explicit operator bool() const { return FElement != nullptr; }
  TString GetName() const;
  /// All text directly in the element.
  TString GetText() const;
  /// Empty if there is no such attribute.
  TString GetAttribute(TStringView iName) const;
  TSimpleXMLNodeList GetChildNodes() const;
  /// The first child element of this name (case counts); empty if there is none.
  TSimpleXMLNode GetChildNode(TStringView iName) const;
  /// The next element beside this one; empty at the end.
  TSimpleXMLNode GetNextSibling() const;

  friend bool operator==(const TSimpleXMLNode&, const TSimpleXMLNode&) = default;

 private:
  void* FElement = nullptr;
};

/// The child elements of an element, in document order.
class TSimpleXMLNodeList {
 public:
  TSimpleXMLNodeList(TSimpleXMLNode iParent, TSimpleXMLNode iFirst)
      : FParent(iParent), FFirst(iFirst) {}

  /// Walks the children: linear.
  int GetCount() const;
  TSimpleXMLNode GetFirst() const { return FFirst; }
  /// By index, linear; an index out of range raises EListError. Loops go by GetFirst and
  /// GetNextSibling.
  TSimpleXMLNode GetNodes(int iIndex) const;
  /// By name, the first; empty if there is none.
  TSimpleXMLNode GetNodes(TStringView iName) const { return FindNode(iName); }
  TSimpleXMLNode FindNode(TStringView iName) const { return FParent.GetChildNode(iName); }

 private:
  TSimpleXMLNode FParent;
  TSimpleXMLNode FFirst;
};

/// A parsed XML document. Main thread, or any one thread at a time.
class TSimpleXMLDocument : public TObject {
 public:
  /// Elements nested deeper than this are a failure of the load, not of the program.
  static constexpr int cMaxDepth = 2000;
  /// Bounds of a document's text: its bytes, and its "<" and "=" together, from which nodes and
  /// attributes come. They keep the tree of a hostile one below about 3 GiB and are far beyond a
  /// million records.
  static constexpr size_t cMaxBytes = size_t{512} << 20;
  static constexpr int64_t cMaxMarks = 16'000'000;
  /// Whether a text is within these bounds. What writes documents asks as well, so that nothing is
  /// written that could not be read back.
  static bool Fits(std::string_view iBytes);

  explicit TSimpleXMLDocument(TObject* iOwner = nullptr);
  ~TSimpleXMLDocument() override;

  /// Parses the stream from its position on. The text is UTF-8, or UTF-16 with a byte-order mark.
  /// With iDecodeUTF8 the bytes count as UTF-8 whatever they begin with; without it, as what the
  /// mark or the declaration says. Bytes that are none in the encoding become U+FFFD. An empty
  /// stream (blanks and the mark aside) gives a document without an element. Entities other than
  /// XML's own five and character references stay as they stand; a document type is passed over,
  /// and nothing outside of the text is ever read. Raises EConvertError for text that is no XML
  /// (with the line), one nested too deep, and one beyond the bounds; the document has no element
  /// then.
  void LoadFromStream(TStream& iStream, bool iDecodeUTF8);
  /// The root element; empty if there is none.
  TSimpleXMLNode GetDocumentElement() const;

 private:
  struct TTree;
  std::unique_ptr<TTree> FTree;
};

}  // namespace kk
