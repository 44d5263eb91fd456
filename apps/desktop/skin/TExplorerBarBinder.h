#pragma once

#include <QScrollArea>
#include <QVBoxLayout>

#include "apps/desktop/skin/TBinder.h"
#include "apps/desktop/skin/TExplorerGroupView.h"
#include "host/controls/TExplorerBar.h"

namespace kk {

/// The explorer bar: a column of groups that scrolls. It is shown anew at almost everything that
/// happens; the groups see to it that this costs nothing where nothing is another.
class TExplorerBarBinder final : public TBinderOf<TExplorerBar, QScrollArea> {
 public:
  TExplorerBarBinder(TSkin& ioSkin, TExplorerBar& ioBar);

  /// Titles and links, which come and go.
  std::vector<QWidget*> FocusParts() const override;

 protected:
  void Render() override;

 private:
  /// A group is known by its address, until the bar says again which it has.
  struct TPlace {
    const TKK5SkinExplorerGroup* Group;
    TExplorerGroupView* View;
  };

  TExplorerGroupView* ViewOf(const TKK5SkinExplorerGroup& iGroup);
  TKK5SkinExplorerGroup* FindGroup(const TKK5SkinExplorerGroup* iGroup) const;
  void ClickLink(const TKK5SkinExplorerGroup* iGroup, const IExplorerBarItem* iItem);

  QWidget* FColumn;      // the view's
  QVBoxLayout* FLayout;  // the column's
  std::vector<TPlace> FPlaces;
  std::vector<QWidget*> FFocusParts;
};

}  // namespace kk
