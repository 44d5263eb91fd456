#pragma once

#include <QApplication>
#include <QMenu>
#include <QTest>
#include <string>
#include <vector>

#include "apps/desktop/skin/TBinder.h"
#include "apps/desktop/skin/TSkin.h"
#include "host/controls/TForm.h"
#include "tests/support/qt/OffscreenQt.h"

namespace kk {

/// A form with its skin on the screen, for controls that a test puts into it.
class TShownWindow : public TForm {
 public:
  TShownWindow() : TForm((NeedQt(), nullptr), u"TShownWindow", u"Fenster") {}

  /// Makes the widgets and shows them.
  void ShowSkin(QSize iSize = {500, 400}) {
    Show();
    FSkin = std::make_unique<TSkin>(*this);
    FSkin->Widget()->resize(iSize);
    FSkin->Widget()->show();
    CrankUntil([this] { return FSkin->Widget()->isVisible(); });
    QApplication::setActiveWindow(FSkin->Widget());
    QCoreApplication::processEvents();
  }
  /// The turn of the loop ends.
  void Turn() {
    FSkin->Flush();
    QCoreApplication::processEvents();
  }
  TSkin& Skin() { return *FSkin; }
  void DropSkin() { FSkin.reset(); }
  /// The control's widget.
  template <class Widget>
  Widget& WidgetOf(TControl& ioControl) {
    return dynamic_cast<Widget&>(*FSkin->WidgetOf(ioControl));
  }
  /// A child of the control's widget.
  template <class Widget>
  Widget& ChildOf(TControl& ioControl) {
    return *FSkin->WidgetOf(ioControl)->template findChild<Widget*>();
  }

 private:
  std::unique_ptr<TSkin> FSkin;
};

/// The menu that stands open; null if there is none.
inline QMenu* OpenMenu() { return dynamic_cast<QMenu*>(QApplication::activePopupWidget()); }

/// What the logic hears, one line an event.
class TNotebook {
 public:
  void Note(const std::string& iWhat) { FNotes.push_back(iWhat); }
  std::vector<std::string> Take() { return std::exchange(FNotes, {}); }

 private:
  std::vector<std::string> FNotes;
};

using TNotes = std::vector<std::string>;

}  // namespace kk
