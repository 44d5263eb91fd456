#pragma once

#include <atomic>
#include <chrono>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "host/base/TObject.h"

struct GumboInternalNode;

namespace kk {

/// What bounds the reading of one page; tests set smaller ones.
struct THtmlLimits {
  size_t MaxBytes = size_t{256} << 20;
  std::chrono::milliseconds MaxTime{5000};
  /// Ends the reading at once when it becomes true; may be absent.
  const std::atomic<bool>* Stop = nullptr;
};

/// A page as HTML5 has it, as a flat list of its nodes in document order: the nodes within node i
/// are those from i + 1 up to End(i). So nothing that works on it needs to recurse, however deeply
/// a page is nested. UTF-8. Any one thread at a time.
class THtmlTree : public TObject {
 public:
  /// Raises Exception for a page that goes beyond the limits. The text must outlive the tree.
  explicit THtmlTree(std::string_view iUtf8, const THtmlLimits& iLimits = {});
  ~THtmlTree() override;

  int GetCount() const { return static_cast<int>(FNodes.size()); }
  /// Behind the last node within this one.
  int End(int iNode) const { return FNodes[static_cast<size_t>(iNode)].End; }
  /// In lower case; empty for what is no element.
  std::string_view Name(int iNode) const;
  bool HasAttribute(int iNode, const char* iName) const;
  /// Without blanks at its ends; empty if there is none.
  std::string_view Attribute(int iNode, const char* iName) const;
  /// What a reader sees: without scripts and styles, runs of blanks as one. At most some thousand
  /// characters; the rest is left out.
  std::string Text(int iNode) const;
  /// The text directly in an element, as it stands: for scripts.
  std::string RawText(int iNode) const;

 private:
  class TArena;
  struct TNode {
    const GumboInternalNode* Node;
    int End;
  };
  void Flatten(const GumboInternalNode* iRoot);

  std::unique_ptr<TArena> FArena;
  std::vector<TNode> FNodes;
};

/// The text with "&eacute;", "&#39;" and their like replaced by what they stand for.
std::string DecodeEntities(std::string_view iUtf8);

/// Without blanks at both ends, and runs of blanks and line breaks as one blank.
std::string CollapseBlanks(std::string_view iUtf8);

}  // namespace kk
