#include "apps/desktop/print/PdfDocument.h"

#include <QBuffer>
#include <QFontDatabase>
#include <QPdfWriter>
#include <algorithm>

#include "host/base/Exception.h"

namespace kk {
namespace {

constexpr int cResolution = 1200;

}  // namespace

bool PaintPages(QPainter& ioPainter, const QRectF& iPaper, const std::vector<TPrintedPages>& iParts,
                const std::function<bool()>& iTurn) {
  bool isFirst = true;
  for (const TPrintedPages& part : iParts) {
    const int last = std::min(part.To, part.Layout->PageCount());
    for (int page = std::max(part.From, 1); page <= last; ++page) {
      if (!isFirst && !iTurn()) return false;
      isFirst = false;
      part.Layout->Paint(ioPainter, iPaper, page);
    }
  }
  return true;
}

std::string ToPdf(const std::vector<TPrintedPages>& iParts) {
  const bool hasPage = std::ranges::any_of(iParts, [](const TPrintedPages& iPart) {
    return std::max(iPart.From, 1) <= std::min(iPart.To, iPart.Layout->PageCount());
  });
  if (!hasPage) throw Exception(u"Es gibt keine Seite zu drucken");
  if (QFontDatabase::families().isEmpty()) {
    throw Exception(u"Auf diesem Rechner ist keine Schrift eingerichtet");
  }
  QBuffer bytes;
  bytes.open(QIODevice::WriteOnly);
  QPdfWriter writer(&bytes);
  writer.setResolution(cResolution);
  QPageLayout paper = iParts.front().Layout->Paper();
  paper.setMinimumMargins({});
  paper.setMargins({});
  writer.setPageLayout(paper);
  writer.setTitle(iParts.front().Layout->Title());
  writer.setCreator(QStringLiteral("Kaufkobolde"));
  const QRectF room = paper.fullRectPixels(cResolution);
  QPainter painter;
  if (!painter.begin(&writer) ||
      !PaintPages(painter, room, iParts, [&] { return writer.newPage(); }) || !painter.end()) {
    throw Exception(u"Das PDF lässt sich nicht erstellen");
  }
  return bytes.data().toStdString();
}

}  // namespace kk
