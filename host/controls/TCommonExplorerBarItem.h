#pragma once

#include <utility>
#include <vector>

#include "host/base/TDelegate.h"
#include "host/contract/IExplorerBar.h"

namespace kk {

/// The base of the kinds of items. Everything here is the program's door: a changed value is told
/// to whoever shows the item, an equal one is no change. Main thread.
class TCommonExplorerBarItem : public TInterfaced<IExplorerBarItem> {
 public:
  TGuid GetId() const override { return FId; }
  int GetSortOrder() const override { return FSortOrder; }
  TExplorerBarItemKind GetKind() const override { return FKind; }
  TString GetCaption() const override { return FCaption; }
  void SetCaption(TStringView iCaption) { SetProperty(FCaption, iCaption); }
  bool GetVisible() const override { return FVisible; }
  void SetVisible(bool iVisible) override { SetProperty(FVisible, iVisible); }

  // Kinds that have these override them.
  TString GetValue() const override { return {}; }
  TBitmap GetImage() const override { return {}; }
  bool GetWordWrap() const override { return false; }
  void Click() override {}

  void AddObserver(IExplorerBarItemObserver& iObserver) override;
  void RemoveObserver(IExplorerBarItemObserver& iObserver) override;

 protected:
  TCommonExplorerBarItem(TExplorerBarItemKind iKind, const TGuid& iId, int iSortOrder,
                         TStringView iCaption)
      : FKind(iKind), FId(iId), FSortOrder(iSortOrder), FCaption(iCaption) {}

  template <class T, class V>
  void SetProperty(T& ioField, const V& iValue) {
    if (ioField == iValue) return;
    ioField = iValue;
    Changed();
  }

 private:
  void Changed();

  TExplorerBarItemKind FKind;
  TGuid FId;
  int FSortOrder;
  TString FCaption;
  bool FVisible = true;
  std::vector<IExplorerBarItemObserver*> FObservers;
};

/// A link: it raises an event when it is clicked.
class TCommonExplorerBarLink : public TCommonExplorerBarItem {
 public:
  TCommonExplorerBarLink(const TGuid& iId, int iSortOrder, TStringView iCaption,
                         TBitmap iImage = {})
      : TCommonExplorerBarItem(TExplorerBarItemKind::ikLink, iId, iSortOrder, iCaption),
        FImage(std::move(iImage)) {}

  TBitmap GetImage() const override { return FImage; }
  void SetImage(const TBitmap& iImage) { SetProperty(FImage, iImage); }
  bool GetWordWrap() const override { return FWordWrap; }
  void SetWordWrap(bool iWordWrap) { SetProperty(FWordWrap, iWordWrap); }
  void Click() override;
  /// The receiver outlives the link or takes the event back.
  void SetOnClick(TNotifyEvent iEvent) { FOnClick = iEvent; }

 private:
  TBitmap FImage;
  bool FWordWrap = false;
  TNotifyEvent FOnClick;
};

/// A text that can't be clicked.
class TCommonExplorerBarText : public TCommonExplorerBarItem {
 public:
  explicit TCommonExplorerBarText(const TGuid& iId = {}, int iSortOrder = 0, TStringView iText = {})
      : TCommonExplorerBarItem(TExplorerBarItemKind::ikText, iId, iSortOrder, iText) {}

  bool GetWordWrap() const override { return FWordWrap; }
  void SetWordWrap(bool iWordWrap) { SetProperty(FWordWrap, iWordWrap); }

 private:
  bool FWordWrap = false;
};

/// A caption and beside it a value.
class TCommonExplorerBarCaptionAndValue : public TCommonExplorerBarItem {
 public:
  TCommonExplorerBarCaptionAndValue(const TGuid& iId, int iSortOrder, TStringView iCaption,
                                    TStringView iValue = {})
      : TCommonExplorerBarItem(TExplorerBarItemKind::ikCaptionAndValue, iId, iSortOrder, iCaption),
        FValue(iValue) {}

  TString GetValue() const override { return FValue; }
  void SetValue(TStringView iValue) { SetProperty(FValue, iValue); }

 private:
  TString FValue;
};

/// A line between other items.
class TCommonExplorerBarSeparator : public TCommonExplorerBarItem {
 public:
  explicit TCommonExplorerBarSeparator(const TGuid& iId = {}, int iSortOrder = 0)
      : TCommonExplorerBarItem(TExplorerBarItemKind::ikSeparator, iId, iSortOrder, {}) {}
};

}  // namespace kk
