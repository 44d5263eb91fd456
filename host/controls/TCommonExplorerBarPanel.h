#pragma once

#include "host/base/TObject.h"
#include "host/controls/TKK5SkinExplorerGroup.h"

namespace kk {

/// A panel of the explorer bar, to which plug-ins add items. It owns the group that shows it, and
/// stands nowhere until a bar takes it.
class TCommonExplorerBarPanel : public TInterfaced<IExplorerBarPanel>, public TObject {
 public:
  TCommonExplorerBarPanel(const TGuid& iId, int iSortOrder, TStringView iName, TStringView iTitle)
      : FId(iId), FSortOrder(iSortOrder), FGroup(nullptr, iName, iTitle) {}

  TGuid GetId() const override { return FId; }
  void Add(const TIntf<IExplorerBarItem>& iItem) override { FGroup.AddItem(iItem); }
  void Append(const TIntf<IExplorerBarPanel>& iPanel, bool iClearBeforeAppending) override;
  int GetSortOrder() const override { return FSortOrder; }
  int GetCount() const override { return static_cast<int>(FGroup.Items().size()); }
  TIntf<IExplorerBarItem> GetItems(int iIndex) const override;
  void Delete(const TIntf<IExplorerBarItem>& iItem) override { FGroup.DeleteItem(iItem); }
  void Clear() override { FGroup.ClearItems(); }
  TKK5SkinExplorerGroup& GetGroup() override { return FGroup; }

 private:
  TGuid FId;
  int FSortOrder;
  TKK5SkinExplorerGroup FGroup;
};

}  // namespace kk
