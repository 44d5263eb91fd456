#pragma once

#include "host/contract/IExplorerBar.h"
#include "host/contract/ISearchResult.h"

namespace kk {

inline constexpr TGuid IID_ExplorerBarExtender =
    GuidLiteral("{C458FD57-E7CA-4021-ACFA-01B039CC1F8D}");

/// Entries in the explorer bar of a result view. Main thread.
class IExplorerBarExtender : public IInterface {
 public:
  using TParent = IInterface;
  static constexpr TGuid cIid = IID_ExplorerBarExtender;

  virtual void AddPanels(IExplorerBar* iExplorerBar) = 0;
  virtual void DeletePanels(IExplorerBar* iExplorerBar) = 0;
  virtual void AddItems(const TIntf<IExplorerBarPanel>& iExplorerBarPanel) = 0;
  virtual void DeleteItems(const TIntf<IExplorerBarPanel>& iExplorerBarPanel) = 0;
  virtual void BeforeClick(const TIntf<ISearchResult>& iSearchResult, const TGuid& iItemId) = 0;
};

}  // namespace kk
