#pragma once

#include <QPalette>
#include <memory>
#include <string>

namespace kk {

class TColorScheme;

/// What the colours follow.
enum class TThemeChoice { tcSystem, tcLight, tcDark };

/// The colours of the program, light or dark, while it lives. By tcSystem those of the desktop:
/// where its platform theme gives none that are dark although the desktop's setting asks for them
/// (org.freedesktop.appearance, over the session bus), ours are taken. A change of the setting
/// shows at once. Make it after the QApplication and before the first window. Main thread.
class TTheme {
 public:
  /// iBusAddress: of the session bus; empty is the environment's. Waits up to 150 ms for the
  /// desktop's answer, and goes on without one; a later answer changes the colours then.
  explicit TTheme(TThemeChoice iChoice, const std::string& iBusAddress = {});
  /// The desktop's own colours come back.
  ~TTheme();
  TTheme(const TTheme&) = delete;
  TTheme& operator=(const TTheme&) = delete;

  /// The ground of the application's palette is darker than its text.
  static bool IsDark();

  static QPalette LightPalette();
  static QPalette DarkPalette();

 private:
  void Follow(bool iDark);
  void Take(const QPalette& iPalette);
  void GiveBack();

  bool FIsOurs = false;  // the application's palette is one of the two here
  std::unique_ptr<TColorScheme> FScheme;
};

}  // namespace kk
