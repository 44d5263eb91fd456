#pragma once

#include <QMenu>
#include <map>
#include <vector>

#include "host/controls/TMenuItem.h"

namespace kk {

/// A menu on the screen: made for one opening from the entries as they are at that moment, and gone
/// when it has closed and the click that closed it is over. A click goes to the entry's user's
/// door. An entry that dies while the menu stands, perhaps in its own click, takes no more clicks.
/// Main thread.
class TPopupMenu final : public QMenu, private IControlObserver {
 public:
  /// Shows the entries of a menu, or these, and returns at once; nothing if there are none. The
  /// parent owns it. The control's own door comes first (OpenPopupMenu, OpenChevronMenu), which
  /// fills the menu.
  static void Open(QWidget& ioParent, const TMenuItem& iMenu, const QPoint& iGlobalPos);
  static void Open(QWidget& ioParent, const std::vector<TMenuItem*>& iEntries,
                   const QPoint& iGlobalPos);

  /// Not shown yet.
  TPopupMenu(QWidget& ioParent, const std::vector<TMenuItem*>& iEntries);
  ~TPopupMenu() override;

 private:
  void ControlChanged(TControl& iControl) override;
  void ControlGone(TControl& iControl) override;
  void hideEvent(QHideEvent* iEvent) override;
  void Release();
  void Click(TMenuItem& ioEntry);
  void DieUnlessClicking();
  void Fill(QMenu& ioMenu, const std::vector<TMenuItem*>& iEntries);
  QAction& Add(QMenu& ioMenu, TMenuItem& iEntry);
  QString CaptionOf(const TMenuItem& iEntry) const;

  std::vector<TMenuItem*> FEntries;  // those that live, while it observes them
  std::map<const TControl*, QAction*> FActions;
  bool FIsClicking = false;
  bool FDiesAfterClick = false;
};

}  // namespace kk
