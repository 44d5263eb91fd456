#pragma once

#include <unordered_map>
#include <vector>

#include "sources/page/THtmlTree.h"
#include "sources/page/TSchemaGraph.h"

namespace kk {

/// Adds the items that a page's microdata make (HTML standard, section 5) to the graph, "itemref"
/// included. Beyond the standard, as pages need it: an element with an "itemtype" but without
/// "itemscope" is an item too, a "content" attribute counts on every element, and an image that is
/// loaded late has its address in "data-src".
class TMicrodataReader {
 public:
  TMicrodataReader(const THtmlTree& iTree, TSchemaGraph& ioGraph) : FTree(iTree), FGraph(ioGraph) {}

  void Read();

 private:
  bool IsItem(int iNode) const;
  void FindItems();
  void ReadProperties(int iFrom, int iTo, TSchemaItem& ioItem);
  void ReadReferences(int iNode, TSchemaItem& ioItem);
  void AddProperty(int iNode, TSchemaItem& ioItem);
  TSchemaValue ValueOf(int iNode) const;

  const THtmlTree& FTree;
  TSchemaGraph& FGraph;
  std::unordered_map<int, TSchemaItem*> FItems;
  std::unordered_map<std::string_view, int> FIds;
  std::vector<int> FItemNodes;
  size_t FValues = 0;
  int64_t FReferencedNodes = 0;
};

}  // namespace kk
