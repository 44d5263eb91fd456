#pragma once

#include <QObject>
#include <QPointer>
#include <QWidget>
#include <memory>
#include <vector>

#include "apps/desktop/skin/AsUser.h"
#include "apps/desktop/skin/TSkin.h"

class QEvent;
class QKeyEvent;

namespace kk {

class TMenuItem;

/// One control and its widget. It renders the whole state of the control when told, and calls the
/// control's doors for users; it keeps no state but what Qt alone knows (scroll, caret, hover).
/// What all controls have in common is rendered here: enabled, visible, name for a screen reader;
/// so are focus, keys and the mouse coming and going. The skin owns it. Main thread.
class TBinder : public QObject {
 public:
  /// Takes the widget over; it gets its parent from the binder of the control that it stands in.
  TBinder(TSkin& ioSkin, TControl& ioControl, QWidget* iWidget);
  /// The widget disappears, and dies in a later turn: it may be in the middle of an event.
  ~TBinder() override;

  TControl& BoundControl() const { return FControl; }
  /// Null when the widget has died with its parent.
  QWidget* BoundWidget() const { return FWidget; }
  /// The part of the widget that keys go to. It is set once, in the constructor of the binder.
  QWidget* FocusPart() const { return FFocusPart; }

  /// What of the widget Tab reaches, in order: the focus part as a rule.
  virtual std::vector<QWidget*> FocusParts() const { return {FFocusPart}; }

  /// Renders the control. The skin's.
  void Refresh();

  /// The control's popup menu, whose entries' shortcuts work while the focus is in the control;
  /// null for none.
  virtual TMenuItem* PopupMenu() const { return nullptr; }
  /// The control's door before the menu is used, as the user asks for it by the keyboard; false if
  /// it can't be used now.
  virtual bool OpenPopupMenu() { return false; }
  /// Whether it takes more room than it needs where there is some.
  virtual bool Grows(Qt::Orientation iDirection) const;
  /// How the control wants to be named to a screen reader; empty for the label before it.
  virtual QString AccessibleName() const;

  bool eventFilter(QObject* iObject, QEvent* iEvent) override;

 protected:
  /// Brings the widget to the control's state. Signals of the widget come to nothing meanwhile.
  virtual void Render() = 0;
  /// A key that the widget may have as well when the control has used it: Return in a text of
  /// several lines.
  virtual bool SharesKey(char16_t /*iKey*/) const { return false; }
  /// Whether the widget is to have the one that was pressed just now.
  virtual bool LeavesKey() { return false; }

  TSkin& Skin() const { return FSkin; }
  void SetFocusPart(QWidget* iPart);
  /// FocusParts are others now.
  void TellFocusParts() { FSkin.FOrderChanged = true; }
  /// Something has changed that the layout depends on in which the widget stands.
  void TellLayout();
  /// While it renders: the model has told that it changed; not only the user was here.
  bool WasTold() const { return FTold; }
  /// Whether what a widget tells now comes from the user.
  bool IsUser() const { return !FSkin.IsRendering(); }
  /// Makes the function the user's way in: it runs when the user, not the skin, makes the sender
  /// emit the signal. It calls one of the control's doors and touches nothing behind that, for the
  /// control may die in it. In the same turn the widget goes back to the control's state, should
  /// the door have refused.
  template <class Sender, class Signal, class Function>
  void OnUser(const Sender* iSender, Signal iSignal, Function iFunction) {
    connect(iSender, iSignal, this, [this, iFunction](auto&&... iArgs) {
      if (IsUser()) Enter([&] { iFunction(iArgs...); });
    });
  }
  /// Runs the function, which calls a door of the control's, as the user. The binder may be gone
  /// behind it; the answer is whether it still lives.
  template <class Function>
  bool Enter(Function&& iFunction) {
    const QPointer<TBinder> self(this);
    AsUser(std::forward<Function>(iFunction));
    if (self) FSkin.Mark(FControl);
    return !self.isNull();
  }

 private:
  friend class TSkin;

  void RenderCommon();
  void TakeFocus();
  bool PressKey(QKeyEvent& iEvent);
  /// Looks among the menus of the control and of those that it stands in; iPress: clicks the entry.
  bool UseShortCut(const QKeyEvent& iEvent, bool iPress);

  TSkin& FSkin;
  TControl& FControl;
  QPointer<QWidget> FWidget;
  QPointer<QWidget> FFocusPart;
  bool FMarked = false;
  bool FTold = false;
  bool FVisible = true;
  bool FStretches = false;
  std::vector<TControl*> FChildren;  // those that have asked for binders; they may have left
};

/// A binder that knows the kinds of its control and its widget.
template <class Model, class Widget = QWidget>
class TBinderOf : public TBinder {
 public:
  using TModel = Model;

  TBinderOf(TSkin& ioSkin, Model& ioControl, Widget* iWidget)
      : TBinder(ioSkin, ioControl, iWidget), FModel(ioControl), FTyped(iWidget) {}

 protected:
  Model& Control() const { return FModel; }
  /// It lives as long as the binder is asked for anything.
  Widget& View() const { return *FTyped; }

 private:
  Model& FModel;
  Widget* FTyped;
};

/// A binder for the control by its kind; null for a kind without a picture of its own.
/// The kinds stand in one table, MakeBinder.cpp.
std::unique_ptr<TBinder> MakeBinder(TSkin& ioSkin, TControl& ioControl);

}  // namespace kk
