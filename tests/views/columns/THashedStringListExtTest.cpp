#include "views/columns/THashedStringListExt.h"

#include <gtest/gtest.h>

namespace kk {
namespace {

TEST(THashedStringListExt, EmptyListHasNoValue) {
  EXPECT_EQ(THashedStringListExt().IndexOfValue(u""), -1);
  EXPECT_EQ(THashedStringListExt().IndexOfValue(u"b"), -1);
}

TEST(THashedStringListExt, FirstOfTwoLinesWithTheSameValueWins) {
  THashedStringListExt list;
  for (TStringView line : {u"b", u"a=x", u"c=B", u"d=b", u"e="}) list.Add(line);
  EXPECT_EQ(list.IndexOfValue(u"b"), 2) << "case does not count, a line without a value neither";
  EXPECT_EQ(list.IndexOfValue(u""), 4);
  EXPECT_EQ(list.IndexOfValue(u"y"), -1);
  EXPECT_EQ(list.IndexOfName(u"d"), 3);
  list.SetValue(u"c", u"x");
  EXPECT_EQ(list.IndexOfValue(u"b"), 3);
  list.Delete(0);
  EXPECT_EQ(list.IndexOfValue(u"b"), 2);
  list.Delete(2);
  EXPECT_EQ(list.IndexOfValue(u"b"), -1);
  EXPECT_EQ(list.IndexOfValue(u"x"), 0);
}

}  // namespace
}  // namespace kk
