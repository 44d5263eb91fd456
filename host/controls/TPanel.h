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
  TPosition Position() const { return FPosition; }
  void SetPosition(TPosition iPosition) { SetValue(FPosition, iPosition); }

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
  TNotifyEvent FOnShow;
  TNotifyEvent FOnClose;
};

}  // namespace kk
