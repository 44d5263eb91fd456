#include "host/controls/TVirtualNode.h"

namespace kk {

int TLstVirtualNode::RowOf(const TVirtualNode& iNode) const {
  const auto place = std::lower_bound(
      begin(), end(), iNode.FOrder,
      [](const TVirtualNode* iEntry, int64_t iOrder) { return iEntry->FOrder < iOrder; });
  return static_cast<int>(place - begin());
}

TVirtualNode* TVirtualNode::Parent() const {
  return FParent == nullptr || FParent->FParent == nullptr ? nullptr : FParent;
}

int TVirtualNode::Row() const { return FParent->FChildren.RowOf(*this); }

TVirtualNode* TVirtualNode::FirstChild() const { return GetCount() == 0 ? nullptr : &GetItems(0); }

TVirtualNode* TVirtualNode::NextSibling() const {
  const int next = Row() + 1;
  return next < FParent->GetCount() ? &FParent->GetItems(next) : nullptr;
}

TVirtualNode* TVirtualNode::Next() const {
  if (TVirtualNode* child = FirstChild()) return child;
  const TVirtualNode* node = this;
  for (; node != nullptr; node = node->Parent()) {
    if (TVirtualNode* sibling = node->NextSibling()) return sibling;
  }
  return nullptr;
}

bool TVirtualNode::IsShown() const {
  const TVirtualNode* node = Parent();
  while (node != nullptr && node->FExpanded) node = node->Parent();
  return node == nullptr;
}

bool TVirtualNode::IsIn(const TVirtualNode& iNode) const {
  const TVirtualNode* node = this;
  while (node != nullptr && node != &iNode) node = node->FParent;
  return node != nullptr;
}

}  // namespace kk
