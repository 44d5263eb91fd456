#pragma once

#include <QMenu>
#include <QSystemTrayIcon>
#include <functional>

namespace kk {

/// The program's icon in the tray, on desktops that have one: a click shows or hides the window,
/// its menu does that and ends the program. Main thread.
class TTrayIcon {
 public:
  /// It is not seen before Show.
  TTrayIcon();
  virtual ~TTrayIcon() = default;
  TTrayIcon(const TTrayIcon&) = delete;
  TTrayIcon& operator=(const TTrayIcon&) = delete;

  /// Whether the desktop has a tray now. Without one the program never hides its window.
  virtual bool IsAvailable() const { return QSystemTrayIcon::isSystemTrayAvailable(); }
  /// Puts it into the tray, as soon as there is one.
  void Show() { FIcon.show(); }
  void Hide() { FIcon.hide(); }
  /// What a click does next.
  void SetWindowIsShown(bool iShown);

  void SetOnToggle(std::function<void()> iEvent) { FOnToggle = std::move(iEvent); }
  void SetOnQuit(std::function<void()> iEvent) { FOnQuit = std::move(iEvent); }

  QMenu& Menu() { return FMenu; }

 private:
  QMenu FMenu;
  QSystemTrayIcon FIcon;
  QAction* FToggle;  // the menu's
  std::function<void()> FOnToggle;
  std::function<void()> FOnQuit;
};

}  // namespace kk
