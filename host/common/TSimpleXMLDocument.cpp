#include "host/common/TSimpleXMLDocument.h"

#include <algorithm>
#include <pugixml.hpp>

#include "host/base/Exception.h"

namespace kk {

namespace {

// Blanks stay as they are, wherever they stand; a fragment, so that what stands beside the root
// element comes to light.
constexpr unsigned cParseFlags = pugi::parse_escapes | pugi::parse_cdata | pugi::parse_eol |
                                 pugi::parse_wconv_attribute | pugi::parse_ws_pcdata |
                                 pugi::parse_fragment;

constexpr std::string_view cUtf8Mark = "\xEF\xBB\xBF";

pugi::xml_node AsNode(void* iElement) {
  return pugi::xml_node(static_cast<pugi::xml_node_struct*>(iElement));
}

TSimpleXMLNode AsHandle(pugi::xml_node iNode) { return TSimpleXMLNode(iNode.internal_object()); }

pugi::xml_node FirstElement(pugi::xml_node iNode) {
  while (iNode && iNode.type() != pugi::node_element) iNode = iNode.next_sibling();
  return iNode;
}

bool IsAscii(std::string_view iBytes) {
  return std::none_of(iBytes.begin(), iBytes.end(), [](char c) { return (c & 0x80) != 0; });
}

TString ToText(std::string_view iBytes) {
  return IsAscii(iBytes) ? TString(iBytes.begin(), iBytes.end()) : FromUtf8(iBytes);
}

// The name in UTF-8 and the text are the same. Nearly all names are ASCII, and this runs for every
// value that is read.
bool SameName(const char* iBytes, TStringView iName) {
  size_t i = 0;
  for (; i < iName.size() && iBytes[i] != '\0'; ++i) {
    if (iName[i] >= 0x80) return ToUtf8(iName) == iBytes;
    if (static_cast<char16_t>(static_cast<unsigned char>(iBytes[i])) != iName[i]) return false;
  }
  return i == iName.size() && iBytes[i] == '\0';
}

bool IsBlank(std::string_view iBytes) {
  return iBytes.find_first_not_of(" \t\r\n") == std::string_view::npos;
}

[[noreturn]] void Fail(TStringView iReason) {
  throw EConvertError(Format(u"Der Text ist kein lesbares XML: %s", {iReason}));
}

TString StatusText(pugi::xml_parse_status iStatus) {
  switch (iStatus) {
    case pugi::status_out_of_memory:
      return u"Der Speicher reicht nicht";
    case pugi::status_end_element_mismatch:
      return u"Ein Element ist nicht geschlossen";
    case pugi::status_bad_attribute:
      return u"Ein Attribut ist fehlerhaft";
    case pugi::status_bad_start_element:
    case pugi::status_bad_end_element:
    case pugi::status_unrecognized_tag:
      return u"Ein Element ist fehlerhaft";
    default:
      return u"Der Aufbau ist fehlerhaft";
  }
}

void CheckStatus(const pugi::xml_parse_result& iResult, std::string_view iBytes) {
  if (iResult) return;
  const auto offset =
      std::min(static_cast<size_t>(std::max<ptrdiff_t>(iResult.offset, 0)), iBytes.size());
  const std::string_view before = iBytes.substr(0, offset);
  const auto line = std::count(before.begin(), before.end(), '\n') + 1;
  Fail(Format(u"%s (Zeile %d)", {StatusText(iResult.status), static_cast<int64_t>(line)}));
}

// Walks without recursion: the depth is what is not known yet.
void CheckDepth(pugi::xml_node iRoot) {
  int depth = 1;
  for (pugi::xml_node node = iRoot; node;) {
    if (depth > TSimpleXMLDocument::cMaxDepth) Fail(u"Die Elemente sind zu tief verschachtelt");
    if (const pugi::xml_node child = node.first_child()) {
      node = child;
      ++depth;
      continue;
    }
    while (node != iRoot && !node.next_sibling()) {
      node = node.parent();
      --depth;
    }
    if (node == iRoot) return;
    node = node.next_sibling();
  }
}

// Just one element, and no text beside it.
void CheckTopLevel(const pugi::xml_document& iTree) {
  int elements = 0;
  for (const pugi::xml_node node : iTree.children()) {
    if (node.type() == pugi::node_element) ++elements;
    const bool text = node.type() == pugi::node_pcdata || node.type() == pugi::node_cdata;
    if (text && !IsBlank(node.value())) Fail(u"Neben dem obersten Element steht Text");
  }
  if (elements != 1) Fail(u"Es gibt nicht genau ein oberstes Element");
}

constexpr std::string_view cUtf16LittleMark = "\xFF\xFE";
constexpr std::string_view cUtf16BigMark = "\xFE\xFF";

std::string Utf16ToUtf8(std::string_view iBytes, bool iBigEndian) {
  if (iBytes.size() % 2 != 0) Fail(u"Das letzte Zeichen ist unvollständig");
  TString text(iBytes.size() / 2, u'\0');
  for (size_t i = 0; i < text.size(); ++i) {
    const auto first = static_cast<unsigned char>(iBytes[2 * i]);
    const auto second = static_cast<unsigned char>(iBytes[2 * i + 1]);
    text[i] = static_cast<char16_t>(iBigEndian ? first << 8 | second : second << 8 | first);
  }
  return ToUtf8(text);
}

// Takes a byte-order mark off and turns UTF-16 into UTF-8; answers whether the text is UTF-8 for
// sure, or what its declaration says.
bool TakeMark(std::string& ioBytes, bool iDecodeUTF8) {
  if (ioBytes.starts_with(cUtf8Mark)) {
    ioBytes.erase(0, cUtf8Mark.size());
    return true;
  }
  const bool bigEndian = ioBytes.starts_with(cUtf16BigMark);
  if (iDecodeUTF8 || (!bigEndian && !ioBytes.starts_with(cUtf16LittleMark))) return iDecodeUTF8;
  ioBytes = Utf16ToUtf8(std::string_view(ioBytes).substr(2), bigEndian);
  return true;
}

}  // namespace

struct TSimpleXMLDocument::TTree {
  pugi::xml_document Xml;
};

TSimpleXMLDocument::TSimpleXMLDocument(TObject* /*iOwner*/) : FTree(std::make_unique<TTree>()) {}

TSimpleXMLDocument::~TSimpleXMLDocument() = default;

// A tree takes up to 40 times the room of its text, so what could become a node is counted first.
bool TSimpleXMLDocument::Fits(std::string_view iBytes) {
  const auto isMark = [](char c) { return c == '<' || c == '='; };
  return iBytes.size() <= cMaxBytes &&
         std::count_if(iBytes.begin(), iBytes.end(), isMark) <= cMaxMarks;
}

void TSimpleXMLDocument::LoadFromStream(TStream& iStream, bool iDecodeUTF8) {
  FTree = std::make_unique<TTree>();
  std::string text = iStream.ReadRest();
  const bool utf8 = TakeMark(text, iDecodeUTF8);
  if (IsBlank(text)) return;
  if (!Fits(text)) Fail(u"Der Text ist zu groß");
  // XML has no such character, and a parser takes it for the end.
  if (text.find('\0') != std::string::npos) Fail(u"Der Text enthält Null-Zeichen");

  auto tree = std::make_unique<TTree>();
  CheckStatus(tree->Xml.load_buffer(text.data(), text.size(), cParseFlags,
                                    utf8 ? pugi::encoding_utf8 : pugi::encoding_auto),
              text);
  CheckTopLevel(tree->Xml);
  CheckDepth(FirstElement(tree->Xml.first_child()));
  FTree = std::move(tree);
}

TSimpleXMLNode TSimpleXMLDocument::GetDocumentElement() const {
  return AsHandle(FirstElement(FTree->Xml.first_child()));
}

TString TSimpleXMLNode::GetName() const { return ToText(AsNode(FElement).name()); }

TString TSimpleXMLNode::GetText() const {
  TString text;
  for (const pugi::xml_node node : AsNode(FElement).children()) {
    if (node.type() == pugi::node_pcdata || node.type() == pugi::node_cdata) {
      text += ToText(node.value());
    }
  }
  return text;
}

TString TSimpleXMLNode::GetAttribute(TStringView iName) const {
  for (const pugi::xml_attribute attribute : AsNode(FElement).attributes()) {
    if (SameName(attribute.name(), iName)) return ToText(attribute.value());
  }
  return {};
}

TSimpleXMLNodeList TSimpleXMLNode::GetChildNodes() const {
  return TSimpleXMLNodeList(*this, AsHandle(FirstElement(AsNode(FElement).first_child())));
}

TSimpleXMLNode TSimpleXMLNode::GetChildNode(TStringView iName) const {
  for (const pugi::xml_node node : AsNode(FElement).children()) {
    if (node.type() == pugi::node_element && SameName(node.name(), iName)) return AsHandle(node);
  }
  return {};
}

TSimpleXMLNode TSimpleXMLNode::GetNextSibling() const {
  return AsHandle(FirstElement(AsNode(FElement).next_sibling()));
}

int TSimpleXMLNodeList::GetCount() const {
  int count = 0;
  for (TSimpleXMLNode node = FFirst; node; node = node.GetNextSibling()) ++count;
  return count;
}

TSimpleXMLNode TSimpleXMLNodeList::GetNodes(int iIndex) const {
  int index = 0;
  for (TSimpleXMLNode node = FFirst; node; node = node.GetNextSibling()) {
    if (index++ == iIndex) return node;
  }
  (void)CheckedIndex(iIndex, static_cast<size_t>(index));
  return {};
}

}  // namespace kk
