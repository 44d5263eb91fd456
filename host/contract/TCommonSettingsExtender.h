#pragma once

#include <vector>

#include "host/contract/ISettingsExtender.h"

namespace kk {

/// A plain list of settings pages with their places.
class TCommonSettingsExtender : public TInterfaced<ISettingsExtender> {
 public:
  void AddNodeBefore(const TGuid& iBefore, const TIntf<ISettingsNode>& iNode);

  int GetCount() const override { return static_cast<int>(FNodes.size()); }
  TIntf<ISettingsNode> GetNode(int iIndex) const override;
  TGuid GetBefore(int iIndex) const override;

 private:
  struct TPlace {
    TGuid Before;
    TIntf<ISettingsNode> Node;
  };
  const TPlace& Place(int iIndex) const;

  std::vector<TPlace> FNodes;
};

}  // namespace kk
