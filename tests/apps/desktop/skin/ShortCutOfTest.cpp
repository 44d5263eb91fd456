#include "apps/desktop/skin/ShortCutOf.h"

#include <gtest/gtest.h>

#include <QKeyEvent>

namespace kk {
namespace {

TString KeysOf(int iKey, Qt::KeyboardModifiers iModifiers = {}) {
  return ShortCutOf(QKeyEvent(QEvent::KeyPress, iKey, iModifiers));
}

TEST(ShortCutOf, WritesKeysAsMenusDo) {
  EXPECT_EQ(KeysOf(Qt::Key_F2), u"F2");
  EXPECT_EQ(KeysOf(Qt::Key_Delete), u"Del");
  EXPECT_EQ(KeysOf(Qt::Key_Delete, Qt::ShiftModifier | Qt::ControlModifier), u"Shift+Ctrl+Del");
  EXPECT_EQ(KeysOf(Qt::Key_F, Qt::ControlModifier), u"Ctrl+F");
  EXPECT_EQ(KeysOf(Qt::Key_F, Qt::AltModifier), u"Alt+F");
}

TEST(ShortCutOf, LeavesAloneWhatWritesOrMovesAbout) {
  EXPECT_EQ(KeysOf(Qt::Key_F), u"");
  EXPECT_EQ(KeysOf(Qt::Key_Down), u"");
  EXPECT_EQ(KeysOf(Qt::Key_Return), u"");
  EXPECT_EQ(KeysOf(Qt::Key_Control, Qt::ControlModifier), u"");
  EXPECT_EQ(KeysOf(Qt::Key_Alt, Qt::AltModifier), u"");
  EXPECT_EQ(KeysOf(Qt::Key_unknown, Qt::ControlModifier), u"");
}

}  // namespace
}  // namespace kk
