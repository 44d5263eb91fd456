#include "apps/desktop/print/TPrintPreview.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QScreen>
#include <QVBoxLayout>
#include <algorithm>

#include "apps/desktop/print/PrintOn.h"
#include "apps/desktop/skin/AsUser.h"
#include "apps/desktop/skin/QtText.h"

namespace kk {

namespace {

constexpr QSize cSize(760, 900);
constexpr double cMostOfScreen = 0.9;

}  // namespace

TPrintPreview::TPrintPreview(const TPrintLayout& iLayout, QWidget* iParent)
    : QDialog(iParent), FLayout(iLayout) {
  FPrinter.setOutputFormat(QPrinter::PdfFormat);
  FPrinter.setPageLayout(FLayout.Paper());
  FPages = new QPrintPreviewWidget(&FPrinter, this);
  FNumber = new QLabel(this);
  auto* const row = new QHBoxLayout;
  FBefore = AddButton(u"&Zurück", [this] { ShowPage(FPages->currentPage() - 1); });
  FNext = AddButton(u"&Weiter", [this] { ShowPage(FPages->currentPage() + 1); });
  row->addWidget(FBefore);
  row->addWidget(FNumber);
  row->addWidget(FNext);
  row->addStretch();
  row->addWidget(AddButton(u"&Ganze Seite", [this] { FPages->fitInView(); }));
  row->addWidget(AddButton(u"&Breite", [this] { FPages->fitToWidth(); }));
  row->addWidget(AddButton(u"G&rößer", [this] { FPages->zoomIn(); }));
  row->addWidget(AddButton(u"&Kleiner", [this] { FPages->zoomOut(); }));
  row->addStretch();
  row->addWidget(AddButton(u"&Schließen", [this] { close(); }));
  auto* const rows = new QVBoxLayout(this);
  rows->addWidget(FPages);
  rows->addLayout(row);
  setWindowTitle(ToQt(u"Druckvorschau"));
  resize(cSize.boundedTo(screen()->availableSize() * cMostOfScreen));
  QObject::connect(FPages, &QPrintPreviewWidget::paintRequested, this,
                   [this](QPrinter* iPrinter) { AsUser([&] { PaintAll(*iPrinter); }); });
  QObject::connect(FPages, &QPrintPreviewWidget::previewChanged, this,
                   [this] { AsUser([&] { ShowPage(FPages->currentPage()); }); });
  FPages->updatePreview();
  FPages->fitInView();
  ShowPage(1);
}

void TPrintPreview::PaintAll(QPrinter& ioPrinter) const {
  PrintOn(ioPrinter, {{&FLayout, 1, FLayout.PageCount()}});
}

void TPrintPreview::ShowPage(int iPage) {
  const int page = std::clamp(iPage, 1, FLayout.PageCount());
  if (page != FPages->currentPage()) FPages->setCurrentPage(page);
  FNumber->setText(ToQt(Format(u"Seite %d von %d", {page, FLayout.PageCount()})));
  FBefore->setEnabled(page > 1);
  FNext->setEnabled(page < FLayout.PageCount());
}

QPushButton* TPrintPreview::AddButton(TStringView iCaption, std::function<void()> iClick) {
  auto* const button = new QPushButton(ToQt(iCaption), this);
  button->setAutoDefault(false);
  QObject::connect(button, &QPushButton::clicked, this,
                   [click = std::move(iClick)] { AsUser(click); });
  return button;
}

}  // namespace kk
