#include "apps/desktop/print/TQtPrinting.h"

#include <QApplication>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QDir>
#include <QFileInfo>
#include <QPrintDialog>
#include <QPrinter>
#include <QPushButton>
#include <QRadioButton>
#include <QRegularExpression>
#include <QStandardPaths>
#include <algorithm>
#include <optional>

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

QString Start(const QString& iText, qsizetype iLength) {
  if (iText.size() <= iLength) return iText;
  return iText.left(iText.at(iLength).isLowSurrogate() ? iLength - 1 : iLength).trimmed();
}

// "Kaufkobolde 7 - Beobachten - Küche - Webseite"; a long title leaves room for the source.
QString FileNameFor(const TPrintLayout& iLayout) {
  const QString source = QStringLiteral(" - ") + Start(iLayout.Source(), cMaxFileName / 2);
  QString name = Start(iLayout.Title(), cMaxFileName - source.size()) + source;
  name.replace(QStringLiteral("->"), QStringLiteral("-"));
  name.replace(QRegularExpression(QStringLiteral(R"([/\\:*?"<>|])")), QStringLiteral("_"));
  return name.trimmed();
}

// Which of the lists is asked for: "Drucken: Küche, Webseite".
QString CaptionFor(const TPrintLayout& iLayout) {
  const QString name = iLayout.Title().section(QStringLiteral("-> "), -1);
  return ToQt(u"Drucken: ") + name + QStringLiteral(", ") + iLayout.Source();
}

// Pages one by one, and the last one first: no job keeps to that.
void HideOtherPages(const QPrintDialog& iWindow) {
  for (const char* const name : {"pagesRadioButton", "pagesLineEdit", "reverse"}) {
    auto* const part = iWindow.findChild<QWidget*>(QString::fromLatin1(name));
    if (part != nullptr) part->hide();
  }
}

// The printer gets the paper with OK alone; until then it stands in the dialog.
QPageLayout PaperIn(const QPrintDialog& iWindow, const QPrinter& iPrinter) {
  QPageLayout paper = iPrinter.pageLayout();
  const auto* const sizes = iWindow.findChild<QComboBox*>(QStringLiteral("pageSizeCombo"));
  const auto* const across = iWindow.findChild<QRadioButton*>(QStringLiteral("landscape"));
  if (sizes == nullptr || across == nullptr) return paper;
  const auto size = sizes->currentData().value<QPageSize>();
  if (size.isValid()) paper.setPageSize(size, paper.minimumMargins());
  paper.setOrientation(across->isChecked() ? QPageLayout::Landscape : QPageLayout::Portrait);
  return paper;
}

}  // namespace

class TQtPrinting::TJob : public IPrintJob {
 public:
  TJob(TQtPrinting& ioPrinting, TPrintContent iContent)
      : FPrinting(ioPrinting), FContent(std::move(iContent)) {}

  const TPrintLayout& LayoutOn(const QPageLayout& iPaper) {
    if (!FLayout || FLayout->Paper() != iPaper) FLayout.emplace(FContent, iPaper);
    return *FLayout;
  }
  const TPrintLayout& Layout() { return LayoutOn(FPrinting.Printer().pageLayout()); }
  int CalculatePageCount() override { return Layout().PageCount(); }
  void Print(int iFromPage, int iToPage) override {
    QPrinter& printer = FPrinting.Printer();
    const TPrintLayout& layout = Layout();
    const std::vector<TPrintedPages> pages{{&layout, iFromPage, iToPage}};
    if (IsToFile(printer)) {
      WriteFileAtomically(FromQt(printer.outputFileName()), ToPdf(pages));
      return;
    }
    printer.setDocName(layout.Title());
    PrintOn(printer, pages);
  }

 private:
  TQtPrinting& FPrinting;
  const TPrintContent FContent;
  std::optional<TPrintLayout> FLayout;
};

TQtPrinting::TQtPrinting() = default;

TQtPrinting::~TQtPrinting() = default;

std::unique_ptr<IPrintJob> TQtPrinting::CreateJob(TPrintContent iContent) {
  return std::make_unique<TJob>(*this, std::move(iContent));
}

QPrinter& TQtPrinting::Printer() {
  if (FPrinter) return *FPrinter;
  FPrinter = std::make_unique<QPrinter>(QPrinter::HighResolution);
  FPrinter->setPageSize(TPrintLayout::UsualPaper().pageSize());
  FPrinter->setPageOrientation(TPrintLayout::UsualPaper().orientation());
  FPrinter->setCreator(ToQt(u"Kaufkobolde"));
  return *FPrinter;
}

bool TQtPrinting::ShowPrintDialog(TPrintDialog& ioDialog) {
  QWidget* const modal = QApplication::activeModalWidget();
  auto* const job = dynamic_cast<TJob*>(ioDialog.Job);
  if (job != nullptr) ProposeFile(job->Layout());
  QPrintDialog window(&Printer(), modal != nullptr ? modal : QApplication::activeWindow());
  window.setWindowTitle(job != nullptr ? CaptionFor(job->Layout()) : ToQt(u"Drucken"));
  Offer(ioDialog, window);
  if (job != nullptr) AddPreview(window, *job);
  const bool ok = window.exec() == QDialog::Accepted;
  if (ok) Take(ioDialog, window);
  // Another paper has other pages.
  if (ok && job != nullptr) ioDialog.MaxPage = job->CalculatePageCount();
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

// Where the dialog has no row of buttons, as a desktop's own may, there is no preview.
void TQtPrinting::AddPreview(QPrintDialog& ioWindow, TJob& ioJob) {
  auto* const buttons = ioWindow.findChild<QDialogButtonBox*>();
  if (buttons == nullptr) return;
  QPushButton* const button =
      buttons->addButton(ToQt(u"&Vorschau..."), QDialogButtonBox::ActionRole);
  button->setAutoDefault(false);
  QObject::connect(button, &QPushButton::clicked, &ioWindow, [this, &ioWindow, &ioJob] {
    AsUser([&] { TPrintPreview(ioJob.LayoutOn(PaperIn(ioWindow, Printer())), &ioWindow).exec(); });
  });
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
  HideOtherPages(ioWindow);
}

void TQtPrinting::Take(TPrintDialog& ioDialog, const QPrintDialog& iWindow) {
  const QPrinter& printer = Printer();
  const bool pages = iWindow.printRange() == QAbstractPrintDialog::PageRange;
  ioDialog.PrintRange = pages ? TPrintRange::prPageNums : TPrintRange::prAllPages;
  if (pages) {
    ioDialog.FromPage = iWindow.fromPage();
    ioDialog.ToPage = iWindow.toPage();
  }
  // A file has each page once.
  ioDialog.Copies = IsToFile(printer) ? 1 : printer.copyCount();
  ioDialog.Collate = printer.collateCopies();
}

}  // namespace kk
