#pragma once

#include <QPointer>
#include <QTimer>
#include <QWidget>
#include <memory>
#include <unordered_map>
#include <vector>

#include "host/controls/TControl.h"

namespace kk {

class TBinder;
class TForm;

/// Shows a tree of controls as widgets of Qt: each control that has a picture of its own gets a
/// binder, which holds its widget. What changes is marked, and rendered once for each turn of the
/// loop. Main thread.
///
/// Binders of containers ask for those of their children by BinderOf. A control without a binder
/// (the heads of a strip, for example) is part of the picture of the nearest one above that has
/// one. A binder lives until its control dies or leaves its parent.
class TSkin : private IControlObserver {
 public:
  /// ioRoot is borrowed; who shows it lets the skin go before or after it dies, as it likes.
  /// iParent: the widget that the root's widget is put into; null for a window of its own, which
  /// the caller shows. Everything is rendered when the constructor returns.
  explicit TSkin(TControl& ioRoot, QWidget* iParent = nullptr);
  /// The widgets disappear at once, and die in a later turn of the loop.
  ~TSkin() override;
  TSkin(const TSkin&) = delete;
  TSkin& operator=(const TSkin&) = delete;

  /// The skin that shows the control or something that it stands in; null for none.
  static TSkin* Of(const TControl& iControl);

  /// The root's widget; null when the root, or the widget's parent, has died.
  QWidget* Widget() const;
  /// The control's widget, which is made if there is none yet; null for a kind without a picture.
  QWidget* WidgetOf(TControl& ioControl);
  /// As above, the binder.
  TBinder* BinderOf(TControl& ioControl);
  /// The binder if there is one.
  TBinder* FindBinder(const TControl& iControl) const;

  /// The binder of the control that keys go to: of the widget with the window's focus; the root's
  /// where that is none of the skin's.
  TBinder* FocusedBinder() const;

  /// Brings the keyboard to the form's focused control, if the program has moved the focus since
  /// the keyboard came to where it is.
  void ShowFocus(const TForm& iForm);
  /// The next ShowFocus does so in any case.
  void ForgetFocus() { FFocus = nullptr; }

  /// The control is to be rendered in this turn of the loop.
  void Mark(const TControl& iControl);
  /// The same if there is such a control and it has a binder; it may be dead.
  void MarkBound(const TControl* iControl);
  /// Renders what is marked now, and what that marks.
  void Flush();
  /// While it is true, what widgets tell comes from the skin itself and not from the user.
  bool IsRendering() const { return FRendering > 0; }

 private:
  friend class TBinder;
  /// Open while the skin itself works on widgets.
  class TRendering;

  void ControlChanged(TControl& iControl) override;
  void ControlGone(TControl& iControl) override;
  TBinder* NearestBinder(const TControl* iControl) const;
  /// The binder goes, and those of what stands in the control.
  void Drop(const TControl* iControl);
  /// Gives the focus the order in which one reads.
  void SortFocus();
  /// The user has moved the focus, as far as the form lets him.
  void NoteFocus();
  /// Qt has moved the focus by itself, because its control can't have it any more.
  void TakeFocusOver();

  TControl* FRoot;
  std::unordered_map<const TControl*, std::unique_ptr<TBinder>> FBinders;
  std::vector<const TControl*> FMarked;
  const TControl* FFocus = nullptr;  // what has got the keyboard last; it may be gone
  QTimer FTurn;
  int FRendering = 0;
  bool FOrderChanged = false;
};

}  // namespace kk
