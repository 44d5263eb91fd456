#include "apps/desktop/shell/TTrayIcon.h"

#include "apps/desktop/skin/AsUser.h"
#include "apps/desktop/skin/QtText.h"
#include "apps/desktop/skin/TDrawings.h"

namespace kk {
namespace {

void Raise(const std::function<void()>& iEvent) {
  if (iEvent) AsUser(iEvent);
}

}  // namespace

TTrayIcon::TTrayIcon() : FToggle(FMenu.addAction(QString())) {
  QAction* const quit = FMenu.addAction(ToQt(u"&Beenden"));
  QObject::connect(FToggle, &QAction::triggered, &FIcon, [this] { Raise(FOnToggle); });
  QObject::connect(quit, &QAction::triggered, &FIcon, [this] { Raise(FOnQuit); });
  QObject::connect(&FIcon, &QSystemTrayIcon::activated, &FIcon,
                   [this](QSystemTrayIcon::ActivationReason iReason) {
                     if (iReason == QSystemTrayIcon::Trigger) Raise(FOnToggle);
                   });
  FIcon.setContextMenu(&FMenu);
  FIcon.setIcon(TDrawings::ProgramIcon());
  FIcon.setToolTip(ToQt(u"Kaufkobolde"));
  SetWindowIsShown(true);
}

void TTrayIcon::SetWindowIsShown(bool iShown) {
  FToggle->setText(iShown ? ToQt(u"Fenster &verbergen") : ToQt(u"Fenster &zeigen"));
}

}  // namespace kk
