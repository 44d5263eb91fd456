#pragma once

#include "host/controls/TCommonExplorerBarItem.h"
#include "host/controls/TCommonExplorerBarPanel.h"

namespace kk {

/// The panel "Weitere Optionen" of the explorer bar: export, import, print and the disclaimer,
/// above which other plug-ins put links of their own. Main thread.
class TExplorerBarPanelItemMore : public TCommonExplorerBarPanel {
 public:
  TExplorerBarPanelItemMore();
  ~TExplorerBarPanelItemMore() override;

  /// Puts its items in.
  void Init();

  TNotifyEvent GetOnClickExport() const { return FOnClickExport; }
  /// The sender of all three is the panel.
  void SetOnClickExport(TNotifyEvent iEvent) { FOnClickExport = iEvent; }
  TNotifyEvent GetOnClickImport() const { return FOnClickImport; }
  void SetOnClickImport(TNotifyEvent iEvent) { FOnClickImport = iEvent; }
  TNotifyEvent GetOnClickPrint() const { return FOnClickPrint; }
  void SetOnClickPrint(TNotifyEvent iEvent) { FOnClickPrint = iEvent; }

 private:
  void DoClickExport(TObject* Sender);
  void DoClickImport(TObject* Sender);
  void DoClickPrint(TObject* Sender);

  TIntf<TCommonExplorerBarLink> FExport;
  TIntf<TCommonExplorerBarLink> FImport;
  TIntf<TCommonExplorerBarLink> FPrint;
  TNotifyEvent FOnClickExport;
  TNotifyEvent FOnClickImport;
  TNotifyEvent FOnClickPrint;
};

}  // namespace kk
