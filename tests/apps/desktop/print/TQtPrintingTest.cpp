#include "apps/desktop/print/TQtPrinting.h"

#include <gmock/gmock.h>

#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QDir>
#include <QFileInfo>
#include <QLabel>
#include <QPrintDialog>
#include <QPrinter>
#include <QPushButton>
#include <QRadioButton>
#include <QScreen>
#include <QSpinBox>
#include <QTimer>

#include "TPrintWorld.h"
#include "apps/desktop/print/PrintOn.h"
#include "apps/desktop/print/TPrintPreview.h"
#include "apps/desktop/skin/QtText.h"
#include "host/base/Exception.h"

namespace kk {
namespace {

using testing::HasSubstr;

class TQtPrintingTest : public TPrintWorld {
 protected:
  /// What the user does in the next modal window of this kind.
  template <class T>
  void InNext(std::function<void(T&)> iStep) {
    QTimer::singleShot(0, [this, step = std::move(iStep)] {
      auto* const window = dynamic_cast<T*>(QApplication::activeModalWidget());
      if (window == nullptr) return InNext<T>(step);
      step(*window);
    });
  }
  template <class T>
  static T& Part(QWidget& iWindow, const char* iName) {
    T* const part = iWindow.findChild<T*>(QString::fromLatin1(iName));
    if (part == nullptr) throw Exception(FromUtf8(iName));
    return *part;
  }
  static QPushButton& Button(const QWidget& iWindow, const QString& iText) {
    for (QPushButton* const button : iWindow.findChildren<QPushButton*>()) {
      if (button->text() == iText) return *button;
    }
    throw Exception(FromQt(iText));
  }
  /// The user has chosen a file at another time.
  void ToFile() {
    Printing.Printer().setOutputFormat(QPrinter::PdfFormat);
    Printing.Printer().setOutputFileName(ToQt(Folder.File(u"Küche.pdf")));
  }
  /// The user lays the paper on its side, by the dialog's properties.
  static void TurnPaper(QPrintDialog& ioWindow) {
    QTimer::singleShot(0, [] {
      auto& properties = dynamic_cast<QDialog&>(*QApplication::activeModalWidget());
      Part<QRadioButton>(properties, "landscape").click();
      properties.accept();
    });
    Part<QPushButton>(ioWindow, "properties").click();
  }
  TPdfReader File() const { return TPdfReader(ToUtf8(Folder.File(u"Küche.pdf"))); }
  TPrintDialog Dialog(IPrintJob& iJob) const {
    TPrintDialog dialog;
    dialog.AllowsPageNums = true;
    dialog.ToPage = dialog.MaxPage = iJob.CalculatePageCount();
    dialog.Job = &iJob;
    return dialog;
  }

  TQtPrinting Printing;
  std::unique_ptr<IPrintJob> Job = Printing.CreateJob(List(100));
};

TEST_F(TQtPrintingTest, TheDialogOffersThePages) {
  TPrintDialog dialog = Dialog(*Job);
  ToFile();
  InNext<QPrintDialog>([&](QPrintDialog& window) {
    EXPECT_EQ(window.minPage(), 1);
    EXPECT_EQ(window.maxPage(), Job->CalculatePageCount());
    EXPECT_EQ(window.toPage(), Job->CalculatePageCount());
    EXPECT_EQ(window.printRange(), QAbstractPrintDialog::AllPages);
    EXPECT_FALSE(Part<QCheckBox>(window, "collate").isChecked());
    EXPECT_TRUE(window.testOption(QAbstractPrintDialog::PrintPageRange));
    window.reject();
  });
  EXPECT_FALSE(Printing.ShowPrintDialog(dialog));
  EXPECT_EQ(dialog.PrintRange, TPrintRange::prAllPages);
}

TEST_F(TQtPrintingTest, TheUsersPagesComeBack) {
  TPrintDialog dialog = Dialog(*Job);
  ToFile();
  InNext<QPrintDialog>([](QPrintDialog& window) {
    Part<QRadioButton>(window, "printRange").setChecked(true);
    Part<QSpinBox>(window, "from").setValue(2);
    Part<QSpinBox>(window, "to").setValue(3);
    window.accept();
  });
  ASSERT_TRUE(Printing.ShowPrintDialog(dialog));
  EXPECT_EQ(dialog.PrintRange, TPrintRange::prPageNums);
  EXPECT_EQ(dialog.FromPage, 2);
  EXPECT_EQ(dialog.ToPage, 3);
  EXPECT_EQ(dialog.Copies, 1);
}

TEST_F(TQtPrintingTest, TheTitleTellsWhichListItIs) {
  TPrintDialog dialog = Dialog(*Job);
  InNext<QPrintDialog>([](QPrintDialog& window) {
    EXPECT_EQ(FromQt(window.windowTitle()), u"Drucken: Küche, Webseite");
    window.reject();
  });
  Printing.ShowPrintDialog(dialog);
}

TEST_F(TQtPrintingTest, OffersNoOtherChoiceOfPagesThanARange) {
  TPrintDialog dialog = Dialog(*Job);
  InNext<QPrintDialog>([](QPrintDialog& window) {
    for (const char* name : {"pagesRadioButton", "pagesLineEdit", "reverse"}) {
      EXPECT_TRUE(Part<QWidget>(window, name).isHidden()) << name;
    }
    for (const char* name : {"printAll", "printRange", "from", "to", "copies", "collate"}) {
      EXPECT_FALSE(Part<QWidget>(window, name).isHidden()) << name;
    }
    window.reject();
  });
  Printing.ShowPrintDialog(dialog);
}

TEST_F(TQtPrintingTest, PaperThatTheUserTurnsHasPagesOfItsOwn) {
  TPrintDialog dialog = Dialog(*Job);
  ToFile();
  const int upright = Job->CalculatePageCount();
  InNext<QPrintDialog>([](QPrintDialog& window) {
    TurnPaper(window);
    window.accept();
  });
  ASSERT_TRUE(Printing.ShowPrintDialog(dialog));
  EXPECT_GT(dialog.MaxPage, upright);
  EXPECT_EQ(dialog.MaxPage, Job->CalculatePageCount());
  Job->Print(dialog.MinPage, dialog.MaxPage);
  const TPdfReader file(ToUtf8(FromQt(Printing.Printer().outputFileName())));
  EXPECT_EQ(file.PageCount(), dialog.MaxPage);
  EXPECT_THAT(file.Info("Page size"), HasSubstr("842 x 595 pts"));
  EXPECT_THAT(file.Text(), HasSubstr("Artikel Nr. 100 "));
  const auto next = Printing.CreateJob(List(100));
  EXPECT_EQ(next->CalculatePageCount(), dialog.MaxPage) << "the next list is on that paper, too";
}

TEST_F(TQtPrintingTest, ACancelLeavesThePaperAsItWas) {
  TPrintDialog dialog = Dialog(*Job);
  ToFile();
  const int upright = Job->CalculatePageCount();
  InNext<QPrintDialog>([](QPrintDialog& window) {
    TurnPaper(window);
    window.reject();
  });
  EXPECT_FALSE(Printing.ShowPrintDialog(dialog));
  EXPECT_EQ(dialog.MaxPage, upright);
  EXPECT_EQ(Job->CalculatePageCount(), upright);
}

TEST_F(TQtPrintingTest, ThePreviewShowsThePaperThatStandsInTheDialog) {
  TPrintDialog dialog = Dialog(*Job);
  ToFile();
  const int upright = Job->CalculatePageCount();
  int across = 0;
  InNext<QPrintDialog>([&](QPrintDialog& window) {
    TurnPaper(window);
    InNext<TPrintPreview>([&](TPrintPreview& preview) {
      const auto& pages = *preview.findChild<QPrintPreviewWidget*>();
      EXPECT_EQ(pages.orientation(), QPageLayout::Landscape);
      across = pages.pageCount();
      EXPECT_GT(across, upright);
      preview.close();
    });
    Button(window, ToQt(u"&Vorschau...")).click();
    auto& sizes = Part<QComboBox>(window, "pageSizeCombo");
    sizes.setCurrentIndex(sizes.findText(QStringLiteral("A5")));
    InNext<TPrintPreview>([&](TPrintPreview& preview) {
      EXPECT_GT(preview.findChild<QPrintPreviewWidget*>()->pageCount(), across);
      preview.close();
    });
    Button(window, ToQt(u"&Vorschau...")).click();
    window.reject();
  });
  EXPECT_FALSE(Printing.ShowPrintDialog(dialog));
}

TEST_F(TQtPrintingTest, AFileHasEachPageOnce) {
  TPrintDialog dialog = Dialog(*Job);
  dialog.Copies = 3;
  dialog.Collate = true;
  ToFile();
  InNext<QPrintDialog>([](QPrintDialog& window) {
    EXPECT_EQ(Part<QSpinBox>(window, "copies").value(), 3);
    EXPECT_TRUE(Part<QCheckBox>(window, "collate").isChecked());
    window.accept();
  });
  ASSERT_TRUE(Printing.ShowPrintDialog(dialog));
  EXPECT_EQ(dialog.Copies, 1);
  EXPECT_TRUE(dialog.Collate);
  EXPECT_EQ(dialog.FromPage, 1);
  EXPECT_EQ(Printing.Printer().copyCount(), 1) << "the copies are the caller's business";
}

TEST_F(TQtPrintingTest, PrintsIntoTheChosenFile) {
  ToFile();
  Job->Print(2, 3);
  EXPECT_EQ(File().PageCount(), 2);
  EXPECT_THAT(File().Text(), HasSubstr("Seite 2 von"));
  Job->Print(1, Job->CalculatePageCount());
  EXPECT_EQ(File().PageCount(), Job->CalculatePageCount());
}

TEST_F(TQtPrintingTest, AFileThatCannotBeWrittenIsTold) {
  ToFile();
  Printing.Printer().setOutputFileName(ToQt(Folder.File(u"fehlt/Küche.pdf")));
  EXPECT_THROW(Job->Print(1, 1), Exception);
}

TEST_F(TQtPrintingTest, APrinterGetsThePagesOnItsWholePaper) {
  const TPrintLayout layout(List(100));
  ToFile();
  PrintOn(Printing.Printer(), {{&layout, 2, 3}});
  EXPECT_EQ(File().PageCount(), 2);
  EXPECT_THAT(File().Info("Page size"), HasSubstr("(A4)"));
  const std::string text = Write(ToPdf({{&layout, 2, 3}})).Text();
  EXPECT_EQ(File().Text(), text) << "the same place, the same size";
  const TPdfReader file(Folder.Path() + "/liste.pdf");
  EXPECT_EQ(File().Painted(1), file.Painted(1));
}

TEST_F(TQtPrintingTest, APrinterThatTakesNothingIsTold) {
  const TPrintLayout layout(List(1));
  ToFile();
  Printing.Printer().setOutputFileName(ToQt(Folder.File(u"fehlt/Küche.pdf")));
  EXPECT_THROW(PrintOn(Printing.Printer(), {{&layout, 1, 1}}), Exception);
}

TEST_F(TQtPrintingTest, PaperIsA4AndUpright) {
  EXPECT_EQ(Printing.Printer().pageLayout().pageSize().id(), QPageSize::A4);
  EXPECT_EQ(Printing.Printer().pageLayout().orientation(), QPageLayout::Portrait);
}

TEST_F(TQtPrintingTest, APreviewShowsAllPages) {
  TPrintDialog dialog = Dialog(*Job);
  ToFile();
  const int count = Job->CalculatePageCount();
  InNext<QPrintDialog>([&](QPrintDialog& window) {
    InNext<TPrintPreview>([&](TPrintPreview& preview) {
      auto& pages = *preview.findChild<QPrintPreviewWidget*>();
      const auto& number = *preview.findChild<QLabel*>();
      EXPECT_EQ(pages.pageCount(), count);
      EXPECT_LE(preview.height(), preview.screen()->availableSize().height() * 0.9);
      EXPECT_EQ(FromQt(number.text()), Format(u"Seite 1 von %d", {count}));
      EXPECT_FALSE(Button(preview, ToQt(u"&Zurück")).isEnabled());
      Button(preview, ToQt(u"&Weiter")).click();
      EXPECT_EQ(pages.currentPage(), 2);
      EXPECT_EQ(FromQt(number.text()), Format(u"Seite 2 von %d", {count}));
      Button(preview, ToQt(u"&Zurück")).click();
      EXPECT_EQ(pages.currentPage(), 1);
      for (int page = 1; page < count; ++page) Button(preview, ToQt(u"&Weiter")).click();
      EXPECT_FALSE(Button(preview, ToQt(u"&Weiter")).isEnabled());
      const double before = pages.zoomFactor();
      Button(preview, ToQt(u"G&rößer")).click();
      EXPECT_GT(pages.zoomFactor(), before);
      Button(preview, ToQt(u"&Kleiner")).click();
      EXPECT_NEAR(pages.zoomFactor(), before, 0.01);
      Button(preview, ToQt(u"&Breite")).click();
      Button(preview, ToQt(u"&Ganze Seite")).click();
      Button(preview, ToQt(u"&Schließen")).click();
    });
    Button(window, ToQt(u"&Vorschau...")).click();
    window.reject();
  });
  EXPECT_FALSE(Printing.ShowPrintDialog(dialog));
}

TEST_F(TQtPrintingTest, EachListGetsAFileOfItsOwnBesideTheOneBefore) {
  TPrintContent list = List(1);
  list.Title = u"Kaufkobolde 7 -> Beobachten -> Küche/Bad";
  Job = Printing.CreateJob(list);
  TPrintDialog dialog = Dialog(*Job);
  ToFile();
  InNext<QPrintDialog>([](QPrintDialog& window) { window.accept(); });
  EXPECT_TRUE(Printing.ShowPrintDialog(dialog));
  EXPECT_EQ(FromQt(Printing.Printer().outputFileName()),
            Folder.File(u"Kaufkobolde 7 - Beobachten - Küche_Bad - Webseite.pdf"));
}

TEST_F(TQtPrintingTest, AFolderThatIsGoneIsNotProposedAgain) {
  TPrintDialog dialog = Dialog(*Job);
  ToFile();
  Printing.Printer().setOutputFileName(ToQt(Folder.File(u"weg/alt.pdf")));
  InNext<QPrintDialog>([](QPrintDialog& window) { window.reject(); });
  EXPECT_FALSE(Printing.ShowPrintDialog(dialog));
  EXPECT_EQ(Printing.Printer().outputFileName(),
            QDir::home().filePath(ToQt(u"Kaufkobolde 7 - Beobachten - Küche - Webseite.pdf")));
}

TEST_F(TQtPrintingTest, TheNameOfAFileIsNeverTooLong) {
  TPrintContent list = List(1);
  list.Title = TString(200, u'€');
  list.Source = TString(200, u'€');
  Job = Printing.CreateJob(list);
  TPrintDialog dialog = Dialog(*Job);
  ToFile();
  InNext<QPrintDialog>([](QPrintDialog& window) { window.reject(); });
  EXPECT_FALSE(Printing.ShowPrintDialog(dialog));
  const QString name = QFileInfo(Printing.Printer().outputFileName()).fileName();
  EXPECT_LE(name.toUtf8().size(), 244);
  EXPECT_THAT(ToUtf8(FromQt(name)), HasSubstr(" - €€€"));
}

TEST_F(TQtPrintingTest, ALongNameOfACategoryLeavesRoomForThatOfTheSource) {
  for (const size_t shift : {0u, 1u}) {
    TPrintContent list = List(1);
    list.Title = u"Kaufkobolde 7 -> Beobachten -> " + TString(shift, u'x');
    for (int i = 0; i < 200; ++i) list.Title += u"😀";
    list.Source = TString(300, u'q');
    Job = Printing.CreateJob(list);
    TPrintDialog dialog = Dialog(*Job);
    ToFile();
    InNext<QPrintDialog>([](QPrintDialog& window) { window.reject(); });
    EXPECT_FALSE(Printing.ShowPrintDialog(dialog));
    const TString name = FromQt(Printing.Printer().outputFileName());
    EXPECT_THAT(ToUtf8(name), HasSubstr("😀 - qqqqqqqq"));
    EXPECT_THAT(ToUtf8(name), testing::Not(HasSubstr("\uFFFD"))) << "no half of a character";
    EXPECT_LE(ToUtf8(name).size() - Folder.Path().size(), 240u);
  }
}

TEST_F(TQtPrintingTest, TheFirstFileIsProposedAmongTheUsersDocuments) {
  TPrintDialog dialog = Dialog(*Job);
  Printing.Printer().setOutputFormat(QPrinter::PdfFormat);
  InNext<QPrintDialog>([](QPrintDialog& window) { window.reject(); });
  EXPECT_FALSE(Printing.ShowPrintDialog(dialog));
  EXPECT_THAT(ToUtf8(FromQt(Printing.Printer().outputFileName())),
              testing::EndsWith("/Kaufkobolde 7 - Beobachten - Küche - Webseite.pdf"));
}

TEST_F(TQtPrintingTest, WithoutAJobThereIsNoPreview) {
  TPrintDialog dialog;
  ToFile();
  InNext<QPrintDialog>([](QPrintDialog& window) {
    EXPECT_THROW(Button(window, ToQt(u"&Vorschau...")), Exception);
    window.reject();
  });
  EXPECT_FALSE(Printing.ShowPrintDialog(dialog));
}

}  // namespace
}  // namespace kk
