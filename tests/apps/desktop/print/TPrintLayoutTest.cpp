#include "apps/desktop/print/TPrintLayout.h"

#include <gmock/gmock.h>

#include <QImage>
#include <regex>

#include "TPrintWorld.h"
#include "host/base/Exception.h"

namespace kk {
namespace {

using testing::HasSubstr;
using testing::Not;

using TPrintLayoutTest = TPrintWorld;

size_t CountOf(const std::string& iText, const std::string& iPiece) {
  size_t count = 0;
  for (size_t at = iText.find(iPiece); at != std::string::npos; at = iText.find(iPiece, at + 1)) {
    ++count;
  }
  return count;
}

// Where a line of the text has the piece, in characters.
size_t ColumnOf(const std::string& iText, const std::string& iPiece) {
  const size_t at = iText.find(iPiece);
  const size_t line = iText.rfind('\n', at);
  size_t column = 0;
  for (size_t i = line == std::string::npos ? 0 : line + 1; i < at; ++i) {
    column += (static_cast<unsigned char>(iText[i]) & 0xC0) != 0x80;
  }
  return column;
}

TEST_F(TPrintLayoutTest, APageHasTitleDateSourceHeadersAndRows) {
  const TPdfReader pdf = Pdf(List(2));
  EXPECT_EQ(pdf.PageCount(), 1);
  const std::string text = pdf.Text();
  for (const char* piece :
       {"Kaufkobolde 7 -> Beobachten -> Küche", "Gedruckt am: 20.11.2026 18:30", "Webseite", "Name",
        "Preis", "Verfügbarkeit", "Anbieter", "Artikel Nr. 1", "7,99 €", "Töpfe & Söhne",
        "Artikel Nr. 2", "Seite 1 von 1"}) {
    EXPECT_THAT(text, HasSubstr(piece));
  }
  EXPECT_THAT(pdf.Info("Page size"), HasSubstr("(A4)"));
  EXPECT_EQ(pdf.Info("Title"), "Kaufkobolde 7 -> Beobachten -> Küche");
}

TEST_F(TPrintLayoutTest, AListWithoutRowsIsOnePage) {
  EXPECT_EQ(TPrintLayout(List(0)).PageCount(), 1);
  EXPECT_THAT(Pdf(List(0)).Text(), HasSubstr("Verfügbarkeit"));
}

TEST_F(TPrintLayoutTest, ValuesBehindTheColumnsStandBelowTheRowWithTheirTitles) {
  TPrintContent list = List(1);
  list.Rows[0][4] = u"24.12.2026 18:00";
  const std::string text = Pdf(list).Text();
  EXPECT_THAT(text, HasSubstr("Ende: 24.12.2026 18:00"));
  EXPECT_THAT(text, HasSubstr("Adresse: https://shop.example/artikel/1"));
}

TEST_F(TPrintLayoutTest, EmptyOnesAndFurtherAddressesAreLeftOut) {
  const std::string text = Pdf(List(1)).Text();
  EXPECT_THAT(text, Not(HasSubstr("Ende")));
  EXPECT_THAT(text, Not(HasSubstr("bilder.example")));
}

TEST_F(TPrintLayoutTest, ValuesWithoutATitleStandThereAllTheSame) {
  TPrintContent list = List(1);
  list.Titles.clear();
  EXPECT_THAT(Pdf(list).Text(), HasSubstr("https://shop.example/artikel/1"));
}

TEST_F(TPrintLayoutTest, ShortValuesBelowTheColumnsAreNotBroken) {
  TPrintContent list = List(1);
  list.Rows[0].resize(4);
  list.Rows[0].insert(list.Rows[0].end(), 30, u"zwei Worte");
  list.Titles.resize(4);
  list.Titles.resize(34, u"Mit Titel");
  const std::string text = Pdf(list).Text();
  EXPECT_EQ(CountOf(text, "Mit Titel: zwei Worte"), 30u);
}

TEST_F(TPrintLayoutTest, ALongTitleMakesRoomForTheDateOnLaterPages) {
  TPrintContent list = List(100);
  list.Title = u"Kaufkobolde 7 -> Beobachten -> " + TString(200, u'x');
  const std::string text = Pdf(list).Text(2);
  EXPECT_THAT(text, HasSubstr("xxx…"));
  EXPECT_THAT(text, HasSubstr("Gedruckt am: 20.11.2026 18:30"));
}

TEST_F(TPrintLayoutTest, APaperThatDoesNotTurnEndsThePrint) {
  const TPrintLayout layout(List(100));
  QImage paper(210, 297, QImage::Format_RGB32);
  QPainter painter(&paper);
  int turns = 0;
  const std::vector<TPrintedPages> all{{&layout, 1, layout.PageCount()}};
  EXPECT_FALSE(PaintPages(painter, paper.rect(), all, [&] { return ++turns < 2; }));
  EXPECT_EQ(turns, 2);
  turns = 0;
  EXPECT_TRUE(PaintPages(painter, paper.rect(), all, [&] { return ++turns > 0; }));
  EXPECT_EQ(turns, layout.PageCount() - 1);
}

TEST_F(TPrintLayoutTest, ShortRowsHaveEmptyCells) {
  TPrintContent list = List(1);
  list.Rows = {{u"Allein"}, {}, {u"Paar", u"1,00 €"}};
  const std::string text = Pdf(list).Text();
  EXPECT_THAT(text, HasSubstr("Allein"));
  EXPECT_THAT(text, HasSubstr("Paar"));
}

TEST_F(TPrintLayoutTest, ColumnsStandBelowTheirHeaders) {
  const std::string text = Pdf(List(12)).Text();
  EXPECT_EQ(ColumnOf(text, "Verfügbarkeit"), ColumnOf(text, "auf Lager"));
  EXPECT_EQ(ColumnOf(text, "Anbieter"), ColumnOf(text, "Töpfe"));
}

TEST_F(TPrintLayoutTest, NumbersStandRight) {
  TPrintContent list = List(0);
  list.Rows = {{u"A", u"1,00 €"}, {u"B", u"1.299,00 €"}, {u"C", u""}};
  const std::string text = Pdf(list).Text();
  EXPECT_NEAR(static_cast<double>(ColumnOf(text, "1,00") + 4),
              static_cast<double>(ColumnOf(text, "1.299,00") + 8), 1);
  list.Rows.push_back({u"D", u"auf Anfrage"});
  const std::string left = Pdf(list).Text();
  EXPECT_EQ(ColumnOf(left, "1,00"), ColumnOf(left, "1.299,00"));
}

TEST_F(TPrintLayoutTest, AThousandRowsAllComeInOrderAndOnce) {
  const TPdfReader pdf = Pdf(List(1000));
  EXPECT_EQ(pdf.PageCount(), TPrintLayout(List(1000)).PageCount());
  EXPECT_GT(pdf.PageCount(), 20);
  const std::string text = pdf.Text();
  const std::regex number("Artikel Nr\\. (\\d+)");
  int expected = 0;
  for (std::sregex_iterator it(text.begin(), text.end(), number), end; it != end; ++it) {
    EXPECT_EQ(std::stoi((*it)[1]), ++expected);
  }
  EXPECT_EQ(expected, 1000);
}

TEST_F(TPrintLayoutTest, EveryPageHasHeadersTitleAndItsNumber) {
  const TPdfReader pdf = Pdf(List(100));
  const int count = pdf.PageCount();
  ASSERT_GT(count, 2);
  for (int page = 1; page <= count; ++page) {
    const std::string text = pdf.Text(page);
    EXPECT_THAT(text, HasSubstr("Kaufkobolde 7 -> Beobachten -> Küche"));
    EXPECT_THAT(text, HasSubstr("Webseite"));
    EXPECT_THAT(text, HasSubstr("Verfügbarkeit"));
    EXPECT_THAT(text, HasSubstr("Gedruckt am: 20.11.2026 18:30"));
    EXPECT_THAT(text, HasSubstr("Seite " + std::to_string(page) + " von " + std::to_string(count)));
  }
}

TEST_F(TPrintLayoutTest, ARowStaysOnOnePage) {
  TPrintContent list = List(0);
  for (int i = 0; i < 60; ++i) {
    TString name = Format(u"Anfang%d ", {i});
    for (int word = 0; word < 60; ++word) name += u"Wortreich ";
    list.Rows.push_back({name + Format(u"Ende%d", {i}), u"1,00 €"});
  }
  const TPdfReader pdf = Pdf(list);
  for (int page = 1; page <= pdf.PageCount(); ++page) {
    const std::string text = pdf.Text(page);
    EXPECT_EQ(CountOf(text, "Anfang"), CountOf(text, "Ende")) << page;
    EXPECT_EQ(CountOf(text, "Wortreich"), 60 * CountOf(text, "Anfang")) << page;
  }
  EXPECT_EQ(CountOf(pdf.Text(), "Wortreich"), 3600u);
}

TEST_F(TPrintLayoutTest, ARowThatIsLargerThanAPageGoesOnOnTheNext) {
  TPrintContent list = List(1);
  TString name;
  for (int i = 100; i < 400; ++i) name += Format(u"W%d ", {i});
  list.Rows.push_back({name, name, name, name, u"", u"https://ende.example"});
  list.Rows.push_back(Row(3));
  const TPdfReader pdf = Pdf(list);
  EXPECT_GT(pdf.PageCount(), 1);
  const std::string text = pdf.Text();
  for (int i = 100; i < 400; ++i) EXPECT_EQ(CountOf(text, "W" + std::to_string(i)), 4u) << i;
  EXPECT_EQ(CountOf(text, "https://ende.example"), 1u);
  EXPECT_EQ(CountOf(text, "Artikel Nr. 3"), 1u);
}

TEST_F(TPrintLayoutTest, SoDoesWhatStandsBelowTheColumns) {
  TPrintContent list = List(1);
  list.Rows[0].resize(4);
  for (int value = 0; value < 12; ++value) {
    TString text;
    for (int i = 0; i < 300; ++i) text += Format(u"V%dW%d ", {value + 10, i + 100});
    list.Rows[0].push_back(text);
  }
  const TPdfReader pdf = Pdf(list);
  EXPECT_GT(pdf.PageCount(), 1);
  const std::string text = pdf.Text();
  for (int value = 10; value < 22; ++value) {
    for (int i = 100; i < 300; ++i) {
      const std::string word = "V" + std::to_string(value) + "W" + std::to_string(i);
      EXPECT_EQ(CountOf(text, word), 1u) << word;
    }
  }
}

TEST_F(TPrintLayoutTest, ColumnsTakeTheWholeWidth) {
  const std::string text = Pdf(List(12)).Text();
  EXPECT_GT(ColumnOf(text, "Anbieter"), 55u);
  EXPECT_EQ(ColumnOf(text, "Name"), 0u);
}

TEST_F(TPrintLayoutTest, LongNamesAreWrappedNotCut) {
  TPrintContent list = List(1);
  list.Rows[0][0] =
      u"Gußeiserner Bräter mit Deckel, oval, für alle Herdarten, 33 cm, mit einem Übermaß an "
      u"Wörtern "
      u"Donaudampfschiffahrtsgesellschaftskapitänsmützenständer und Schluß";
  list.Rows[0][3] = TString(300, u'x');
  const std::string text = Pdf(list).Text();
  for (const char* word : {"Gußeiserner", "Herdarten", "Übermaß", "Schluß"}) {
    EXPECT_THAT(text, HasSubstr(word));
  }
  EXPECT_EQ(CountOf(text, "x"), 300u + CountOf(text, "example"));
}

TEST_F(TPrintLayoutTest, LettersAreNotJoinedSoThatTheyAreFoundAgain) {
  TPrintContent list = List(1);
  list.Rows[0][0] = u"Kaffeemühle, griffig, flach";
  EXPECT_THAT(Pdf(list).Text(), HasSubstr("Kaffeemühle, griffig, flach"));
}

TEST_F(TPrintLayoutTest, TabsAndLineBreaksKeepWordsApart) {
  TPrintContent list = List(1);
  list.Rows[0][0] = u"eins\tzwei\ndrei\r\nvier\u0007";
  EXPECT_THAT(Pdf(list).Text(), HasSubstr("eins zwei drei vier "));
}

TEST_F(TPrintLayoutTest, OneLongValueAmongManyDoesNotNarrowTheOtherColumns) {
  TPrintContent list = List(60);
  for (auto& row : list.Rows) row[0] += u" aus Gußeisen für alle Herdarten, und noch viel mehr";
  const auto before = static_cast<double>(ColumnOf(Pdf(list).Text(), "Anbieter"));
  TString seller;
  for (int i = 0; i < 30; ++i) seller += u"Wortreicher ";
  list.Rows[7][3] = seller + u"Schluß";
  const std::string text = Pdf(list).Text();
  EXPECT_NEAR(static_cast<double>(ColumnOf(text, "Anbieter")), before, 2);
  EXPECT_EQ(CountOf(text, "Wortreicher"), 30u);
  EXPECT_THAT(text, HasSubstr("Schluß"));
}

TEST_F(TPrintLayoutTest, ALongValueHasTheRoomThatOthersLeave) {
  TPrintContent list = List(60);
  list.Rows[7][3] = u"Donaudampfschiffahrts-Gesellschaft m. b. H.";
  EXPECT_THAT(Pdf(list).Text(), HasSubstr("Donaudampfschiffahrts-Gesellschaft m. b. H."));
  list.Rows[8][0] = TString(300, u'x');
  EXPECT_THAT(Pdf(list).Text(), HasSubstr("Donaudampfschiffahrts-Gesellschaft")) << "half of it";
}

TEST_F(TPrintLayoutTest, AColumnOfNumbersHasRoomForTheLargest) {
  TPrintContent list = List(60);
  list.Rows[7][1] = u"123.456.789,00 EUR";
  list.Rows[8][3] = TString(400, u'x');
  EXPECT_THAT(Pdf(list).Text(), HasSubstr("123.456.789,00 EUR"));
}

QPageLayout Paper(QPageSize::PageSizeId iSize, QPageLayout::Orientation iOrientation,
                  double iMargin = 0) {
  return {QPageSize(iSize), iOrientation, QMarginsF(iMargin, iMargin, iMargin, iMargin),
          QPageLayout::Millimeter};
}

TEST_F(TPrintLayoutTest, PaperOnItsSideHasWiderColumnsAndFewerRows) {
  TPrintContent list = List(100);
  const TString name = u"Gußeiserner Bräter mit Deckel, oval, für alle Herdarten, 33 cm";
  list.Rows.push_back({name});
  EXPECT_THAT(Pdf(list).Text(), Not(HasSubstr(ToUtf8(name))));
  const TPrintLayout upright(list);
  const TPrintLayout across(list, Paper(QPageSize::A4, QPageLayout::Landscape));
  EXPECT_GT(across.PageCount(), upright.PageCount());
  const TPdfReader pdf = Write(ToPdf({{&across, 1, across.PageCount()}}));
  EXPECT_EQ(pdf.PageCount(), across.PageCount());
  EXPECT_THAT(pdf.Info("Page size"), HasSubstr("842 x 595 pts"));
  const std::string text = pdf.Text();
  EXPECT_THAT(text, HasSubstr(ToUtf8(name)));
  for (int i = 1; i <= 100; ++i) {
    EXPECT_EQ(CountOf(text, "Artikel Nr. " + std::to_string(i) + " "), 1u) << i;
  }
}

TEST_F(TPrintLayoutTest, ASmallPaperShowsTheSameSmaller) {
  TPrintContent list = List(20);
  list.Title = TString(300, u'W');
  for (const auto size : {QPageSize::A7, QPageSize::A10, QPageSize::EnvelopeMonarch}) {
    for (const auto orientation : {QPageLayout::Portrait, QPageLayout::Landscape}) {
      const TPrintLayout layout(list, Paper(size, orientation));
      const TPdfReader pdf = Write(ToPdf({{&layout, 1, layout.PageCount()}}));
      EXPECT_LT(pdf.PageCount(), 10);
      EXPECT_EQ(CountOf(pdf.Text(), "Artikel Nr. "), 20u);
    }
  }
}

// What is painted of a page at 72 pixels an inch.
QRect Painted(const TPrintLayout& iLayout) {
  QImage image(iLayout.Paper().fullRectPixels(72).size(), QImage::Format_RGB32);
  image.fill(Qt::white);
  QPainter painter(&image);
  iLayout.Paint(painter, image.rect(), 1);
  painter.end();
  return TPdfReader::PaintedOf(image);
}

TEST_F(TPrintLayoutTest, MarginsAreThoseOfThePaperIfTheyAreWider) {
  const QRect usual = Painted(TPrintLayout(List(60)));
  EXPECT_NEAR(usual.left(), 51, 2);
  EXPECT_NEAR(usual.right(), 595 - 51, 2);
  const auto id = QPageSize::A4;
  EXPECT_EQ(Painted(TPrintLayout(List(60), Paper(id, QPageLayout::Portrait, 5))), usual);
  const QRect narrow = Painted(TPrintLayout(List(60), Paper(id, QPageLayout::Portrait, 40)));
  EXPECT_NEAR(narrow.left(), 113, 2);
  EXPECT_NEAR(narrow.right(), 595 - 113, 2);
  EXPECT_GE(narrow.top(), 113);
  EXPECT_LE(narrow.bottom(), 842 - 113);
  const TPrintLayout wide(List(60), Paper(id, QPageLayout::Portrait, 40));
  const QRect inPdf = Write(ToPdf({{&wide, 1, 1}})).Painted(1);
  EXPECT_NEAR(inPdf.left(), narrow.left(), 1) << "a PDF has no margins of its own";
  EXPECT_NEAR(inPdf.top(), narrow.top(), 2);
  const QRect most = Painted(TPrintLayout(List(60), Paper(id, QPageLayout::Portrait, 100)));
  EXPECT_NEAR(most.left(), 595 / 4, 2);
  EXPECT_NEAR(most.right(), 595 * 3 / 4, 2);
}

TEST_F(TPrintLayoutTest, EmojisAreInThePdfInTheirColours) {
  TPrintContent list = List(1);
  list.Rows[0][0] = TString(u"Tasse ") + cRedSquare + u" rot";
  list.Rows[0].resize(4);
  const TPdfReader pdf = Pdf(list);
  EXPECT_THAT(pdf.Text(), HasSubstr("Tasse "));
  const QImage page = pdf.Picture(1);
  QRect red;
  for (int y = 0; y < page.height(); ++y) {
    for (int x = 0; x < page.width(); ++x) {
      const QColor colour = page.pixelColor(x, y);
      if (colour.red() > 200 && colour.green() < 60) red |= QRect(x, y, 1, 1);
    }
  }
  EXPECT_NEAR(red.width(), 9, 1);
  EXPECT_NEAR(red.height(), 9, 1);
  EXPECT_NEAR(red.left(), 80, 4) << "behind the word";
  const size_t one = Folder.Read(u"liste.pdf").size();
  for (int i = 0; i < 200; ++i) list.Rows[0][0] += cRedSquare;
  Pdf(list);
  EXPECT_LT(Folder.Read(u"liste.pdf").size(), one + 10000) << "a picture is in the file once";
}

TEST_F(TPrintLayoutTest, HostileValuesDoNoHarm) {
  TPrintContent list = List(1);
  list.Title = TString(100000, u'T');
  list.Source = TString(100000, u'Q');
  list.Date = TString(100000, u'D');
  list.Headers[0] = TString(100000, u'H');
  list.Rows[0] = {TString(1000000, u'n'), u"eins\r\nzwei\x01", TString(1, char16_t{0xD800})};
  const TPrintLayout layout(list);
  EXPECT_LT(layout.PageCount(), 5);
  EXPECT_THAT(Pdf(list).Text(), HasSubstr("eins zwei"));
}

TEST_F(TPrintLayoutTest, IsTheSameAgain) { EXPECT_EQ(Pdf(List(50)).Text(), Pdf(List(50)).Text()); }

TEST_F(TPrintLayoutTest, FillsPaperOfAnotherShapeAsFarAsItGoes) {
  const TPrintLayout layout(List(5));
  QImage wide(2000, 500, QImage::Format_RGB32);
  wide.fill(Qt::white);
  QPainter painter(&wide);
  layout.Paint(painter, wide.rect(), 1);
  painter.end();
  const QRect page(823, 0, 354, 500);  // A4 of that height, in the middle
  bool inside = false;
  for (int y = 0; y < wide.height(); ++y) {
    for (int x = 0; x < wide.width(); ++x) {
      if (wide.pixel(x, y) == qRgb(255, 255, 255)) continue;
      EXPECT_TRUE(page.contains(x, y)) << x << ',' << y;
      inside = true;
    }
  }
  EXPECT_TRUE(inside);
}

TEST_F(TPrintLayoutTest, SomePagesAreAPdfOfTheirOwn) {
  const TPrintLayout layout(List(100));
  const TPdfReader pdf = Write(ToPdf({{&layout, 2, 2}}));
  EXPECT_EQ(pdf.PageCount(), 1);
  EXPECT_THAT(pdf.Text(), HasSubstr("Seite 2 von"));
}

TEST_F(TPrintLayoutTest, PagesThatAreNotThereArePassedOver) {
  const TPrintLayout layout(List(1));
  EXPECT_EQ(Write(ToPdf({{&layout, -3, 9}})).PageCount(), 1);
  EXPECT_THROW(ToPdf({{&layout, 2, 3}}), Exception);
  EXPECT_THROW(ToPdf({}), Exception);
}

TEST_F(TPrintLayoutTest, SeveralListsAreOneDocumentWithPageNumbersOfTheirOwn) {
  const TPrintLayout one(List(1));
  TPrintContent other = List(1);
  other.Source = u"Auktion";
  const TPrintLayout two(other);
  const TPdfReader pdf = Write(ToPdf({{&one, 1, 1}, {&two, 1, 1}}));
  EXPECT_EQ(pdf.PageCount(), 2);
  EXPECT_THAT(pdf.Text(1), HasSubstr("Webseite"));
  EXPECT_THAT(pdf.Text(2), HasSubstr("Auktion"));
  EXPECT_THAT(pdf.Text(2), HasSubstr("Seite 1 von 1"));
}

}  // namespace
}  // namespace kk
