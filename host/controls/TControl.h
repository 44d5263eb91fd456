#pragma once

#include <utility>
#include <vector>

#include "host/base/TDelegate.h"
#include "host/base/TObject.h"
#include "host/base/TString.h"

namespace kk {

class TControl;
class TForm;

/// What a skin hears of the controls below the one where it is installed. Main thread.
class IControlObserver {
 public:
  virtual ~IControlObserver() = default;
  /// Its state, its children or their order are no longer what they were. It is told often; a skin
  /// renders the whole control once for each turn of the loop.
  virtual void ControlChanged(TControl& iControl) = 0;
  /// The control dies; nothing of it but its address may be used.
  virtual void ControlGone(TControl& iControl) = 0;
};

/// A key on its way through a form. A handler that sets it to 0 has swallowed it.
using TKeyPressEvent = TDelegate<void(TObject* Sender, char16_t& ioKey)>;
inline constexpr char16_t cKeyReturn = 13;
inline constexpr char16_t cKeyEscape = 27;
inline constexpr char16_t cKeySpace = 32;

/// The base of all control models: what the logic knows of a widget, without a toolkit.
///
/// There are two doors. The program's (SetEnabled, SetCaption, ...) changes the state and tells the
/// skin, nothing more. The user's (Click, EnterText, Select, PressKey, ...) first asks whether the
/// control can be used, then changes the state, then raises the event, and answers whether it did
/// anything. An equal value is no change and raises nothing. What an event's handler throws passes
/// through the user's door.
///
/// Controls are members of their form; a parent borrows its children. Nobody frees a form from
/// inside a handler of its own. Main thread.
class TControl : public TObject {
 public:
  /// iParent: the control that it stands in; none for windows and menus.
  explicit TControl(TControl* iParent, TStringView iName = {});
  ~TControl() override;

  /// The name that the logic gives it, such as "btnOK".
  const TString& Name() const { return FName; }
  TControl* Parent() const { return FParent; }
  /// From back to front, which in a row or a column is the order of their places.
  const std::vector<TControl*>& Children() const { return FChildren; }
  /// The nearest window that it stands in, itself included; null if there is none.
  TForm* Form();

  bool Enabled() const { return FEnabled; }
  void SetEnabled(bool iEnabled) { SetValue(FEnabled, iEnabled); }
  bool Visible() const { return FVisible; }
  void SetVisible(bool iVisible) { SetValue(FVisible, iVisible); }
  /// Whether a user reaches it: it and everything that it stands in are enabled and visible, and
  /// its window is not behind another modal one.
  bool CanUse() const;
  /// Whether it takes the room that its row or column has left.
  bool Stretches() const { return FStretches; }
  void SetStretches(bool iStretches) { SetValue(FStretches, iStretches); }
  /// Whether it is of a kind that the input focus can stand on.
  virtual bool AcceptsFocus() const { return false; }

  /// The user has put the focus on it.
  bool TakeFocus();
  /// The user has pressed a key on it. OnKeyPress comes first; what it leaves goes to the control
  /// and then to the form, where Return and Escape stand for the default and the cancel button.
  bool PressKey(char16_t iKey);
  /// The pointer of the mouse has come or gone.
  bool EnterMouse();
  bool LeaveMouse();
  void SetOnKeyPress(TKeyPressEvent iEvent) { FOnKeyPress = iEvent; }
  void SetOnMouseEnter(TNotifyEvent iEvent) { FOnMouseEnter = iEvent; }
  void SetOnMouseLeave(TNotifyEvent iEvent) { FOnMouseLeave = iEvent; }

  /// Between the two, which may lie in one another (TUpdating), the skin hears nothing of the
  /// control and of what stands in it; at the last EndUpdate it is told once of each that has
  /// changed.
  void BeginUpdate() { ++FUpdates; }
  void EndUpdate();

  /// Borrowed, and taken back with null before it dies. A control reports to the nearest observer
  /// above it, itself included.
  void SetObserver(IControlObserver* iObserver) { FObserver = iObserver; }

 protected:
  /// Tells the skin.
  void Changed();
  /// The program's door in one line: an equal value is no change.
  template <class T, class V>
  void SetValue(T& ioField, const V& iValue) {
    if (ioField == iValue) return;
    ioField = iValue;
    Changed();
  }
  /// The user's door: runs the function, which answers whether it did anything, if the control can
  /// be used; the form then sees whether it has ended. The control may die in the function.
  template <class Function>
  bool AsUser(Function&& iFunction);
  /// Whether input reaches it and what stands in it, as far as it lies with this control.
  virtual bool TakesInput() const { return FEnabled && FVisible; }
  /// What the control does with a key by itself; true if it used it.
  virtual bool UseKey(char16_t /*iKey*/) { return false; }
  /// iBefore: the child of the new parent in front of which its place is; null for the end.
  void SetParent(TControl* iParent, const TControl* iBefore = nullptr);
  /// Makes it the last of its parent's children, which is the one in front.
  void RaiseAmongSiblings();

 private:
  /// Open while a user's action runs in a form. An action that fails ends no form: the modal result
  /// is taken back.
  class TUserAction {
   public:
    explicit TUserAction(TForm* iForm);
    ~TUserAction();
    TUserAction(const TUserAction&) = delete;
    TUserAction& operator=(const TUserAction&) = delete;
    /// The action went through: a modal form with a result ends now.
    void Finish();

   private:
    TForm* FForm;
    int FResultBefore = 0;
    bool FOpen = true;
  };

  IControlObserver* Observer() const;
  bool IsUpdating() const;
  void TellChanges();

  TControl* FParent = nullptr;
  TString FName;
  std::vector<TControl*> FChildren;
  bool FEnabled = true;
  bool FVisible = true;
  bool FStretches = false;
  int FUpdates = 0;
  bool FHasChanged = false;  // since BeginUpdate
  TKeyPressEvent FOnKeyPress;
  TNotifyEvent FOnMouseEnter;
  TNotifyEvent FOnMouseLeave;
  IControlObserver* FObserver = nullptr;
};

template <class Function>
bool TControl::AsUser(Function&& iFunction) {
  if (!CanUse()) return false;
  TUserAction action(Form());
  const bool done = std::forward<Function>(iFunction)();
  action.Finish();
  return done;
}

}  // namespace kk
