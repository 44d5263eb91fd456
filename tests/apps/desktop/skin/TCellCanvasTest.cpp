#include "apps/desktop/skin/TCellCanvas.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QImage>

#include "tests/support/qt/OffscreenQt.h"

namespace kk {
namespace {

// A white cell of 100 by 20 on a screen with twice as many pixels.
class TCanvasWorld {
 public:
  TCanvasWorld() {
    FImage.setDevicePixelRatio(2);
    FImage.fill(Qt::white);
    FOption.rect = {0, 0, 100, 20};
    FOption.state = QStyle::State_Enabled | QStyle::State_Active;
    FOption.palette.setColor(QPalette::Text, Qt::red);
    FOption.palette.setColor(QPalette::HighlightedText, Qt::blue);
    FOption.fontMetrics = QFontMetrics(FOption.font);
  }
  template <class Function>
  void Paint(const Function& iFunction) {
    QPainter painter(&FImage);
    TCellCanvas canvas(painter, FOption);
    iFunction(canvas);
  }
  void Select() { FOption.state |= QStyle::State_Selected; }
  // Where something was painted, in pixels of the screen.
  QRect Painted() const {
    QRect painted;
    for (int y = 0; y < FImage.height(); ++y) {
      for (int x = 0; x < FImage.width(); ++x) {
        if (FImage.pixelColor(x, y) != Qt::white) painted |= QRect(x, y, 1, 1);
      }
    }
    return painted;
  }
  bool HasPixel(const QColor& iColor) const {
    for (int y = 0; y < FImage.height(); ++y) {
      for (int x = 0; x < FImage.width(); ++x) {
        const QColor pixel = FImage.pixelColor(x, y);
        if (pixel == iColor) return true;
      }
    }
    return false;
  }

 private:
  bool FHasQt = (NeedQt(), true);  // before the rest
  QImage FImage{200, 40, QImage::Format_RGB32};
  QStyleOptionViewItem FOption;
};

TEST(TCellCanvas, DrawsTextInTheColoursOfTheRow) {
  TCanvasWorld plain;
  plain.Paint([](TCellCanvas& ioCanvas) {
    ioCanvas.SetRowColors();
    ioCanvas.DrawText({0, 0, 100, 20}, u"HHH");
  });
  EXPECT_TRUE(plain.HasPixel(Qt::red));
  TCanvasWorld selected;
  selected.Select();
  selected.Paint([](TCellCanvas& ioCanvas) {
    ioCanvas.SetRowColors();
    ioCanvas.DrawText({0, 0, 100, 20}, u"HHH");
  });
  EXPECT_TRUE(selected.HasPixel(Qt::blue));
  EXPECT_FALSE(selected.HasPixel(Qt::red));
}

TEST(TCellCanvas, CutsTextOffAtTheEndOfItsRectangle) {
  TCanvasWorld world;
  world.Paint([](TCellCanvas& ioCanvas) {
    ioCanvas.DrawText({10, 0, 60, 20}, u"Eine Bezeichnung, die\nsehr lang ist");
  });
  EXPECT_GE(world.Painted().left(), 20);
  EXPECT_LE(world.Painted().right(), 120);
  EXPECT_GT(world.Painted().width(), 60);
}

TEST(TCellCanvas, FillsTheRectangleWithTheImageAtTheScaleOfTheScreen) {
  TCanvasWorld world;
  world.Paint([](TCellCanvas& ioCanvas) {
    EXPECT_EQ(ioCanvas.GetBitmapSize({u"SOURCE_PAGE"}), (TSize{16, 16}));
    EXPECT_EQ(ioCanvas.GetBitmapSize({u"gibt es nicht"}), TSize{});
    ioCanvas.DrawBitmap({40, 2, 56, 18}, {u"SOURCE_PAGE"});
  });
  const QRect painted = world.Painted();
  EXPECT_TRUE(QRect(80, 4, 32, 32).contains(painted));
  EXPECT_GT(painted.width(), 24);
}

TEST(TCellCanvas, PaintsNothingForAnUnknownImageOrNoRoom) {
  TCanvasWorld world;
  world.Paint([](TCellCanvas& ioCanvas) {
    ioCanvas.DrawBitmap({0, 0, 16, 16}, {u"gibt es nicht"});
    ioCanvas.DrawBitmap({5, 5, 5, 5}, {u"SOURCE_PAGE"});
    ioCanvas.DrawText({5, 5, 6, 25}, u"");
  });
  EXPECT_TRUE(world.Painted().isEmpty());
}

}  // namespace
}  // namespace kk
