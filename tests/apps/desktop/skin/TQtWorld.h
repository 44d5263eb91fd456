#pragma once

#include <gtest/gtest.h>

#include <QApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QWidget>

#include "apps/desktop/skin/QtText.h"
#include "apps/desktop/skin/TBinder.h"
#include "apps/desktop/skin/TQtMainLoop.h"
#include "apps/desktop/skin/TSkin.h"
#include "host/base/TInstalled.h"
#include "host/controls/TForm.h"
#include "tests/support/TLogRecorder.h"
#include "tests/support/qt/OffscreenQt.h"

namespace kk {

/// What a test needs to drive widgets as a user does: Qt on a screen that is none, its loop as the
/// main loop, and the log.
class TQtWorld : public testing::Test {
 protected:
  TQtWorld() { NeedQt(); }
  ~TQtWorld() override { FreeDropped(); }

  /// What widgets have left for a later turn goes now.
  static void FreeDropped() { QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete); }
  static void Key(QWidget& ioWidget, int iKey, Qt::KeyboardModifiers iModifiers = Qt::NoModifier,
                  const QString& iText = {}, bool iHeld = false) {
    const QPointer<QWidget> widget(&ioWidget);
    QKeyEvent press(QEvent::KeyPress, iKey, iModifiers, iText, iHeld);
    QApplication::sendEvent(widget, &press);
    if (!widget) return;
    QKeyEvent release(QEvent::KeyRelease, iKey, iModifiers, iText, iHeld);
    QApplication::sendEvent(widget, &release);
  }
  static void Type(QWidget& ioWidget, const QString& iText) {
    for (const QChar letter : iText) Key(ioWidget, letter.toUpper().unicode(), {}, letter);
  }
  static void Mouse(QWidget& ioWidget, QEvent::Type iType, const QPoint& iAt) {
    const bool isMove = iType == QEvent::MouseMove;
    const Qt::MouseButtons held =
        iType == QEvent::MouseButtonRelease ? Qt::NoButton : Qt::LeftButton;
    QMouseEvent event(iType, iAt, ioWidget.mapToGlobal(iAt), isMove ? Qt::NoButton : Qt::LeftButton,
                      held, Qt::NoModifier);
    QApplication::sendEvent(&ioWidget, &event);
  }
  static void ClickAt(QWidget& ioWidget, const QPoint& iAt) {
    const QPointer<QWidget> widget(&ioWidget);
    Mouse(ioWidget, QEvent::MouseButtonPress, iAt);
    if (widget) Mouse(ioWidget, QEvent::MouseButtonRelease, iAt);
  }

  TLogRecorder FLog;
  TQtMainLoop FLoop;
  TInstalled<TMainLoop> FInstalledLoop{&SetMainLoop, &FLoop};
};

/// A form that stands on the screen, with the widgets of its controls.
class TShownForm {
 public:
  explicit TShownForm(TForm& ioForm) : FSkin(ioForm) {
    ioForm.Show();
    FSkin.Flush();
    FSkin.Widget()->show();
    FSkin.Widget()->activateWindow();
    CrankUntil([this] { return FSkin.Widget()->isActiveWindow(); });
    FSkin.Flush();
  }

  TSkin& Skin() { return FSkin; }
  template <class Widget>
  Widget& Of(TControl& ioControl) {
    FSkin.Flush();
    return dynamic_cast<Widget&>(*FSkin.WidgetOf(ioControl));
  }

 private:
  TSkin FSkin;
};

}  // namespace kk
