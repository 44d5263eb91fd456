#include "apps/desktop/skin/TTheme.h"

#include <QApplication>
#include <QStyle>
#include <QToolTip>
#include <utility>

#include "apps/desktop/skin/QtOwned.h"
#include "apps/desktop/skin/TColorScheme.h"
#include "apps/desktop/skin/TOutlineStyle.h"

namespace kk {
namespace {

constexpr std::chrono::milliseconds cWait{150};

// The colours that differ; all others of a palette are made from the button's and the window's.
struct TColors {
  QRgb Window, Base, AlternateBase, Button, Text, DisabledText, Highlight, Link, Hint;
};

constexpr TColors cLight = {0xFFF3F4F6, 0xFFFFFFFF, 0xFFF7F8FA, 0xFFEDEFF2, 0xFF1F2328,
                            0xFF8A9099, 0xFF2F6FB5, 0xFF1A5FA8, 0xFFFFFFE6};
constexpr TColors cDark = {0xFF2B2D31, 0xFF1E2023, 0xFF25272B, 0xFF393C41, 0xFFE6E8EB,
                           0xFF7D838C, 0xFF3472BD, 0xFF7FB4F0, 0xFF3F4248};

QPalette PaletteOf(const TColors& iColors) {
  using enum QPalette::ColorRole;
  QPalette palette(QColor(iColors.Button), QColor(iColors.Window));
  const QColor text(iColors.Text);
  for (const auto role : {WindowText, QPalette::Text, ButtonText, ToolTipText})
    palette.setColor(role, text);
  palette.setColor(Base, iColors.Base);
  palette.setColor(AlternateBase, iColors.AlternateBase);
  palette.setColor(ToolTipBase, iColors.Hint);
  palette.setColor(Highlight, iColors.Highlight);
  palette.setColor(HighlightedText, Qt::white);
  palette.setColor(Link, iColors.Link);
  palette.setColor(LinkVisited, iColors.Link);
  palette.setColor(PlaceholderText, iColors.DisabledText);
  for (const auto role : {WindowText, QPalette::Text, ButtonText, HighlightedText})
    palette.setColor(QPalette::Disabled, role, iColors.DisabledText);
  palette.setColor(QPalette::Disabled, Base, iColors.Window);
  palette.setColor(QPalette::Disabled, Highlight, iColors.Button);
  return palette;
}

void Show(const QPalette& iPalette) {
  QApplication::setPalette(iPalette);
  QToolTip::setPalette(QApplication::palette());
}

}  // namespace

TTheme::TTheme(TThemeChoice iChoice, const std::string& iBusAddress) {
  // A desktop's own style knows best.
  if (QApplication::style()->name() == QStringLiteral("fusion"))
    QApplication::setStyle(QtOwned<TOutlineStyle>());
  if (iChoice != TThemeChoice::tcSystem) {
    Take(iChoice == TThemeChoice::tcDark ? DarkPalette() : LightPalette());
    return;
  }
  FScheme = std::make_unique<TColorScheme>(iBusAddress, [this](bool iDark) { Follow(iDark); });
  FScheme->Wait(cWait);
}

TTheme::~TTheme() { GiveBack(); }

void TTheme::Follow(bool iDark) {
  if (!iDark) return GiveBack();
  if (!IsDark()) Take(DarkPalette());
}

void TTheme::Take(const QPalette& iPalette) {
  FIsOurs = true;
  Show(iPalette);
}

// Qt's default palette is what the platform theme gives.
void TTheme::GiveBack() {
  if (!std::exchange(FIsOurs, false)) return;
  Show(QPalette());
}

bool TTheme::IsDark() {
  const QPalette palette = QGuiApplication::palette();
  return palette.color(QPalette::Window).lightness() <
         palette.color(QPalette::WindowText).lightness();
}

QPalette TTheme::LightPalette() { return PaletteOf(cLight); }

QPalette TTheme::DarkPalette() { return PaletteOf(cDark); }

}  // namespace kk
