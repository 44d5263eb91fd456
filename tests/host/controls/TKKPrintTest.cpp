#include "host/controls/TKKPrint.h"

#include <gtest/gtest.h>

#include "host/base/Exception.h"
#include "tests/support/TFakePrinting.h"

namespace kk {
namespace {

using TRow = std::vector<TString>;

struct TKKPrintTest : testing::Test {
  TKKPrint& Make(const TStringList& iRows) {
    Print.emplace(u"Titel", u"Datum", u"Laden", u"A", u"B", u"C", u"D", iRows, nullptr);
    return *Print;
  }
  const TPrintContent& Content() {
    Print->CalculatePageCount();
    return Printing.Contents.at(0);
  }
  TFakePrinting Printing;
  std::optional<TKKPrint> Print;
};

TEST_F(TKKPrintTest, HandsItsTextsToTheHost) {
  Make({});
  EXPECT_EQ(Content().Title, u"Titel");
  EXPECT_EQ(Content().Date, u"Datum");
  EXPECT_EQ(Content().Source, u"Laden");
  EXPECT_EQ(Content().Headers, (std::array<TString, 4>{u"A", u"B", u"C", u"D"}));
  EXPECT_TRUE(Content().Rows.empty());
}

TEST_F(TKKPrintTest, ARowIsFourLinesUntilItIsToldOtherwise) {
  Make({u"1", u"2", u"3", u"4", u"5", u"6"});
  EXPECT_EQ(Content().Rows, (std::vector<TRow>{{u"1", u"2", u"3", u"4"}, {u"5", u"6"}}));
}

TEST_F(TKKPrintTest, RowsAreAsLongAsTold) {
  Make({u"1", u"2", u"3", u"4", u"5", u"6"}).SetRows({5, 0, 1}, {u"A", u"B", u"C", u"D", u"E"});
  EXPECT_EQ(Content().Rows, (std::vector<TRow>{{u"1", u"2", u"3", u"4", u"5"}, {u"6"}}));
  EXPECT_EQ(Content().Titles, (TRow{u"A", u"B", u"C", u"D", u"E"}));
}

TEST_F(TKKPrintTest, NoRowReachesBehindTheLines) {
  Make({u"1", u"2"}).SetRows({-1, 1, 7, 2}, {});
  EXPECT_EQ(Content().Rows, (std::vector<TRow>{{u"1"}, {u"2"}}));
}

TEST_F(TKKPrintTest, IsLaidOutOnceForAllItsPrints) {
  Make({u"1"});
  EXPECT_EQ(Print->CalculatePageCount(), 3);
  Print->Print(2, 3);
  Print->Print(1, 1);
  EXPECT_EQ(Printing.Contents.size(), 1u);
  EXPECT_EQ(Printing.Printed, (std::vector<std::string>{"1: 2-3", "1: 1-1"}));
}

TEST_F(TKKPrintTest, ThereIsNoSecondList) {
  const TStringList lines;
  EXPECT_THROW(TKKPrint(u"", u"", u"", u"", u"", u"", u"", lines, &lines), Exception);
}

TEST(IPrinting, WithoutOneItIsSaidClearly) {
  const TStringList lines;
  TKKPrint print(u"", u"", u"", u"", u"", u"", u"", lines, nullptr);
  try {
    print.CalculatePageCount();
    FAIL();
  } catch (const Exception& e) {
    EXPECT_EQ(e.Message(), u"Hier lässt sich nicht drucken");
  }
  EXPECT_THROW(TPrintDialog().Execute(), Exception);
}

TEST(TPrintDialog, TakesTheChoiceWithOkAlone) {
  TFakePrinting printing;
  const auto choose = [](TPrintDialog& dialog, bool iOk) {
    dialog.Copies = 4;
    return iOk;
  };
  printing.Expect([&](TPrintDialog& dialog) { return choose(dialog, false); });
  printing.Expect([&](TPrintDialog& dialog) { return choose(dialog, true); });
  TPrintDialog dialog;
  EXPECT_FALSE(dialog.Execute());
  EXPECT_EQ(dialog.Copies, 1);
  EXPECT_TRUE(dialog.Execute());
  EXPECT_EQ(dialog.Copies, 4);
}

}  // namespace
}  // namespace kk
