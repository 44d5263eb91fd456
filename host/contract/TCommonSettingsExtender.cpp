#include "host/contract/TCommonSettingsExtender.h"

#include "host/base/Exception.h"

namespace kk {

void TCommonSettingsExtender::AddNodeBefore(const TGuid& iBefore,
                                            const TIntf<ISettingsNode>& iNode) {
  FNodes.push_back({iBefore, iNode});
}

const TCommonSettingsExtender::TPlace& TCommonSettingsExtender::Place(int iIndex) const {
  return FNodes[CheckedIndex(iIndex, FNodes.size())];
}

TIntf<ISettingsNode> TCommonSettingsExtender::GetNode(int iIndex) const {
  return Place(iIndex).Node;
}

TGuid TCommonSettingsExtender::GetBefore(int iIndex) const { return Place(iIndex).Before; }

}  // namespace kk
