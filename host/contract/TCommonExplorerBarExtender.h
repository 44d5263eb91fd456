#pragma once

#include <utility>
#include <vector>

#include "host/base/TDelegate.h"
#include "host/contract/IExplorerBarExtender.h"

namespace kk {

/// A link of the explorer bar that raises an event when it is clicked.
class TCommonExplorerBarLink : public TInterfaced<IExplorerBarItem> {
 public:
  TCommonExplorerBarLink(const TGuid& iId, int iSortOrder, TStringView iCaption, TBitmap iImage)
      : FId(iId), FSortOrder(iSortOrder), FCaption(iCaption), FImage(std::move(iImage)) {}

  TGuid GetId() const override { return FId; }
  int GetSortOrder() const override { return FSortOrder; }
  TString GetCaption() const override { return FCaption; }
  TBitmap GetImage() const override { return FImage; }
  bool GetVisible() const override { return FVisible; }
  void SetVisible(bool iVisible) override { FVisible = iVisible; }
  void Click() override {
    if (FOnClick) FOnClick(nullptr);
  }
  /// The receiver outlives the link or takes the event back.
  void SetOnClick(TNotifyEvent iEvent) { FOnClick = iEvent; }

 private:
  TGuid FId;
  int FSortOrder;
  TString FCaption;
  TBitmap FImage;
  bool FVisible = true;
  TNotifyEvent FOnClick;
};

/// The base of an explorer bar extension: it adds nothing until a descendant says what.
class TCommonExplorerBarExtender : public IExplorerBarExtender {
 public:
  void AddPanels(IExplorerBar* /*iExplorerBar*/) override {}
  void DeletePanels(IExplorerBar* /*iExplorerBar*/) override {}
  void AddItems(const TIntf<IExplorerBarPanel>& /*iExplorerBarPanel*/) override {}
  void DeleteItems(const TIntf<IExplorerBarPanel>& /*iExplorerBarPanel*/) override {}
  void BeforeClick(const TIntf<ISearchResult>& /*iSearchResult*/,
                   const TGuid& /*iItemId*/) override {}

 protected:
  ~TCommonExplorerBarExtender() = default;
  std::vector<TIntf<IExplorerBarItem>>& Items() { return FItems; }

 private:
  std::vector<TIntf<IExplorerBarItem>> FItems;
};

}  // namespace kk
