#include "sources/page/TMicrodataReader.h"

#include <algorithm>
#include <array>

namespace kk {

namespace {

// Text is gathered anew for each property, so their number bounds the work on nested ones.
constexpr size_t cMaxValues = 20000;
constexpr size_t cMaxReferences = 32;
constexpr int64_t cMaxReferencedNodes = 5'000'000;

template <class Function>
void ForEachWord(std::string_view iText, Function iFunction) {
  constexpr std::string_view cBlanks = " \t\r\n\f";
  while (!iText.empty()) {
    const size_t begin = std::min(iText.find_first_not_of(cBlanks), iText.size());
    iText.remove_prefix(begin);
    const size_t end = std::min(iText.find_first_of(cBlanks), iText.size());
    if (end > 0) iFunction(iText.substr(0, end));
    iText.remove_prefix(end);
  }
}

bool IsOneOf(std::string_view iName, std::initializer_list<std::string_view> iNames) {
  return std::find(iNames.begin(), iNames.end(), iName) != iNames.end();
}

// The attribute that holds the value of an element, where it isn't its text.
const char* ValueAttribute(std::string_view iElement) {
  if (IsOneOf(iElement, {"a", "area", "link"})) return "href";
  if (IsOneOf(iElement, {"img", "audio", "embed", "iframe", "source", "track", "video"})) {
    return "src";
  }
  if (iElement == "object") return "data";
  if (IsOneOf(iElement, {"data", "meter"})) return "value";
  if (iElement == "time") return "datetime";
  return nullptr;
}

}  // namespace

void TMicrodataReader::Read() {
  FindItems();
  for (const int node : FItemNodes) {
    TSchemaItem& item = *FItems.at(node);
    ReadProperties(node + 1, FTree.End(node), item);
    ReadReferences(node, item);
    // <meta itemprop="brand" itemscope content="ACME">: the text is what the item is called.
    const std::string_view content = FTree.Attribute(node, "content");
    if (item.Properties.empty() && !content.empty()) {
      item.Add("name", {std::string(content), false, true, nullptr});
    }
  }
}

bool TMicrodataReader::IsItem(int iNode) const {
  if (FTree.HasAttribute(iNode, "itemscope")) return true;
  // A property with a value of its own says by "itemtype" no more than what the value is.
  return FTree.HasAttribute(iNode, "itemtype") && !FTree.HasAttribute(iNode, "content") &&
         ValueAttribute(FTree.Name(iNode)) == nullptr && FTree.Name(iNode) != "meta";
}

void TMicrodataReader::FindItems() {
  for (int node = 0; node < FTree.GetCount(); ++node) {
    if (FTree.Name(node).empty()) continue;
    const std::string_view id = FTree.Attribute(node, "id");
    if (!id.empty()) FIds.emplace(id, node);
    if (!IsItem(node) || FItemNodes.size() >= TSchemaGraph::cMaxItems) continue;
    TSchemaItem& item = FGraph.AddItem();
    item.Id = FTree.Attribute(node, "itemid");
    ForEachWord(FTree.Attribute(node, "itemtype"), [&](std::string_view iType) {
      if (std::string type = SchemaName(iType); !type.empty()) item.Types.push_back(type);
    });
    FItems.emplace(node, &item);
    FItemNodes.push_back(node);
  }
}

// The properties in a range of nodes; those within an item of its own are that item's.
void TMicrodataReader::ReadProperties(int iFrom, int iTo, TSchemaItem& ioItem) {
  for (int node = iFrom; node < iTo; ++node) {
    if (FTree.Name(node).empty()) continue;
    if (FTree.HasAttribute(node, "itemprop")) AddProperty(node, ioItem);
    if (FItems.contains(node)) node = FTree.End(node) - 1;
  }
}

void TMicrodataReader::ReadReferences(int iNode, TSchemaItem& ioItem) {
  size_t count = 0;
  ForEachWord(FTree.Attribute(iNode, "itemref"), [&](std::string_view iId) {
    const auto hit = FIds.find(iId);
    if (hit == FIds.end() || ++count > cMaxReferences) return;
    const int node = hit->second;
    // An element within the item itself has been read, and one around it would read it again.
    if (node <= iNode ? FTree.End(node) > iNode : node < FTree.End(iNode)) return;
    FReferencedNodes += FTree.End(node) - node;
    if (FReferencedNodes <= cMaxReferencedNodes) ReadProperties(node, FTree.End(node), ioItem);
  });
}

void TMicrodataReader::AddProperty(int iNode, TSchemaItem& ioItem) {
  if (++FValues > cMaxValues) return;
  TSchemaValue value;
  const auto item = FItems.find(iNode);
  if (item != FItems.end()) {
    if (item->second == &ioItem) return;
    value.Item = item->second;
  } else {
    value = ValueOf(iNode);
    if (value.Text.empty()) return;
  }
  ForEachWord(FTree.Attribute(iNode, "itemprop"), [&](std::string_view iName) {
    TSchemaValue own = value;
    const std::string name = SchemaName(iName);
    // The page that an item is the main thing of stands above it; it is no other item's value.
    const bool isMainOfPage = name == "mainentityofpage";
    if (own.Item != nullptr && !isMainOfPage) item->second->IsTopLevel = false;
    // A name that is a link is called by its text.
    const std::string_view element = FTree.Name(iNode);
    if (name == "name" && element == "a") own.Text = FTree.Text(iNode);
    ioItem.Add(iName, std::move(own));
  });
}

TSchemaValue TMicrodataReader::ValueOf(int iNode) const {
  std::string_view text = FTree.Attribute(iNode, "content");
  if (text.empty() && FTree.Name(iNode) == "img") text = FTree.Attribute(iNode, "data-src");
  const char* attribute = ValueAttribute(FTree.Name(iNode));
  if (text.empty() && attribute != nullptr) text = FTree.Attribute(iNode, attribute);
  if (!text.empty()) return {std::string(text), false, true, nullptr};
  return {FTree.Text(iNode), false, false, nullptr};
}

}  // namespace kk
