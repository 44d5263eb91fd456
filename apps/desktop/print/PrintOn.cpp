#include "apps/desktop/print/PrintOn.h"

#include <QPrinter>

#include "apps/desktop/skin/QtText.h"
#include "host/base/Exception.h"

namespace kk {

void PrintOn(QPrinter& ioPrinter, const std::vector<TPrintedPages>& iParts) {
  // Its place is the paper; the layout keeps to the margins.
  ioPrinter.setFullPage(true);
  QPainter painter;
  const bool done = painter.begin(&ioPrinter) &&
                    PaintPages(painter, ioPrinter.paperRect(QPrinter::DevicePixel), iParts,
                               [&] { return ioPrinter.newPage(); }) &&
                    painter.end() && ioPrinter.printerState() != QPrinter::Error;
  if (done) return;
  throw Exception(Format(u"Der Drucker %s nimmt nichts an", {FromQt(ioPrinter.printerName())}));
}

}  // namespace kk
