#pragma once

#include "host/controls/TClickControl.h"

namespace kk {

/// A text on a form. It can be clicked, and never has the focus.
class TLabel : public TClickControl {
 public:
  using TClickControl::TClickControl;

  bool Bold() const { return FBold; }
  void SetBold(bool iBold) { SetValue(FBold, iBold); }
  bool Underline() const { return FUnderline; }
  void SetUnderline(bool iUnderline) { SetValue(FUnderline, iUnderline); }
  /// Looks like something that leads elsewhere: blue, with a hand as the pointer.
  bool LooksLikeLink() const { return FLooksLikeLink; }
  void SetLooksLikeLink(bool iLink) { SetValue(FLooksLikeLink, iLink); }
  /// In the middle of its room instead of at its left.
  bool Centered() const { return FCentered; }
  void SetCentered(bool iCentered) { SetValue(FCentered, iCentered); }
  /// One line, cut off where the room ends, instead of as many as the text needs.
  bool SingleLine() const { return FSingleLine; }
  void SetSingleLine(bool iSingleLine) { SetValue(FSingleLine, iSingleLine); }

  bool AcceptsFocus() const override { return false; }

 private:
  bool FBold = false;
  bool FUnderline = false;
  bool FLooksLikeLink = false;
  bool FCentered = false;
  bool FSingleLine = false;
};

}  // namespace kk
