#pragma once

#include <vector>

#include "host/contract/IExplorerBarExtender.h"

namespace kk {

/// The base of an explorer bar extension: it adds nothing until a descendant says what.
class TCommonExplorerBarExtender : public IExplorerBarExtender {
 public:
  void AddPanels(IExplorerBar* /*iExplorerBar*/) override {}
  void DeletePanels(IExplorerBar* /*iExplorerBar*/) override {}
  void AddItems(const TIntf<IExplorerBarPanel>& /*iExplorerBarPanel*/) override {}
  /// Takes all its items out, whatever panel they are in.
  void DeleteItems(const TIntf<IExplorerBarPanel>& iExplorerBarPanel) override {
    for (const TIntf<IExplorerBarItem>& item : FItems) iExplorerBarPanel->Delete(item);
  }
  void BeforeClick(const TIntf<ISearchResult>& /*iSearchResult*/,
                   const TGuid& /*iItemId*/) override {}

 protected:
  ~TCommonExplorerBarExtender() = default;
  std::vector<TIntf<IExplorerBarItem>>& Items() { return FItems; }

 private:
  std::vector<TIntf<IExplorerBarItem>> FItems;
};

}  // namespace kk
