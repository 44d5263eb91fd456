#include "host/base/TStringList.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <rapidcheck.h>

#include "host/base/Exception.h"
#include "host/base/THashedStringList.h"

namespace kk {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

TEST(TStringList, HoldsLinesInOrder) {
  TStringList list{u"a", u"b"};
  list.Add(u"c");
  list.Insert(0, u"z");
  list.Insert(4, u"end");
  list.Set(1, u"A");
  list.Delete(2);
  EXPECT_THAT(list.Lines(), ElementsAre(u"z", u"A", u"c", u"end"));
  EXPECT_EQ(list.Get(2), u"c");
  list.Clear();
  EXPECT_EQ(list.GetCount(), 0);
}

TEST(TStringList, AnIndexOutOfRangeRaises) {
  TStringList list{u"a"};
  EXPECT_THROW(list.Get(1), EListError);
  EXPECT_THROW(list.Get(-1), EListError);
  EXPECT_THROW(list.Set(1, u""), EListError);
  EXPECT_THROW(list.Insert(2, u""), EListError);
  EXPECT_THROW(list.Insert(-1, u""), EListError);
  EXPECT_THROW(list.Delete(1), EListError);
  EXPECT_THROW(list.GetName(1), EListError);
  EXPECT_THROW(list.GetValueFromIndex(1), EListError);
}

TEST(TStringList, FindsTheFirstLineWithoutRegardToCase) {
  const TStringList list{u"Uhr", u"MÖBEL", u"möbel"};
  EXPECT_EQ(list.IndexOf(u"Möbel"), 1);
  EXPECT_EQ(list.IndexOf(u"Möb"), -1);
}

TEST(TStringList, TextEndsEachLineWithCrLf) {
  EXPECT_EQ(TStringList({u"a", u"", u"b"}).GetText(), u"a\r\n\r\nb\r\n");
  EXPECT_EQ(TStringList().GetText(), u"");
}

TEST(TStringList, TextIsSplitAtEveryKindOfBreak) {
  TStringList list;
  list.SetText(u"a\r\nb\rc\nd");
  EXPECT_THAT(list.Lines(), ElementsAre(u"a", u"b", u"c", u"d"));
  list.SetText(u"a\n\n");
  EXPECT_THAT(list.Lines(), ElementsAre(u"a", u""));
  list.SetText(u"a\r\n");
  EXPECT_THAT(list.Lines(), ElementsAre(u"a"));
  list.SetText(u"\n\r");
  EXPECT_THAT(list.Lines(), ElementsAre(u"", u""));
  list.SetText(u"");
  EXPECT_THAT(list.Lines(), IsEmpty());
}

TEST(TStringList, SurvivesItsText) {
  EXPECT_TRUE(rc::check("lines as text", [] {
    const auto numbers = *rc::gen::arbitrary<std::vector<int>>();
    TStringList list;
    for (const int number : numbers) list.Add(number % 3 == 0 ? u"" : IntToStr(number));
    TStringList again;
    again.SetText(list.GetText());
    RC_ASSERT(again.Lines() == list.Lines());
  }));
}

TEST(TStringList, IsJoinedAndSplitByADelimiter) {
  TStringList list{u"a", u"", u"b"};
  EXPECT_EQ(list.GetDelimited(u", "), u"a, , b");
  list.SetDelimited(u"0|1", u'|');
  EXPECT_THAT(list.Lines(), ElementsAre(u"0", u"1"));
  list.SetDelimited(u"", u'|');
  EXPECT_THAT(list.Lines(), IsEmpty());
  EXPECT_EQ(list.GetDelimited(u"|"), u"");
}

TEST(TStringList, NamesAndValuesStandAroundTheFirstEqualsSign) {
  const TStringList list{u"a=1=2", u"plain", u"=x", u"b="};
  EXPECT_EQ(list.GetName(0), u"a");
  EXPECT_EQ(list.GetValueFromIndex(0), u"1=2");
  EXPECT_EQ(list.GetName(1), u"");
  EXPECT_EQ(list.GetValueFromIndex(1), u"") << "a line without the sign has neither";
  EXPECT_EQ(list.GetName(2), u"");
  EXPECT_EQ(list.GetValueFromIndex(2), u"x");
  EXPECT_EQ(list.GetValueFromIndex(3), u"");
}

TEST(TStringList, IsReadByName) {
  const TStringList list{u"plain", u"Preis=1", u"preis=2"};
  EXPECT_EQ(list.IndexOfName(u"PREIS"), 1);
  EXPECT_EQ(list.GetValue(u"preis"), u"1");
  EXPECT_EQ(list.IndexOfName(u"plain"), -1) << "a line without a name";
  EXPECT_EQ(list.GetValue(u"fehlt"), u"");
}

TEST(TStringList, IsWrittenByName) {
  TStringList list{u"a=1", u"A=2"};
  list.SetValue(u"A", u"3");
  list.SetValue(u"b", u"");
  EXPECT_THAT(list.Lines(), ElementsAre(u"A=3", u"A=2", u"b="));
}

TEST(TStringList, AssignCopies) {
  TStringList list{u"a"};
  TStringList copy;
  copy.Assign(list);
  list.Add(u"b");
  EXPECT_THAT(copy.Lines(), ElementsAre(u"a"));
  copy.Assign(std::vector<TString>{u"x", u"y"});
  EXPECT_THAT(copy.Lines(), ElementsAre(u"x", u"y"));
}

TEST(THashedStringList, FindsTheFirstLineAndTheFirstNameWithoutRegardToCase) {
  THashedStringList list;
  for (const TStringView line : {u"Uhr", u"Möbel=1", u"uhr", u"MÖBEL=2", u"plain"}) list.Add(line);
  EXPECT_EQ(list.IndexOf(u"UHR"), 0);
  EXPECT_EQ(list.IndexOf(u"möbel=2"), 3);
  EXPECT_EQ(list.IndexOf(u"Möbel"), -1);
  EXPECT_EQ(list.IndexOfName(u"MÖBEL"), 1);
  EXPECT_EQ(list.IndexOfName(u"plain"), -1);
  EXPECT_EQ(list.GetName(3), u"MÖBEL");
  EXPECT_EQ(list.GetValueFromIndex(3), u"2");
  EXPECT_EQ(list.Get(4), u"plain");
  EXPECT_EQ(list.GetCount(), 5);
}

TEST(THashedStringList, KnowsChangesAfterALookUp) {
  THashedStringList list;
  EXPECT_EQ(list.IndexOf(u"a"), -1);
  EXPECT_EQ(list.IndexOfName(u"n"), -1);
  list.Add(u"a");
  list.Add(u"n=1");
  EXPECT_EQ(list.IndexOf(u"A"), 0);
  EXPECT_EQ(list.IndexOfName(u"N"), 1);
  list.Delete(0);
  EXPECT_EQ(list.IndexOf(u"a"), -1);
  EXPECT_EQ(list.IndexOfName(u"n"), 0);
  list.Clear();
  EXPECT_EQ(list.IndexOfName(u"n"), -1);
  EXPECT_EQ(list.GetCount(), 0);
}

TEST(THashedStringList, SetsTheValueOfANameInItsPlaceOrAppendsIt) {
  THashedStringList list;
  for (const TStringView line : {u"n=1", u"plain", u"N=2"}) list.Add(line);
  EXPECT_EQ(list.IndexOf(u"n=1"), 0);
  list.SetValue(u"N", u"3");
  list.SetValue(u"plain", u"4");
  EXPECT_EQ(list.GetCount(), 4);
  EXPECT_EQ(list.Get(0), u"N=3");
  EXPECT_EQ(list.Get(2), u"N=2");
  EXPECT_EQ(list.Get(3), u"plain=4");
  EXPECT_EQ(list.IndexOf(u"n=1"), -1);
  EXPECT_EQ(list.IndexOf(u"n=3"), 0);
  EXPECT_EQ(list.IndexOfName(u"n"), 0);
  EXPECT_EQ(list.IndexOfName(u"plain"), 3);
}

TEST(THashedStringList, AnIndexOutOfRangeRaises) {
  THashedStringList list;
  EXPECT_THROW(list.Get(0), EListError);
  EXPECT_THROW(list.Delete(0), EListError);
}

TEST(THashedStringList, AnswersLikeThePlainScan) {
  EXPECT_TRUE(rc::check("look-ups", [] {
    const auto numbers = *rc::gen::container<std::vector<int>>(rc::gen::inRange(0, 16));
    TStringList plain;
    THashedStringList hashed;
    for (const int number : numbers) {
      const TString name = (number % 2 == 0 ? u"k" : u"K") + IntToStr(number / 2 % 2);
      if (number < 8) {
        const TString line = name + (number > 3 ? u"=v" : u"");
        plain.Add(line);
        hashed.Add(line);
      } else if (number < 12) {
        plain.SetValue(name, IntToStr(number));
        hashed.SetValue(name, IntToStr(number));
      } else if (plain.GetCount() > 0) {
        plain.Delete(number % plain.GetCount());
        hashed.Delete(number % hashed.GetCount());
      }
      RC_ASSERT(hashed.IndexOf(u"k1") == plain.IndexOf(u"k1"));
      RC_ASSERT(hashed.IndexOf(u"K1=V") == plain.IndexOf(u"K1=V"));
      RC_ASSERT(hashed.IndexOfName(u"k0") == plain.IndexOfName(u"k0"));
      RC_ASSERT(hashed.IndexOfName(u"k1") == plain.IndexOfName(u"k1"));
    }
  }));
}

}  // namespace
}  // namespace kk
