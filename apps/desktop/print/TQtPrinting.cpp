#include "apps/desktop/print/TQtPrinting.h"

#include <QApplication>
#include <QDialogButtonBox>
#include <QDir>
#include <QFileInfo>
#include <QPrintDialog>
#include <QPrinter>
#include <QPushButton>
#include <QRegularExpression>
#include <QStandardPaths>
#include <algorithm>

#include "apps/desktop/print/PrintOn.h"
#include "apps/desktop/print/TPrintPreview.h"
#include "apps/desktop/skin/AsUser.h"
#include "apps/desktop/skin/QtText.h"
#include "host/common/TFileHelper.h"

namespace kk {
namespace {

constexpr int cMaxCopies = 999;
constexpr qsizetype cMaxFileName = 80;  // no more than 240 bytes, with four for ".pdf"

bool IsToFile(const QPrinter& iPrinter) { return iPrinter.outputFormat() == QPrinter::PdfFormat; }

// "Kaufkobolde 7 - Beobachten - Küche - Webseite".
QString FileNameFor(const TPrintLayout& iLayout) {
  QString name = iLayout.Title() + QStringLiteral(" - ") + iLayout.Source();
  name.replace(QStringLiteral("->"), QStringLiteral("-"));
  name.replace(QRegularExpression(QStringLiteral(R"([/\\:*?"<>|])")), QStringLiteral("_"));
  return name.left(cMaxFileName).trimmed();
}

// Where the dialog has no row of buttons, as a desktop's own may, there is no preview.
void AddPreview(QPrintDialog& ioWindow, const TPrintLayout& iLayout, const QPrinter& iPrinter) {
  auto* const buttons = ioWindow.findChild<QDialogButtonBox*>();
  if (buttons == nullptr) return;
  QPushButton* const button =
      buttons->addButton(ToQt(u"&Vorschau..."), QDialogButtonBox::ActionRole);
  button->setAutoDefault(false);
  QObject::connect(button, &QPushButton::clicked, &ioWindow, [&ioWindow, &iLayout, &iPrinter] {
    AsUser([&] { TPrintPreview(iLayout, iPrinter.pageLayout(), &ioWindow).exec(); });
  });
}

}  // namespace

class TQtPrinting::TJob : public IPrintJob {
 public:
  TJob(TQtPrinting& ioPrinting, const TPrintContent& iContent)
      : FPrinting(ioPrinting), FLayout(iContent) {}

  const TPrintLayout& Layout() const { return FLayout; }
  int CalculatePageCount() override { return FLayout.PageCount(); }
  void Print(int iFromPage, int iToPage) override {
    QPrinter& printer = FPrinting.Printer();
    const std::vector<TPrintedPages> pages{{&FLayout, iFromPage, iToPage}};
    if (IsToFile(printer)) {
      WriteFileAtomically(FromQt(printer.outputFileName()), ToPdf(pages));
      return;
    }
    printer.setDocName(FLayout.Title());
    PrintOn(printer, pages);
  }

 private:
  TQtPrinting& FPrinting;
  const TPrintLayout FLayout;
};

TQtPrinting::TQtPrinting() = default;

TQtPrinting::~TQtPrinting() = default;

std::unique_ptr<IPrintJob> TQtPrinting::CreateJob(TPrintContent iContent) {
  return std::make_unique<TJob>(*this, iContent);
}

QPrinter& TQtPrinting::Printer() {
  if (FPrinter) return *FPrinter;
  FPrinter = std::make_unique<QPrinter>(QPrinter::HighResolution);
  FPrinter->setPageSize(QPageSize(QPageSize::A4));
  FPrinter->setPageOrientation(QPageLayout::Portrait);
  // The layout has margins of its own, and its place is the paper.
  FPrinter->setFullPage(true);
  FPrinter->setCreator(ToQt(u"Kaufkobolde"));
  return *FPrinter;
}

bool TQtPrinting::ShowPrintDialog(TPrintDialog& ioDialog) {
  QWidget* const modal = QApplication::activeModalWidget();
  const auto* const job = dynamic_cast<const TJob*>(ioDialog.Job);
  if (job != nullptr) ProposeFile(job->Layout());
  QPrintDialog window(&Printer(), modal != nullptr ? modal : QApplication::activeWindow());
  window.setWindowTitle(ToQt(u"Drucken"));
  Offer(ioDialog, window);
  if (job != nullptr) AddPreview(window, job->Layout(), Printer());
  const bool ok = window.exec() == QDialog::Accepted;
  if (ok) Take(ioDialog, window);
  // The copies and the pages are the caller's business from here on; a printer that counts them,
  // too, would print copies of copies.
  Printer().setCopyCount(1);
  Printer().setPrintRange(QPrinter::AllPages);
  Printer().setFromTo(0, 0);
  Printer().setPageRanges({});
  return ok;
}

void TQtPrinting::ProposeFile(const TPrintLayout& iLayout) {
  const QString name = FileNameFor(iLayout);
  Printer().setDocName(name);  // of which the dialog makes the name of a file
  if (!IsToFile(Printer())) return;
  const QString before = Printer().outputFileName();
  const QString folder = before.isEmpty()
                             ? QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation)
                             : QFileInfo(before).absolutePath();
  const QDir place = QDir(folder).exists() ? QDir(folder) : QDir::home();
  Printer().setOutputFileName(place.filePath(name + QStringLiteral(".pdf")));
}

void TQtPrinting::Offer(const TPrintDialog& iDialog, QPrintDialog& ioWindow) {
  const bool pages = iDialog.PrintRange == TPrintRange::prPageNums;
  Printer().setCopyCount(std::clamp(iDialog.Copies, 1, cMaxCopies));
  Printer().setCollateCopies(iDialog.Collate);
  ioWindow.setOption(QAbstractPrintDialog::PrintPageRange, iDialog.AllowsPageNums);
  ioWindow.setOption(QAbstractPrintDialog::PrintSelection, false);
  ioWindow.setOption(QAbstractPrintDialog::PrintCurrentPage, false);
  ioWindow.setOption(QAbstractPrintDialog::PrintCollateCopies, true);
  ioWindow.setOption(QAbstractPrintDialog::PrintToFile, true);
  ioWindow.setMinMax(iDialog.MinPage, iDialog.MaxPage);
  ioWindow.setFromTo(iDialog.FromPage, iDialog.ToPage);
  ioWindow.setPrintRange(pages ? QAbstractPrintDialog::PageRange : QAbstractPrintDialog::AllPages);
}

void TQtPrinting::Take(TPrintDialog& ioDialog, const QPrintDialog& iWindow) {
  const QPrinter& printer = Printer();
  const bool pages = iWindow.printRange() == QAbstractPrintDialog::PageRange;
  ioDialog.PrintRange = pages ? TPrintRange::prPageNums : TPrintRange::prAllPages;
  if (pages) {
    const QPageRanges ranges = printer.pageRanges();
    ioDialog.FromPage = ranges.isEmpty() ? iWindow.fromPage() : ranges.firstPage();
    ioDialog.ToPage = ranges.isEmpty() ? iWindow.toPage() : ranges.lastPage();
  }
  // A file has each page once.
  ioDialog.Copies = IsToFile(printer) ? 1 : printer.copyCount();
  ioDialog.Collate = printer.collateCopies();
}

}  // namespace kk
