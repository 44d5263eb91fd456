#include "sources/page/TPageList.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "host/controls/TPanel.h"
#include "sources/page/PageConsts.h"
#include "sources/page/TPageConverter.h"
#include "sources/page/TPageSearchResult.h"
#include "tests/support/TFakeOpener.h"
#include "tests/support/TFakeSource.h"
#include "tests/support/TTestMainLoop.h"

namespace kk {
namespace {

using testing::ElementsAre;

TIntf<ISearchResult> Page(TStringView iName, const std::string& iPath, TOffer iOffer = {},
                          TDateTime iChanged = {}) {
  TPageData data = NewPageData(TPageAddress::Parse("https://shop.example/" + iPath).value(), iName);
  data.Product.Offer = std::move(iOffer);
  data.Changed = iChanged;
  return MakeIntf<TPageSearchResult>(std::move(data));
}

TOffer Price(int64_t iUnits, int iScale, TStringView iCurrency) {
  TOffer offer;
  offer.Price = TPrice(iUnits, iScale);
  offer.Currency = iCurrency;
  return offer;
}

class PageList : public testing::Test {
 protected:
  void Show(const std::vector<TIntf<ISearchResult>>& iResults) {
    const auto list = NewInterfaceList();
    for (const auto& result : iResults) list->Add(result);
    List.SetResults(list);
  }
  std::vector<std::string> Row(int iRow) {
    std::vector<std::string> texts;
    for (const int column : List.Table().ColumnOrder()) {
      texts.push_back(ToUtf8(List.Table().Cell(iRow, column).Text));
    }
    return texts;
  }
  std::vector<std::string> NamesBy(const TGuid& iColumn, bool iDescending) {
    List.Table().SetSort(List.Table().IndexOfColumn(iColumn), iDescending);
    std::vector<std::string> names;
    for (int row = 0; row < List.Table().GetCount(); ++row) {
      names.push_back(ToUtf8(List.Table().Results(row)->GetName()));
    }
    return names;
  }

  TTestMainLoop Loop;
  TFakeOpener Opener;
  TPanel Panel{nullptr};
  TPageList List{u"", u"Nichts da."};
};

TEST_F(PageList, ShowsWhatThePageSaysInTheWordsOfTheConverter) {
  std::vector<std::string> captions;
  for (const int column : List.Table().ColumnOrder()) {
    captions.push_back(ToUtf8(List.Table().Columns(column).Caption));
  }
  EXPECT_THAT(captions, ElementsAre("Name", "Preis", "Verfügbarkeit", "Verkäufer", "Ende",
                                    "Letzte Änderung", "Adresse"));
  TOffer offer = Price(1239, 0, u"EUR");
  offer.Availability = TAvailability::avInStock;
  offer.Seller = u"Bob\n& Söhne";
  offer.EndTime = EncodeDateTime({2026, 12, 6, 20, 5, 0, 0});
  const TDateTime changed = EncodeDateTime({2026, 11, 20, 18, 30, 0, 0});
  Show({Page(u"Am\r\nboss", "p", offer, changed), Page(u"neu", "q"), FakeResult(u"fremd")});
  EXPECT_THAT(Row(0),
              ElementsAre("Am boss", "1.239,00 EUR", "Auf Lager", "Bob & Söhne", "06.12.2026 20:05",
                          "20.11.2026 18:30", "https://shop.example/p"));
  EXPECT_THAT(Row(1), ElementsAre("neu", "", "", "", "", "", "https://shop.example/q"));
  EXPECT_THAT(Row(2), ElementsAre("", "", "", "", "", "", ""));
  EXPECT_EQ(List.Table().Columns(1).Alignment, TResultAlignment::raRight);
  EXPECT_EQ(List.Table().EmptyText(), u"Nichts da.");
}

TEST_F(PageList, PricesSortAsNumbersEachCurrencyByItselfAndUnknownOnesLast) {
  Show({Page(u"teuer", "1", Price(1000, 0, u"EUR")), Page(u"ohne", "2"),
        Page(u"billig", "3", Price(99995, 3, u"EUR")), Page(u"dollar", "4", Price(1, 0, u"USD"))});
  EXPECT_THAT(NamesBy(cPageColumnPrice, false), ElementsAre("billig", "teuer", "dollar", "ohne"));
  EXPECT_THAT(NamesBy(cPageColumnPrice, true), ElementsAre("dollar", "teuer", "billig", "ohne"));
}

TEST_F(PageList, OtherColumnsSortByWhatTheyMean) {
  TOffer early, late;
  early.EndTime = EncodeDateTime({2026, 12, 6, 20, 5, 0, 0});
  early.Availability = TAvailability::avSoldOut;
  early.Seller = u"Zoe";
  late.EndTime = EncodeDateTime({2027, 1, 1, 0, 0, 0, 0});
  late.Availability = TAvailability::avInStock;
  late.Seller = u"äd";
  const TDateTime day = EncodeDateTime({2026, 11, 20, 0, 0, 0, 0});
  Show({Page(u"b", "1"), Page(u"Ä", "3", late, day), Page(u"a", "2", early, day.PlusMs(1))});
  EXPECT_THAT(NamesBy(cPageColumnName, false), ElementsAre("a", "Ä", "b"));
  EXPECT_THAT(NamesBy(cPageColumnEnd, false), ElementsAre("a", "Ä", "b"));
  EXPECT_THAT(NamesBy(cPageColumnAvailability, false), ElementsAre("Ä", "a", "b"));
  EXPECT_THAT(NamesBy(cPageColumnSeller, false), ElementsAre("Ä", "a", "b"));
  EXPECT_THAT(NamesBy(cPageColumnChanged, true), ElementsAre("a", "Ä", "b"));
  EXPECT_THAT(NamesBy(cPageColumnAddress, false), ElementsAre("b", "a", "Ä"));
  Show({FakeResult(u"fremd"), Page(u"a", "1")});
  EXPECT_THAT(NamesBy(cPageColumnName, true), ElementsAre("a", "fremd"));
}

TEST_F(PageList, DoubleClickReturnAndTheMenuOpenThePage) {
  List.SetContainer(&Panel);
  Show({Page(u"a", "1"), Page(u"b", "2"), FakeResult(u"fremd")});
  List.Table().DoubleClick(1);
  EXPECT_THAT(Opener.Urls, ElementsAre("https://shop.example/2"));
  List.Table().PressKey(cKeyReturn);
  ASSERT_TRUE(List.Table().OpenPopupMenu(0, 0));
  TMenuItem& open = *List.Table().PopupEntries().at(0);
  EXPECT_EQ(open.Caption(), u"Seite im Browser öffnen");
  EXPECT_TRUE(open.Default());
  open.Click();
  EXPECT_EQ(Opener.Urls.size(), 3u);
  EXPECT_EQ(Opener.Urls[2], "https://shop.example/1");
  List.Table().DoubleClick(2);
  List.SetResults(nullptr);
  List.Table().OpenPopupMenu(-1, -1);
  EXPECT_FALSE(open.Click());
  EXPECT_EQ(Opener.Urls.size(), 3u);
}

}  // namespace
}  // namespace kk
