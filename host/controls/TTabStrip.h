#pragma once

#include "host/controls/TKK5SkinHeaderItemTabExt.h"
#include "host/controls/TMenuItem.h"

namespace kk {

/// Whether the strip may do something on its own account; the handler sets the answer.
using TTabStripQueryEvent = TDelegate<void(TObject* Sender, bool& ioResult)>;

/// The heads of tabs in a row. What does not fit is reached by the menu of its chevron button. The
/// heads are its children, in the order of their places; what they stand for is their owner's.
class TTabStrip : public TControl {
 public:
  using TControl::TControl;

  int GetCount() const { return static_cast<int>(Children().size()); }
  /// An index out of range raises EListError.
  TKK5SkinHeaderItemTabExt& GetItems(int iIndex) const;
  /// Null if no head is selected.
  TKK5SkinHeaderItemTabExt* SelectedItem() const;

  /// Everything is to be painted anew.
  void Repaint() { Changed(); }
  /// The head gets into view with the next painting.
  void ScrollIntoView(TKK5SkinHeaderItemTabExt& iHead);
  /// The skin's: the head of the last ScrollIntoView, once; null for none since.
  TKK5SkinHeaderItemTabExt* TakeHeadToShow();
  /// Gives the focus to the first control in the panel that can have it. A focus that stands
  /// elsewhere in the window moves only if OnBeforeChange allows it.
  void FocusFirstChild(TControl& iPanel);

  /// What is told of the strip where the pointer is.
  const TString& Hint() const { return FHint; }
  void SetHint(TStringView iHint) { SetValue(FHint, iHint); }
  /// Borrowed, null for none.
  TMenuItem* ChevronMenu() const { return FChevronMenu; }
  void SetChevronMenu(TMenuItem* iMenu) { SetValue(FChevronMenu, iMenu); }
  /// Raised before the menu is shown, so that it can be filled.
  void SetOnChevronPopup(TNotifyEvent iEvent) { FOnChevronPopup = iEvent; }
  /// Raised before the strip changes the tab, or moves the focus, without a click on a head. No
  /// event allows it.
  void SetOnBeforeChange(TTabStripQueryEvent iEvent) { FOnBeforeChange = iEvent; }

  /// The user asks for the menu; when it is filled, it can be shown.
  bool OpenChevronMenu();
  /// The user goes to the next or the previous visible head by the keyboard, around the ends, which
  /// is as good as a click on it if OnBeforeChange allows it.
  bool ChangeTab(bool iForward);
  /// The user has dragged the head to this place, 0 to GetCount - 1; false for any other.
  bool DragItem(TKK5SkinHeaderItemTabExt& iHead, int iPlace);

  bool AcceptsFocus() const override { return true; }

 private:
  bool MayChange();

  TKK5SkinHeaderItemTabExt* FHeadToShow = nullptr;  // may be gone
  TString FHint;
  TMenuItem* FChevronMenu = nullptr;
  TNotifyEvent FOnChevronPopup;
  TTabStripQueryEvent FOnBeforeChange;
};

}  // namespace kk
