#include "host/printing/PrintContentJson.h"

#include <gtest/gtest.h>

#include "host/base/Exception.h"

namespace kk {
namespace {

TEST(PrintContentJson, ComesBackAsItWas) {
  const TPrintContent content{u"Küche -> \"ß\"",
                              u"heute",
                              u"Laden",
                              {u"A", u"B", u"C", u"D"},
                              {u"A", u"B", u"C", u"D", u"E"},
                              {{u"Töpfe", u"", u"3", u"4", u"5"}, {}}};
  const auto back = PrintContentsFromJson(PrintContentsToJson({content, {}}));
  ASSERT_EQ(back.size(), 2u);
  EXPECT_EQ(back[0].Title, content.Title);
  EXPECT_EQ(back[0].Date, content.Date);
  EXPECT_EQ(back[0].Source, content.Source);
  EXPECT_EQ(back[0].Headers, content.Headers);
  EXPECT_EQ(back[0].Titles, content.Titles);
  EXPECT_EQ(back[0].Rows, content.Rows);
  EXPECT_TRUE(back[1].Rows.empty());
}

TEST(PrintContentJson, AnUnpairedSurrogateHarmsNothing) {
  TPrintContent content;
  content.Title = u"a";
  content.Title += static_cast<char16_t>(0xD800);
  EXPECT_EQ(PrintContentsFromJson(PrintContentsToJson({content}))[0].Title, u"a\uFFFD");
}

TEST(PrintContentJson, WhatIsSomethingElseRaises) {
  for (const char* json :
       {"", "{", "[]", "{}", "{\"lists\": [1]}", "{\"lists\": [{}]}",
        "{\"lists\": [{\"title\": 1, \"date\": \"\", \"source\": \"\", \"headers\": [], "
        "\"titles\": [], \"rows\": []}]}",
        "{\"lists\": [{\"title\": \"\", \"date\": \"\", \"source\": \"\", \"headers\": [\"A\"], "
        "\"titles\": [], \"rows\": []}]}",
        "{\"lists\": [{\"title\": \"\", \"date\": \"\", \"source\": \"\", \"headers\": [\"A\", "
        "\"B\", \"C\", \"D\"], \"titles\": [], \"rows\": [3]}]}"}) {
    EXPECT_THROW(PrintContentsFromJson(json), Exception) << json;
  }
}

}  // namespace
}  // namespace kk
