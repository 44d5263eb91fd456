#include "apps/desktop/skin/ShortCutOf.h"

#include <QKeyEvent>
#include <QKeySequence>

#include "apps/desktop/skin/QtText.h"

namespace kk {

TString ShortCutOf(const QKeyEvent& iEvent) {
  const int key = iEvent.key();
  const Qt::KeyboardModifiers modifiers = iEvent.modifiers();
  const bool stands = (key >= Qt::Key_F1 && key <= Qt::Key_F35) || key == Qt::Key_Delete ||
                      key == Qt::Key_Insert || key == Qt::Key_Backspace;
  const bool isModified = modifiers & (Qt::ControlModifier | Qt::AltModifier);
  const bool isKey =
      key > 0 && key != Qt::Key_unknown && (key < Qt::Key_Shift || key > Qt::Key_ScrollLock);
  if (!isKey || (!stands && !isModified)) return {};
  QString text;
  if (modifiers.testFlag(Qt::ShiftModifier)) text += QStringLiteral("Shift+");
  if (modifiers.testFlag(Qt::ControlModifier)) text += QStringLiteral("Ctrl+");
  if (modifiers.testFlag(Qt::AltModifier)) text += QStringLiteral("Alt+");
  return FromQt(text + QKeySequence(key).toString(QKeySequence::PortableText));
}

}  // namespace kk
