#include "apps/desktop/shell/TTerminalCalls.h"

#include <QApplication>
#include <QMessageBox>
#include <QPushButton>
#include <QTimer>

#include "apps/desktop/skin/QtText.h"

namespace kk {
namespace {

constexpr int cFailed = 1;

}  // namespace

TTerminalCalls::TTerminalCalls(THostPlugins& ioPlugins, QWidget& ioWindow)
    : FCalls(ioPlugins), FWindow(&ioWindow) {}

TTerminalCalls::~TTerminalCalls() {
  for (const auto& caller : FCallers) {
    caller->Complain(u"Fehler: Kaufkobolde wird gerade beendet.");
    caller->SendExit(cFailed);
  }
}

void TTerminalCalls::AnswerAll() {
  while (!FCallers.empty() && !IsAnswering() && QApplication::activeModalWidget() == nullptr) {
    const auto caller = std::move(FCallers.front());
    FCallers.pop_front();
    Answer(*caller);
  }
}

void TTerminalCalls::Answer(THostPeer& ioPeer) {
  QMessageBox busy(QMessageBox::Information, ToQt(u"Kaufkobolde"),
                   ToQt(u"Ein Aufruf von kaufkobolde-cli arbeitet gerade mit der "
                        u"Beobachtenliste."),
                   QMessageBox::NoButton, FWindow);
  busy.addButton(ToQt(u"&Abbrechen"), QMessageBox::RejectRole);
  busy.setWindowModality(Qt::ApplicationModal);
  QObject::connect(&busy, &QMessageBox::finished, &busy, [this] { FCalls.Interrupt(); });
  // A command that doesn't wait never turns the loop, and the dialog never shows.
  QTimer::singleShot(0, &busy, [&busy] { busy.show(); });
  FCalls.Answer(ioPeer);
}

}  // namespace kk
