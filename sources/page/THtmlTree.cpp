#include "sources/page/THtmlTree.h"

#include <gumbo.h>

#include <algorithm>
#include <array>
#include <csetjmp>
#include <cstddef>
#include <cstdlib>

#include "host/base/Exception.h"

namespace kk {

namespace {

constexpr size_t cMaxTextBytes = 8192;
constexpr int cMaxTextNodes = 4096;
constexpr std::string_view cBlanks = " \t\r\n\f";

bool IsElement(const GumboNode* iNode) {
  return iNode->type == GUMBO_NODE_ELEMENT || iNode->type == GUMBO_NODE_TEMPLATE;
}

bool IsText(const GumboNode* iNode) {
  return iNode->type == GUMBO_NODE_TEXT || iNode->type == GUMBO_NODE_WHITESPACE ||
         iNode->type == GUMBO_NODE_CDATA;
}

// Elements that stand on lines of their own, so that words around them are apart.
bool PartsWords(std::string_view iName) {
  constexpr std::array cNames = {"br", "p",  "div", "li", "ul", "ol", "tr", "td", "th",
                                 "dt", "dd", "h1",  "h2", "h3", "h4", "h5", "h6"};
  return std::find(cNames.begin(), cNames.end(), iName) != cNames.end();
}

std::string_view Trimmed(std::string_view iText) {
  iText.remove_prefix(std::min(iText.find_first_not_of(cBlanks), iText.size()));
  return iText.substr(0, iText.find_last_not_of(cBlanks) + 1);
}

}  // namespace

// The memory of one tree. It is given back as a whole: the parser's own way recurses as deeply as
// the page is nested. An allocation beyond the limits does not return; it jumps out of the parser,
// which is C, holds nothing but this memory and has no other way to be stopped.
class THtmlTree::TArena {
 public:
  explicit TArena(const THtmlLimits& iLimits)
      : FLimits(iLimits), FDeadline(std::chrono::steady_clock::now() + iLimits.MaxTime) {}
  ~TArena() {
    while (FChunks != nullptr) {
      TChunk* const next = FChunks->Next;
      std::free(FChunks);
      FChunks = next;
    }
  }
  TArena(const TArena&) = delete;
  TArena& operator=(const TArena&) = delete;

  // Null if the limits were reached.
  const GumboNode* Parse(std::string_view iUtf8) {
    GumboOptions options = kGumboDefaultOptions;
    options.allocator = [](void* ioArena, size_t iSize) {
      return static_cast<TArena*>(ioArena)->Allocate(iSize);
    };
    options.deallocator = [](void*, void*) {};
    options.userdata = this;
    options.max_errors = 0;
    if (setjmp(FTooMuch) != 0) return nullptr;
    return gumbo_parse_with_options(&options, iUtf8.data(), iUtf8.size())->document;
  }

 private:
  struct TChunk {
    TChunk* Next;
  };
  static constexpr size_t cAlign = alignof(std::max_align_t);
  static constexpr size_t cHeader = (sizeof(TChunk) + cAlign - 1) / cAlign * cAlign;
  static constexpr size_t cChunkBytes = size_t{1} << 20;

  void* Allocate(size_t iSize) {
    const size_t size = (iSize + cAlign - 1) / cAlign * cAlign;
    if (size > FLeft) NewChunk(size);
    if (++FAllocations % 256 == 0) CheckTime();
    char* const result = FNext;
    FNext += size;
    FLeft -= size;
    return result;
  }

  void NewChunk(size_t iSize) {
    const size_t bytes = cHeader + std::max(iSize, cChunkBytes);
    if (bytes > FLimits.MaxBytes - std::min(FLimits.MaxBytes, FUsed)) std::longjmp(FTooMuch, 1);
    auto* const chunk = static_cast<TChunk*>(std::malloc(bytes));
    if (chunk == nullptr) std::longjmp(FTooMuch, 1);
    chunk->Next = FChunks;
    FChunks = chunk;
    FUsed += bytes;
    FNext = reinterpret_cast<char*>(chunk) + cHeader;
    FLeft = bytes - cHeader;
  }

  void CheckTime() {
    const bool stopped = FLimits.Stop != nullptr && *FLimits.Stop;
    if (stopped || std::chrono::steady_clock::now() > FDeadline) std::longjmp(FTooMuch, 1);
  }

  THtmlLimits FLimits;
  std::chrono::steady_clock::time_point FDeadline;
  std::jmp_buf FTooMuch;
  TChunk* FChunks = nullptr;
  char* FNext = nullptr;
  size_t FLeft = 0;
  size_t FUsed = 0;
  size_t FAllocations = 0;
};

THtmlTree::THtmlTree(std::string_view iUtf8, const THtmlLimits& iLimits)
    : FArena(std::make_unique<TArena>(iLimits)) {
  const GumboNode* root = FArena->Parse(iUtf8);
  if (root == nullptr) {
    throw Exception(u"Die Seite ist zu umfangreich oder zu tief verschachtelt");
  }
  Flatten(root);
}

THtmlTree::~THtmlTree() = default;

void THtmlTree::Flatten(const GumboInternalNode* iRoot) {
  struct TOpen {
    size_t Index;
    const GumboVector* Children;
    unsigned Next;
  };
  FNodes.push_back({iRoot, 0});
  std::vector<TOpen> open = {{0, &iRoot->v.document.children, 0}};
  while (!open.empty()) {
    TOpen& top = open.back();
    if (top.Next == top.Children->length) {
      FNodes[top.Index].End = GetCount();
      open.pop_back();
      continue;
    }
    const auto* child = static_cast<const GumboNode*>(top.Children->data[top.Next++]);
    FNodes.push_back({child, GetCount() + 1});
    if (IsElement(child)) open.push_back({FNodes.size() - 1, &child->v.element.children, 0});
  }
}

std::string_view THtmlTree::Name(int iNode) const {
  const GumboNode* node = FNodes[static_cast<size_t>(iNode)].Node;
  return IsElement(node) ? gumbo_normalized_tagname(node->v.element.tag) : "";
}

bool THtmlTree::HasAttribute(int iNode, const char* iName) const {
  const GumboNode* node = FNodes[static_cast<size_t>(iNode)].Node;
  return IsElement(node) && gumbo_get_attribute(&node->v.element.attributes, iName) != nullptr;
}

std::string_view THtmlTree::Attribute(int iNode, const char* iName) const {
  const GumboNode* node = FNodes[static_cast<size_t>(iNode)].Node;
  if (!IsElement(node)) return {};
  const GumboAttribute* attribute = gumbo_get_attribute(&node->v.element.attributes, iName);
  return attribute == nullptr ? std::string_view() : Trimmed(attribute->value);
}

std::string THtmlTree::Text(int iNode) const {
  std::string text;
  const int end = std::min(End(iNode), iNode + cMaxTextNodes);
  for (int i = iNode + 1; i < end && text.size() < cMaxTextBytes; ++i) {
    const GumboNode* node = FNodes[static_cast<size_t>(i)].Node;
    if (IsText(node)) {
      text += node->v.text.text;
      continue;
    }
    const std::string_view name = Name(i);
    if (PartsWords(name)) text += ' ';
    if (name == "script" || name == "style" || name == "template") i = End(i) - 1;
  }
  return CollapseBlanks(text);
}

std::string THtmlTree::RawText(int iNode) const {
  std::string text;
  for (int i = iNode + 1; i < End(iNode); ++i) {
    const GumboNode* node = FNodes[static_cast<size_t>(i)].Node;
    if (IsText(node)) text += node->v.text.text;
  }
  return text;
}

std::string DecodeEntities(std::string_view iUtf8) {
  if (iUtf8.find('&') == std::string_view::npos) return std::string(iUtf8);
  // A title holds text and nothing else, so the parser decodes and leaves all tags alone.
  std::string page = "<title>";
  for (const char c : iUtf8) {
    if (c == '<') {
      page += "&lt;";
    } else {
      page += c;
    }
  }
  const THtmlTree tree(page);
  for (int i = 0; i < tree.GetCount(); ++i) {
    if (tree.Name(i) == "title") return tree.RawText(i);
  }
  return std::string(iUtf8);
}

std::string CollapseBlanks(std::string_view iUtf8) {
  std::string text;
  for (size_t i = 0; i < iUtf8.size(); ++i) {
    // The blank that doesn't break, U+00A0, is one for a reader.
    const bool isHardBlank = iUtf8.substr(i).starts_with("\xC2\xA0");
    if (!isHardBlank && cBlanks.find(iUtf8[i]) == std::string_view::npos) {
      text += iUtf8[i];
      continue;
    }
    if (isHardBlank) ++i;
    if (!text.empty() && text.back() != ' ') text += ' ';
  }
  if (!text.empty() && text.back() == ' ') text.pop_back();
  return text;
}

}  // namespace kk
