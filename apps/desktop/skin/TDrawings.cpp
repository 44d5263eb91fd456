#include "apps/desktop/skin/TDrawings.h"

#include <QFile>
#include <QGuiApplication>
#include <QHash>
#include <QIconEngine>
#include <QPainter>
#include <QPixmapCache>
#include <QSvgRenderer>
#include <algorithm>

#include "apps/desktop/skin/QtOwned.h"
#include "apps/desktop/skin/QtText.h"
#include "apps/desktop/skin/TDrawingColors.h"
#include "host/base/Log.h"

namespace kk {
namespace {

// No picture of the program is larger; a size beyond any screen must not take the memory.
constexpr int cMaxSide = 1024;

struct TDrawing {
  QByteArray Text;  // empty: there is none
  QSize Size;
};

QSize Bounded(const QSize& iSize) { return iSize.boundedTo({cMaxSide, cMaxSide}); }

bool IsName(const TString& iName) {
  return std::all_of(iName.begin(), iName.end(), [](char16_t iChar) {
    return (iChar >= u'A' && iChar <= u'Z') || (iChar >= u'0' && iChar <= u'9') || iChar == u'_';
  });
}

TDrawing Load(const TString& iName) {
  QFile file(QStringLiteral(":/drawings/%1.svg").arg(ToQt(iName)));
  if (!IsName(iName) || !file.open(QIODevice::ReadOnly)) {
    LogError(u"Host", u"Zum Bild \"%s\" gibt es keine Zeichnung.", {iName});
    return {};
  }
  const QByteArray text = file.readAll();
  return {text, QSvgRenderer(text).defaultSize()};
}

// Null for no image. Also what is not there is remembered: it is told once.
const TDrawing* Find(const TBitmap& iBitmap) {
  static QHash<QString, TDrawing> drawings;
  if (iBitmap.IsEmpty()) return nullptr;
  auto found = drawings.constFind(ToQt(iBitmap.ResourceName));
  if (found == drawings.constEnd())
    found = drawings.insert(ToQt(iBitmap.ResourceName), Load(iBitmap.ResourceName));
  return found->Text.isEmpty() ? nullptr : &*found;
}

QPixmap Render(const TDrawing& iDrawing, const QSize& iPixels, const TDrawingColors& iColors) {
  QPixmap pixmap(iPixels);
  pixmap.fill(Qt::transparent);
  QPainter painter(&pixmap);
  QRect target({}, iDrawing.Size.scaled(iPixels, Qt::KeepAspectRatio));
  target.moveCenter(pixmap.rect().center());
  QSvgRenderer(iColors.Apply(iDrawing.Text)).render(&painter, target);
  return pixmap;
}

class TDrawingEngine : public QIconEngine {
 public:
  explicit TDrawingEngine(TBitmap iBitmap) : FBitmap(std::move(iBitmap)) {}

  void paint(QPainter* ioPainter, const QRect& iRect, QIcon::Mode iMode, QIcon::State) override {
    const qreal ratio = ioPainter->device()->devicePixelRatio();
    ioPainter->drawPixmap(iRect, TDrawings::Pixmap(FBitmap, iRect.size(), ratio, iMode));
  }
  QPixmap pixmap(const QSize& iSize, QIcon::Mode iMode, QIcon::State) override {
    return TDrawings::Pixmap(FBitmap, iSize, 1, iMode);
  }
  // Here the size counts the screen's pixels.
  QPixmap scaledPixmap(const QSize& iSize, QIcon::Mode iMode, QIcon::State, qreal iScale) override {
    QPixmap pixmap = TDrawings::Pixmap(FBitmap, iSize, 1, iMode);
    pixmap.setDevicePixelRatio(iScale);
    return pixmap;
  }
  // What window managers and trays take over once, as pixels.
  QList<QSize> availableSizes(QIcon::Mode, QIcon::State) override {
    QList<QSize> sizes;
    for (const int side : {16, 22, 24, 32, 48, 64, 128, 256}) sizes.append({side, side});
    return sizes;
  }
  QIconEngine* clone() const override { return QtOwned<TDrawingEngine>(FBitmap); }

 private:
  TBitmap FBitmap;
};

}  // namespace

QIcon TDrawings::Icon(const TBitmap& iBitmap) {
  if (Find(iBitmap) == nullptr) return {};
  return QIcon(QtOwned<TDrawingEngine>(iBitmap));
}

QPixmap TDrawings::Pixmap(const TBitmap& iBitmap, QSize iSize, qreal iRatio, QIcon::Mode iMode) {
  const TDrawing* drawing = Find(iBitmap);
  const QSize pixels = Bounded((QSizeF(Bounded(iSize)) * iRatio).toSize());
  if (drawing == nullptr || pixels.isEmpty()) return {};
  const QPalette palette = QGuiApplication::palette();
  const QString key = QStringLiteral("kk %1 %2x%3 %4 %5")
                          .arg(ToQt(iBitmap.ResourceName))
                          .arg(pixels.width())
                          .arg(pixels.height())
                          .arg(iMode)
                          .arg(palette.cacheKey());
  QPixmap pixmap;
  if (!QPixmapCache::find(key, &pixmap)) {
    pixmap = Render(*drawing, pixels, TDrawingColors(palette, iMode));
    QPixmapCache::insert(key, pixmap);
  }
  pixmap.setDevicePixelRatio(iRatio);
  return pixmap;
}

QSize TDrawings::NaturalSize(const TBitmap& iBitmap) {
  const TDrawing* drawing = Find(iBitmap);
  return drawing == nullptr ? QSize(0, 0) : drawing->Size;
}

QIcon TDrawings::ProgramIcon() { return Icon({u"KAUFKOBOLDE"}); }

}  // namespace kk
