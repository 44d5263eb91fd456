#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "TFileWorld.h"
#include "host/base/Exception.h"
#include "persistence/TWatchlistItemLoader.h"
#include "persistence/TWatchlistItemSaver.h"

namespace kk {
namespace {

constexpr TGuid cCategory = GuidLiteral("{00000000-0000-0000-0000-0000000000A1}");
constexpr TGuid cResult = GuidLiteral("{00000000-0000-0000-0000-0000000000C3}");

class TWatchlistItemStream : public testing::Test {
 protected:
  TWatchlistItem& Add() {
    TWatchlistItem& item = Items.Add(std::make_unique<TWatchlistItem>());
    item.SetParentCategoryId(cCategory);
    item.SetSearchResultId(cResult);
    return item;
  }
  std::string Saved() const {
    TMemoryStream stream;
    TWatchlistItemSaver::SaveToStream(stream, Items, {});
    return stream.Bytes();
  }
  void Load(const std::string& iText) {
    TMemoryStream stream(iText);
    TWatchlistItemLoader::LoadFromStream(stream, Loaded, {}, false);
  }

  TLogRecorder Log;
  TTestModelRoot Root;
  TLstWatchlistItem Items{true};
  TLstWatchlistItem Loaded{true};
};

TEST_F(TWatchlistItemStream, WritesTheElementsInTheirOrder) {
  TWatchlistItem& item = Add();
  item.SetLastUpdateDate(EncodeDateTime({2026, 11, 20, 18, 30, 0, 250}));
  item.SetDescription({u"eins", u"zwei"});
  EXPECT_EQ(Saved(),
            "\xEF\xBB\xBF<Items>\r\n"
            "  <Item>\r\n"
            "    <Category>{00000000-0000-0000-0000-0000000000A1}</Category>\r\n"
            "    <SearchResult>{00000000-0000-0000-0000-0000000000C3}</SearchResult>\r\n"
            "    <LastUpdateDate>2026-11-20T18:30:00.250</LastUpdateDate>\r\n"
            "    <Description>eins|zwei</Description>\r\n"
            "  </Item>\r\n"
            "</Items>\r\n");
}

TEST_F(TWatchlistItemStream, ANoteOfBlanksHasNoElement) {
  Add().SetDescription({u"  ", u"\t"});
  EXPECT_THAT(Saved(), testing::Not(testing::HasSubstr("Description")));
}

TEST_F(TWatchlistItemStream, AnItemNeverRefreshedHasNoDate) {
  Add();
  EXPECT_THAT(Saved(), testing::Not(testing::HasSubstr("LastUpdateDate")));
}

TEST_F(TWatchlistItemStream, AnEmptyListWritesNothingAtAll) { EXPECT_EQ(Saved(), ""); }

TEST_F(TWatchlistItemStream, SavingDoesNotTouchTheSearchResult) {
  // Its own id is what is stored, even where the result would give another one.
  TWatchlistItem& item = Add();
  const TIntf<ISearchResult> result = FakeResult(u"A");
  item.SetSearchResult(result);
  item.SetSearchResultId(cResult);
  EXPECT_THAT(Saved(), testing::HasSubstr("{00000000-0000-0000-0000-0000000000C3}"));
}

TEST_F(TWatchlistItemStream, ComesBackAsItWas) {
  TWatchlistItem& item = Add();
  item.SetLastUpdateDate(EncodeDateTime({2026, 11, 20, 18, 30, 0, 250}));
  item.SetDescription({u" eins ", u"", u"drei"});
  Load(Saved());
  ASSERT_EQ(Loaded.GetCount(), 1);
  const TWatchlistItem& loaded = Loaded.GetItems(0);
  EXPECT_EQ(loaded.ParentCategoryId(), cCategory);
  EXPECT_EQ(loaded.SearchResultId(), cResult);
  EXPECT_EQ(loaded.LastUpdateDate(), item.LastUpdateDate());
  EXPECT_EQ(loaded.Description().Lines(), item.Description().Lines());
  EXPECT_FALSE(loaded.SearchResult());
}

TEST_F(TWatchlistItemStream, TheOrderOfTheListStays) {
  for (const char16_t* note : {u"1", u"2", u"3"}) Add().SetDescription({note});
  Load(Saved());
  ASSERT_EQ(Loaded.GetCount(), 3);
  EXPECT_EQ(Loaded.GetItems(0).Description().Get(0), u"1");
  EXPECT_EQ(Loaded.GetItems(2).Description().Get(0), u"3");
}

TEST_F(TWatchlistItemStream, ARecordWithABrokenIdIsDroppedWithoutALogLine) {
  const std::string good =
      "<Item><Category>{00000000-0000-0000-0000-0000000000A1}</Category>"
      "<SearchResult>{00000000-0000-0000-0000-0000000000C3}</SearchResult></Item>";
  const std::string noCategory =
      "<Item><SearchResult>{00000000-0000-0000-0000-0000000000C3}</SearchResult></Item>";
  const std::string noResult =
      "<Item><Category>{00000000-0000-0000-0000-0000000000A1}</Category>"
      "<SearchResult>kaputt</SearchResult></Item>";
  Load("<Items>" + good + noCategory + noResult + good + "</Items>");
  EXPECT_EQ(Loaded.GetCount(), 2);
  EXPECT_THAT(Log.Lines(), testing::IsEmpty());
  EXPECT_THAT(Root.Notes(), testing::IsEmpty());  // nobody hears of items that never were
}

TEST_F(TWatchlistItemStream, TakesEveryElementAsARecordWhateverItsName) {
  Load(
      "<Irgendwas><X><Category>{00000000-0000-0000-0000-0000000000A1}</Category>"
      "<SearchResult>{00000000-0000-0000-0000-0000000000C3}</SearchResult></X></Irgendwas>");
  ASSERT_EQ(Loaded.GetCount(), 1);
  EXPECT_TRUE(Loaded.GetItems(0).LastUpdateDate().IsZero());
  EXPECT_EQ(Loaded.GetItems(0).Description().GetCount(), 0);
}

TEST_F(TWatchlistItemStream, ADateThatIsNoneReadsAsNever) {
  Load(
      "<Items><Item><Category>{00000000-0000-0000-0000-0000000000A1}</Category>"
      "<SearchResult>{00000000-0000-0000-0000-0000000000C3}</SearchResult>"
      "<LastUpdateDate>gestern</LastUpdateDate></Item></Items>");
  ASSERT_EQ(Loaded.GetCount(), 1);
  EXPECT_TRUE(Loaded.GetItems(0).LastUpdateDate().IsZero());
}

TEST_F(TWatchlistItemStream, AStreamThatIsNoXmlFails) {
  EXPECT_THROW(Load("<Items>"), EConvertError);
  EXPECT_THROW(Load("kein XML"), EConvertError);
}

TEST_F(TWatchlistItemStream, AnEmptyStreamHasNoRecords) {
  Load("");
  EXPECT_EQ(Loaded.GetCount(), 0);
}

}  // namespace
}  // namespace kk
