#include "apps/desktop/skin/TDrawings.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QApplication>
#include <QDir>
#include <QImage>
#include <QPainter>
#include <QSvgRenderer>
#include <filesystem>
#include <fstream>
#include <regex>
#include <set>
#include <sstream>

#include "apps/desktop/skin/QtText.h"
#include "apps/desktop/skin/TDrawingColors.h"
#include "apps/desktop/skin/TTheme.h"
#include "tests/support/TLogRecorder.h"
#include "tests/support/qt/OffscreenQt.h"

namespace kk {
namespace {

const std::filesystem::path cRoot = std::filesystem::path(KK_TEST_SOURCE_DIR).parent_path();

// The names of resources in the sources of the programs and their plug-ins: constants whose name
// tells of an image, and what a TBitmap is made of.
std::set<std::string> NamesInTheSources() {
  const std::regex constant(R"(\bc\w*(?:Image|Bitmap|Drawing)\w*(?:\[\])?\s*=\s*u"([^"]+)\")");
  const std::regex bitmap(
      R"((?:TBitmap|ResourceName|Icon|Pixmap|Image|Picture)\w*\s*[({]+\s*u"([A-Z][A-Z0-9_]{3,})\")");
  std::set<std::string> names;
  for (const char* folder : {"plugin", "model", "views", "reminders", "settings", "persistence",
                             "updating", "sources", "host", "apps"}) {
    for (const auto& entry : std::filesystem::recursive_directory_iterator(cRoot / folder)) {
      const auto kind = entry.path().extension();
      if (kind != ".h" && kind != ".cpp") continue;
      std::stringstream text;
      text << std::ifstream(entry.path()).rdbuf();
      const std::string source = text.str();
      for (const std::regex& pattern : {constant, bitmap}) {
        for (std::sregex_iterator at(source.begin(), source.end(), pattern), end; at != end; ++at)
          names.insert((*at)[1]);
      }
    }
  }
  return names;
}

std::set<std::string> NamesOfTheDrawings() {
  std::set<std::string> names;
  for (const QString& file : QDir(QStringLiteral(":/drawings")).entryList())
    names.insert(file.chopped(4).toStdString());
  return names;
}

TBitmap Named(const std::string& iName) { return {FromUtf8(iName)}; }

// How many of the pixels can be told from the ground.
int SeenPixels(const QPixmap& iPixmap, const QColor& iGround) {
  QImage image(iPixmap.size(), QImage::Format_RGB32);
  image.fill(iGround);
  QPixmap plain = iPixmap;
  plain.setDevicePixelRatio(1);
  QPainter(&image).drawPixmap(0, 0, plain);
  int count = 0;
  for (int y = 0; y < image.height(); ++y) {
    for (int x = 0; x < image.width(); ++x)
      count += TDrawingColors::Contrast(image.pixelColor(x, y), iGround) >= 3 ? 1 : 0;
  }
  return count;
}

class TDrawingsTest : public testing::Test {
 protected:
  TDrawingsTest() { NeedQt(); }
  ~TDrawingsTest() override { QApplication::setPalette(QPalette()); }
};

TEST_F(TDrawingsTest, EveryNameInTheSourcesHasOne) {
  const auto drawings = NamesOfTheDrawings();
  const auto names = NamesInTheSources();
  // Those of the section, the navigation and the source are found at all.
  EXPECT_GE(names.size(), 20U);
  EXPECT_EQ(names.count("WATCHLISTTOOLBARBUTTONIMAGESELECTED"), 1U);
  EXPECT_EQ(names.count("REMINDIMAGEEMAIL"), 1U);
  EXPECT_EQ(names.count("SOURCE_PAGE"), 1U);
  for (const std::string& name : names) EXPECT_EQ(drawings.count(name), 1U) << name;
}

TEST_F(TDrawingsTest, EachIsSeenInBothThemesAtEverySizeAndScale) {
  for (const QPalette& palette : {TTheme::LightPalette(), TTheme::DarkPalette()}) {
    QApplication::setPalette(palette);
    for (const std::string& name : NamesOfTheDrawings()) {
      for (const int side : {16, 24, 32, 48}) {
        for (const qreal ratio : {1.0, 2.0}) {
          const QPixmap pixmap = TDrawings::Pixmap(Named(name), {side, side}, ratio);
          const int pixels = static_cast<int>(side * ratio);
          ASSERT_EQ(pixmap.size(), QSize(pixels, pixels)) << name;
          EXPECT_EQ(pixmap.devicePixelRatio(), ratio);
          const QColor ground = palette.color(QPalette::Base);
          EXPECT_GE(SeenPixels(pixmap, ground), pixels * pixels / 25) << name << " " << pixels;
        }
      }
    }
  }
}

TEST_F(TDrawingsTest, EachIsASquareSvgThatUsesTheSharedColoursAlone) {
  const std::regex color("#[0-9A-Fa-f]{3,8}\\b");
  for (const std::string& name : NamesOfTheDrawings()) {
    QFile file(QStringLiteral(":/drawings/%1.svg").arg(QString::fromStdString(name)));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly)) << name;
    const QByteArray text = file.readAll();
    const QSvgRenderer svg(text);
    ASSERT_TRUE(svg.isValid()) << name;
    EXPECT_EQ(svg.defaultSize().width(), svg.defaultSize().height()) << name;
    EXPECT_EQ(svg.viewBox().size(), svg.defaultSize()) << name;
    EXPECT_EQ(TDrawings::NaturalSize(Named(name)), svg.defaultSize()) << name;
    if (name == "KAUFKOBOLDE") continue;  // the program's own icon has its own
    const std::string source = text.toStdString();
    for (std::sregex_iterator at(source.begin(), source.end(), color), end; at != end; ++at)
      EXPECT_THAT(TDrawingColors::cNames, testing::Contains(testing::StrEq(at->str()))) << name;
  }
}

TEST_F(TDrawingsTest, WithoutANameIsNoImageAndNoWord) {
  const TLogRecorder log;
  EXPECT_TRUE(TDrawings::Icon({}).isNull());
  EXPECT_TRUE(TDrawings::Pixmap({}, {16, 16}, 1).isNull());
  EXPECT_EQ(TDrawings::NaturalSize({}), QSize(0, 0));
  EXPECT_TRUE(log.Lines().empty());
}

TEST_F(TDrawingsTest, AnUnknownNameIsNoImageAndOneLineInTheLog) {
  const TLogRecorder log;
  const TBitmap bitmap{u"NOSUCHDRAWING"};
  EXPECT_TRUE(TDrawings::Icon(bitmap).isNull());
  EXPECT_TRUE(TDrawings::Pixmap(bitmap, {16, 16}, 1).isNull());
  EXPECT_EQ(TDrawings::NaturalSize(bitmap), QSize(0, 0));
  EXPECT_THAT(log.Lines(), testing::ElementsAre(
                               "error Host: Zum Bild \"NOSUCHDRAWING\" gibt es keine Zeichnung."));
}

TEST_F(TDrawingsTest, ANameIsNoPathToOtherFiles) {
  EXPECT_TRUE(TDrawings::Icon({u"../drawings/CATEGORYOPEN"}).isNull());
  EXPECT_TRUE(TDrawings::Icon({u"categoryopen"}).isNull());
}

TEST_F(TDrawingsTest, NothingIsDrawnIntoNoSize) {
  EXPECT_TRUE(TDrawings::Pixmap({u"CATEGORYOPEN"}, {0, 16}, 1).isNull());
  EXPECT_TRUE(TDrawings::Pixmap({u"CATEGORYOPEN"}, {-1, -1}, 2).isNull());
  EXPECT_TRUE(TDrawings::Pixmap({u"CATEGORYOPEN"}, {16, 16}, 0).isNull());
}

TEST_F(TDrawingsTest, ASizeBeyondAnyScreenIsBounded) {
  const QPixmap pixmap = TDrawings::Pixmap({u"CATEGORYOPEN"}, {1000000000, 1000000000}, 8);
  EXPECT_EQ(pixmap.size(), QSize(1024, 1024));
}

TEST_F(TDrawingsTest, APictureStandsInTheMiddleAndKeepsItsShape) {
  const QImage image = TDrawings::Pixmap({u"ADDITIONALCOLUMNYES"}, {48, 16}, 1).toImage();
  EXPECT_EQ(image.size(), QSize(48, 16));
  EXPECT_EQ(image.pixelColor(8, 8).alpha(), 0);
  EXPECT_GT(image.pixelColor(24, 2).alpha(), 0);
  EXPECT_EQ(image.pixelColor(40, 8).alpha(), 0);
}

TEST_F(TDrawingsTest, TakesTheColoursOfThePaletteAtTheTime) {
  QPalette palette = TTheme::LightPalette();
  palette.setColor(QPalette::WindowText, QColor(0x40, 0, 0));
  QApplication::setPalette(palette);
  const TBitmap bitmap{u"KAUFKOBOLDESYMBOLIC"};
  const QIcon icon = TDrawings::Icon(bitmap);
  EXPECT_EQ(icon.pixmap({32, 32}).toImage().pixelColor(16, 14), QColor(0x40, 0, 0));
  palette.setColor(QPalette::WindowText, QColor(0, 0x40, 0));
  QApplication::setPalette(palette);
  EXPECT_EQ(TDrawings::Pixmap(bitmap, {32, 32}, 1).toImage().pixelColor(16, 14),
            QColor(0, 0x40, 0));
  EXPECT_EQ(icon.pixmap({32, 32}).toImage().pixelColor(16, 14), QColor(0, 0x40, 0));
}

TEST_F(TDrawingsTest, HasTheColoursOfSelectedAndOfDisabledText) {
  const QPalette palette = TTheme::LightPalette();
  QApplication::setPalette(palette);
  const QIcon icon = TDrawings::Icon({u"KAUFKOBOLDESYMBOLIC"});
  EXPECT_EQ(icon.pixmap({32, 32}, QIcon::Selected).toImage().pixelColor(16, 14),
            palette.color(QPalette::HighlightedText));
  EXPECT_EQ(icon.pixmap({32, 32}, QIcon::Disabled).toImage().pixelColor(16, 14),
            palette.color(QPalette::Disabled, QPalette::WindowText));
}

TEST_F(TDrawingsTest, AnIconRendersEachScaleAnewAndNeverStretches) {
  const QIcon icon = TDrawings::Icon({u"CATEGORYCLOSED"});
  for (const qreal ratio : {1.0, 1.25, 1.5, 2.0}) {
    const QPixmap pixmap = icon.pixmap({16, 16}, ratio);
    EXPECT_EQ(pixmap.size(), (QSizeF(16, 16) * ratio).toSize());
    EXPECT_EQ(pixmap.devicePixelRatio(), ratio);
  }
  QImage screen(32, 32, QImage::Format_ARGB32);
  screen.setDevicePixelRatio(2);
  screen.fill(Qt::transparent);
  QPainter painter(&screen);
  icon.paint(&painter, 0, 0, 16, 16);
  painter.end();
  screen.setDevicePixelRatio(1);
  const QImage sharp = icon.pixmap({16, 16}, 2).toImage().convertToFormat(QImage::Format_ARGB32);
  EXPECT_EQ(screen.pixelColor(8, 16), sharp.pixelColor(8, 16));
  EXPECT_EQ(screen.pixelColor(3, 8), sharp.pixelColor(3, 8));
}

TEST_F(TDrawingsTest, ACopyOfAnIconDrawsTheSame) {
  QIcon icon = TDrawings::Icon({u"CATEGORYCLOSED"});
  QIcon copy = icon;
  copy.addPixmap(QPixmap(1, 1));  // the copy becomes one of its own
  EXPECT_EQ(copy.pixmap({16, 16}).toImage(), icon.pixmap({16, 16}).toImage());
}

TEST_F(TDrawingsTest, TheProgramsIconHasTheSizesThatWindowManagersTake) {
  const QIcon icon = TDrawings::ProgramIcon();
  EXPECT_THAT(icon.availableSizes(),
              testing::IsSupersetOf({QSize(16, 16), QSize(48, 48), QSize(128, 128)}));
  EXPECT_EQ(icon.pixmap({64, 64}).toImage().pixelColor(32, 56), QColor(0x4F, 0xB0, 0x6F));
}

TEST(TDrawingColors, ContrastIsThatOfTheGuidelines) {
  EXPECT_DOUBLE_EQ(TDrawingColors::Contrast(Qt::black, Qt::white), 21);
  EXPECT_DOUBLE_EQ(TDrawingColors::Contrast(Qt::white, Qt::white), 1);
  EXPECT_NEAR(TDrawingColors::Contrast(QColor("#777777"), Qt::white), 4.48, 0.005);
}

TEST(TDrawingColors, AnAccentTooCloseToTheGroundMovesTowardsTheText) {
  QPalette palette = TTheme::LightPalette();
  palette.setColor(QPalette::Highlight, QColor("#ffff80"));
  const TDrawingColors colors(palette, QIcon::Normal);
  const QColor accent(QString::fromLatin1(colors.Apply("#2f6fb5")));
  EXPECT_GE(TDrawingColors::Contrast(accent, palette.color(QPalette::Base)), 4.5);
  EXPECT_NE(accent, palette.color(QPalette::WindowText));
}

TEST(TDrawingColors, AColourIsNotReplacedTwice) {
  QPalette palette = TTheme::LightPalette();
  palette.setColor(QPalette::WindowText, QColor("#ffffff"));  // as the files write the ground
  palette.setColor(QPalette::Base, QColor("#102030"));
  const TDrawingColors colors(palette, QIcon::Normal);
  EXPECT_EQ(colors.Apply("a #2e3440 b #ffffff c #123456 d #"),
            QByteArray("a #ffffff b #102030 c #123456 d #"));
}

}  // namespace
}  // namespace kk
