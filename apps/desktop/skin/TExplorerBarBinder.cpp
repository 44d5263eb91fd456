#include "apps/desktop/skin/TExplorerBarBinder.h"

#include "apps/desktop/skin/QtOwned.h"

namespace kk {

TExplorerBarBinder::TExplorerBarBinder(TSkin& ioSkin, TExplorerBar& ioBar)
    : TBinderOf(ioSkin, ioBar, QtOwned<QScrollArea>()),
      FColumn(QtOwned<QWidget>()),
      FLayout(QtOwned<QVBoxLayout>(FColumn)) {
  FLayout->setContentsMargins(0, 0, 0, 0);
  FLayout->setSpacing(2);
  FLayout->addStretch(1);
  View().setWidget(FColumn);
  View().setWidgetResizable(true);
  View().setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  View().setFrameShape(QFrame::NoFrame);
  View().setFocusPolicy(Qt::NoFocus);
}

void TExplorerBarBinder::Render() {
  std::vector<TPlace> before = std::exchange(FPlaces, {});
  int place = 0;
  for (TKK5SkinExplorerGroup* group : Control().Groups()) {
    const auto shown = std::find_if(before.begin(), before.end(), [group](const TPlace& iPlace) {
      return iPlace.Group == group;
    });
    TExplorerGroupView* view = nullptr;
    if (shown != before.end()) {
      view = shown->View;
      before.erase(shown);
    } else {
      view = ViewOf(*group);
    }
    if (FLayout->indexOf(view) != place) FLayout->insertWidget(place, view);
    FPlaces.push_back({group, view});
    view->ShowGroup(*group);
    ++place;
  }
  for (const TPlace& gone : before) {
    gone.View->hide();
    gone.View->deleteLater();
  }
  if (std::exchange(FFocusParts, FocusParts()) != FFocusParts) TellFocusParts();
}

TExplorerGroupView* TExplorerBarBinder::ViewOf(const TKK5SkinExplorerGroup& iGroup) {
  const auto onTitle = [this, group = &iGroup] {
    TKK5SkinExplorerGroup* shown = FindGroup(group);
    if (IsUser() && shown != nullptr) Enter([shown] { shown->ClickTitle(); });
  };
  const auto onLink = [this, group = &iGroup](const IExplorerBarItem* iItem) {
    if (IsUser()) ClickLink(group, iItem);
  };
  return QtOwned<TExplorerGroupView>(FColumn, onTitle, onLink);
}

TKK5SkinExplorerGroup* TExplorerBarBinder::FindGroup(const TKK5SkinExplorerGroup* iGroup) const {
  for (TKK5SkinExplorerGroup* group : Control().Groups()) {
    if (group == iGroup) return group;
  }
  return nullptr;
}

void TExplorerBarBinder::ClickLink(const TKK5SkinExplorerGroup* iGroup,
                                   const IExplorerBarItem* iItem) {
  TKK5SkinExplorerGroup* group = FindGroup(iGroup);
  if (group == nullptr) return;
  for (const auto& item : group->Items()) {
    if (item.Get() != iItem) continue;
    Enter([&] { group->ClickItem(item); });
    return;
  }
}

std::vector<QWidget*> TExplorerBarBinder::FocusParts() const {
  std::vector<QWidget*> parts;
  for (const TPlace& place : FPlaces) {
    for (QWidget* widget : place.View->FocusParts()) parts.push_back(widget);
  }
  return parts;
}

}  // namespace kk
