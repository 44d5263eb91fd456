#pragma once

#include "host/controls/TExplorerBar.h"

namespace kk {

/// The explorer bar as plug-ins see it: panels that they add to its widget. The widget is borrowed
/// and outlives the bar's use; Clear takes the panels out of it.
class TCommonExplorerBar : public TInterfaced<IExplorerBar> {
 public:
  explicit TCommonExplorerBar(TExplorerBar& iControl) : FControl(iControl) {}

  int GetCount() const override { return static_cast<int>(FPanels.size()); }
  TIntf<IExplorerBarPanel> GetPanels(int iIndex) const override;
  TExplorerBar& GetControl() const override { return FControl; }
  TIntf<IExplorerBarPanel> FindPanelById(const TGuid& iId) const override;
  void Add(const TIntf<IExplorerBarPanel>& iPanel) override;
  void Delete(const TIntf<IExplorerBarPanel>& iPanel) override;
  void BeginUpdate() override { FControl.BeginUpdate(); }
  void EndUpdate() override { FControl.EndUpdate(); }
  /// Adds nothing until a descendant says what.
  void Init() override {}
  void Clear() override;

 private:
  TExplorerBar& FControl;
  std::vector<TIntf<IExplorerBarPanel>> FPanels;  // by their sort orders
};

}  // namespace kk
