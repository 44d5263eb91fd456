#pragma once

#include "host/controls/TCaptionControl.h"

namespace kk {

/// How the children of a panel stand: below each other, side by side, or all in one place, the last
/// in front.
enum class TArrangement { arColumn, arRow, arStack };

/// Where a panel or a window opens.
enum class TPosition { poDefault, poScreenCenter, poOwnerFormCenter };

/// A part of a window that holds controls: a row, a column or a stack of them, a group if it has a
/// caption. It can come and go by itself and lie over its siblings.
class TPanel : public TCaptionControl {
 public:
  using TCaptionControl::TCaptionControl;

  TArrangement Arrangement() const { return FArrangement; }
  void SetArrangement(TArrangement iArrangement) { SetValue(FArrangement, iArrangement); }
  /// In the skin's own units; 0 for what its content needs.
  int Width() const { return FWidth; }
  void SetWidth(int iWidth) { SetValue(FWidth, iWidth); }
  /// The user has drawn its splitter; no panel gets narrower than its minimum.
  bool DragWidth(int iWidth);
  int MinWidth() const { return FMinWidth; }
  int MinHeight() const { return FMinHeight; }
  void SetMinSize(int iWidth, int iHeight);
  /// Whether a splitter stands beside it.
  bool HasSplitter() const { return FHasSplitter; }
  void SetHasSplitter(bool iHasSplitter) { SetValue(FHasSplitter, iHasSplitter); }
  TPosition Position() const { return FPosition; }
  void SetPosition(TPosition iPosition) { SetValue(FPosition, iPosition); }

  /// Puts it into another control, behind what stands there; null takes it out. For a panel that
  /// its maker hands to others, such as a page of settings.
  void PutInto(TControl* iContainer) { SetParent(iContainer); }
  /// Makes it visible and raises OnShow; no effect if it is visible.
  virtual void Show();
  /// Takes it away and then raises OnClose; no effect if it isn't visible.
  virtual void Close();
  /// Puts it in front of its siblings.
  void BringToFront() { RaiseAmongSiblings(); }
  void SetOnShow(TNotifyEvent iEvent) { FOnShow = iEvent; }
  void SetOnClose(TNotifyEvent iEvent) { FOnClose = iEvent; }

 protected:
  /// Invisible first, then the event: a handler finds it gone, and one that fails leaves it so.
  void Disappear();

 private:
  TArrangement FArrangement = TArrangement::arColumn;
  TPosition FPosition = TPosition::poDefault;
  int FWidth = 0;
  int FMinWidth = 0;
  int FMinHeight = 0;
  bool FHasSplitter = false;
  TNotifyEvent FOnShow;
  TNotifyEvent FOnClose;
};

}  // namespace kk
