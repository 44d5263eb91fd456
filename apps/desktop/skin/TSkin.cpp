#include "apps/desktop/skin/TSkin.h"

#include <QApplication>
#include <algorithm>
#include <utility>

#include "apps/desktop/skin/TBinder.h"
#include "host/base/Guard.h"
#include "host/controls/TForm.h"

namespace kk {

namespace {

std::unordered_map<const TControl*, TSkin*> skins;  // by their roots

constexpr TStringView cRendering = u"TSkin (rendering)";

// What stands in a control, itself first, as one reads.
template <class Function>
void ForEachInOrder(TControl& iControl, const Function& iFunction) {
  iFunction(iControl);
  for (TControl* child : iControl.Children()) ForEachInOrder(*child, iFunction);
}

}  // namespace

class TSkin::TRendering {
 public:
  explicit TRendering(TSkin& ioSkin) : FSkin(ioSkin) { ++FSkin.FRendering; }
  ~TRendering() { --FSkin.FRendering; }
  TRendering(const TRendering&) = delete;
  TRendering& operator=(const TRendering&) = delete;

 private:
  TSkin& FSkin;
};

TSkin::TSkin(TControl& ioRoot, QWidget* iParent) : FRoot(&ioRoot) {
  FTurn.setSingleShot(true);
  FTurn.callOnTimeout([this] { AsUser([this] { Flush(); }); });
  skins[FRoot] = this;
  FRoot->SetObserver(this);
  if (QWidget* const widget = WidgetOf(ioRoot); widget != nullptr && iParent != nullptr) {
    widget->setParent(iParent);
  }
  Flush();
}

TSkin::~TSkin() {
  if (FRoot == nullptr) return;
  skins.erase(FRoot);
  FRoot->SetObserver(nullptr);
  const TRendering rendering(*this);
  FBinders.clear();
}

TSkin* TSkin::Of(const TControl& iControl) {
  for (const TControl* control = &iControl; control != nullptr; control = control->Parent()) {
    if (const auto found = skins.find(control); found != skins.end()) return found->second;
  }
  return nullptr;
}

QWidget* TSkin::Widget() const {
  const TBinder* const binder = FRoot != nullptr ? FindBinder(*FRoot) : nullptr;
  return binder != nullptr ? binder->BoundWidget() : nullptr;
}

QWidget* TSkin::WidgetOf(TControl& ioControl) {
  const TBinder* const binder = BinderOf(ioControl);
  return binder != nullptr ? binder->BoundWidget() : nullptr;
}

TBinder* TSkin::BinderOf(TControl& ioControl) {
  if (TBinder* const binder = FindBinder(ioControl)) return binder;
  const TRendering rendering(*this);
  std::unique_ptr<TBinder> made = MakeBinder(*this, ioControl);
  if (!made) return nullptr;
  if (ioControl.Parent() != nullptr) {
    if (TBinder* const parent = FindBinder(*ioControl.Parent())) {
      parent->FChildren.push_back(&ioControl);
    }
  }
  TBinder* const binder = made.get();
  FBinders.emplace(&ioControl, std::move(made));
  FOrderChanged = true;
  ControlChanged(ioControl);
  return binder;
}

TBinder* TSkin::FindBinder(const TControl& iControl) const {
  const auto found = FBinders.find(&iControl);
  return found != FBinders.end() ? found->second.get() : nullptr;
}

TBinder* TSkin::NearestBinder(const TControl* iControl) const {
  for (; iControl != nullptr; iControl = iControl->Parent()) {
    if (TBinder* const binder = FindBinder(*iControl)) return binder;
  }
  return nullptr;
}

TBinder* TSkin::FocusedBinder() const {
  const QWidget* const root = Widget();
  if (root == nullptr) return nullptr;
  const QWidget* const focus = root->window()->focusWidget();
  if (focus != nullptr) {
    for (const auto& [control, binder] : FBinders) {
      if (binder->FocusPart() == focus) return binder.get();
    }
  }
  return FindBinder(*FRoot);
}

void TSkin::Mark(const TControl& iControl) {
  TBinder* const binder = NearestBinder(&iControl);
  if (binder == nullptr || binder->FMarked) return;
  binder->FMarked = true;
  FMarked.push_back(&binder->BoundControl());
  if (!FTurn.isActive()) FTurn.start(0);
}

void TSkin::MarkBound(const TControl* iControl) {
  if (FBinders.contains(iControl)) Mark(*iControl);
}

void TSkin::Flush() {
  FTurn.stop();
  if (FRoot == nullptr) return;
  {
    const TRendering rendering(*this);
    while (!FMarked.empty()) {
      for (const TControl* control : std::exchange(FMarked, {})) {
        const auto found = FBinders.find(control);  // it may be gone
        if (found == FBinders.end()) continue;
        Guarded(cRendering, [&] { found->second->Refresh(); });
      }
    }
    if (std::exchange(FOrderChanged, false)) SortFocus();
  }
  FTurn.stop();
  TakeFocusOver();
}

void TSkin::ControlChanged(TControl& iControl) {
  TBinder* const binder = NearestBinder(&iControl);
  if (binder == nullptr) return;
  binder->FTold = true;
  if (&binder->BoundControl() == &iControl && !binder->FChildren.empty()) {
    // Those that have left tell nothing any more, not even of their death.
    const auto& children = iControl.Children();
    std::vector<TControl*>& known = binder->FChildren;
    const auto left = std::stable_partition(known.begin(), known.end(), [&](TControl* iChild) {
      return std::find(children.begin(), children.end(), iChild) != children.end();
    });
    const std::vector<TControl*> gone(left, known.end());
    known.erase(left, known.end());
    for (const TControl* child : gone) Drop(child);
    FOrderChanged = true;
  }
  Mark(iControl);
}

void TSkin::ControlGone(TControl& iControl) {
  if (&iControl == FRoot) {
    skins.erase(FRoot);
    FRoot = nullptr;
    FMarked.clear();
    const TRendering rendering(*this);
    FBinders.clear();
    return;
  }
  if (TBinder* const parent = FindBinder(*iControl.Parent())) {
    std::erase(parent->FChildren, &iControl);
  }
  Drop(&iControl);
}

void TSkin::Drop(const TControl* iControl) {
  const auto found = FBinders.find(iControl);
  if (found == FBinders.end()) return;
  const TRendering rendering(*this);  // a widget that goes hands the focus on
  const std::unique_ptr<TBinder> binder = std::move(found->second);
  FBinders.erase(found);
  for (const TControl* child : binder->FChildren) Drop(child);
}

void TSkin::SortFocus() {
  QWidget* before = nullptr;
  ForEachInOrder(*FRoot, [&](TControl& iControl) {
    const TBinder* const binder = FindBinder(iControl);
    if (binder == nullptr) return;
    for (QWidget* part : binder->FocusParts()) {
      if (part == nullptr || (part->focusPolicy() & Qt::TabFocus) == 0) continue;
      if (before != nullptr && before->window() == part->window()) {
        QWidget::setTabOrder(before, part);
      }
      before = part;
    }
  });
}

void TSkin::ShowFocus(const TForm& iForm) {
  TControl* const focused = iForm.FocusedControl();
  if (focused == FFocus) return;
  FFocus = focused;
  const TBinder* const binder = focused != nullptr ? BinderOf(*focused) : nullptr;
  if (binder != nullptr && binder->FocusPart() != nullptr) binder->FocusPart()->setFocus();
}

void TSkin::NoteFocus() {
  const TForm* const form = FRoot != nullptr ? FRoot->Form() : nullptr;
  if (form != nullptr) FFocus = form->FocusedControl();
}

void TSkin::TakeFocusOver() {
  const TBinder* const binder = FocusedBinder();
  if (binder == nullptr) return;
  TControl& control = binder->BoundControl();
  TForm* const form = control.Form();
  if (form == nullptr || form->FocusedControl() == &control || !control.AcceptsFocus()) return;
  if (binder->FocusPart() == nullptr || !binder->FocusPart()->isVisible()) return;
  AsUser([&] { control.TakeFocus(); });
}

}  // namespace kk
