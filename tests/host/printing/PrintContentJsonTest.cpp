#include "host/printing/PrintContentJson.h"

#include <gtest/gtest.h>

#include <map>

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

std::string RefusalOf(const std::string& iJson) {
  try {
    PrintContentsFromJson(iJson);
  } catch (const Exception& e) {
    return ToUtf8(e.Message());
  }
  return "";
}

// A list with one of its parts replaced.
std::string ListWith(const std::string& iPart, const std::string& iValue) {
  std::string list = "{\"lists\": [{";
  for (const auto& [part, value] :
       std::map<std::string, std::string>{{"title", "\"\""},
                                          {"date", "\"\""},
                                          {"source", "\"\""},
                                          {"headers", "[\"A\", \"B\", \"C\", \"D\"]"},
                                          {"titles", "[]"},
                                          {"rows", "[]"}}) {
    list += (list.back() == '{' ? "\"" : ", \"") + part + "\": " + (part == iPart ? iValue : value);
  }
  return list + "}]}";
}

constexpr char cIncomplete[] = "Der Auftrag zum Drucken ist unverständlich, es fehlt etwas";

TEST(PrintContentJson, EveryPartMustBeWhatItIsSupposedToBe) {
  EXPECT_EQ(RefusalOf(ListWith("", "")), "");
  for (const char* text : {"title", "date", "source"}) {
    for (const char* value : {"null", "7", "[]", "{}"}) {
      EXPECT_EQ(RefusalOf(ListWith(text, value)), cIncomplete) << text << value;
    }
  }
  for (const char* list : {"headers", "titles", "rows"}) {
    for (const char* value : {"null", "7", "\"A\"", "{}", "{\"a\": \"b\"}", "[1]", "[null]"}) {
      EXPECT_EQ(RefusalOf(ListWith(list, value)), cIncomplete) << list << value;
    }
  }
  EXPECT_EQ(RefusalOf(ListWith("headers", "[\"1\", \"2\", \"3\"]")), cIncomplete);
  EXPECT_EQ(RefusalOf(ListWith("headers", "[\"1\", \"2\", \"3\", \"4\", \"5\"]")), cIncomplete);
  for (const char* lists :
       {"{\"lists\": null}", "{\"lists\": {}}", "{\"lists\": \"\"}", "{}", "7"}) {
    EXPECT_EQ(RefusalOf(lists), cIncomplete) << lists;
  }
}

TEST(PrintContentJson, WhatIsCutOffAnywhereIsToldWithThePlace) {
  const std::string whole = ListWith("rows", "[[\"Töpfe\", \"1,00 €\"]]");
  EXPECT_EQ(RefusalOf(whole), "");
  for (size_t length = 0; length < whole.size(); ++length) {
    EXPECT_EQ(RefusalOf(whole.substr(0, length)),
              "Der Auftrag zum Drucken ist unverständlich, ab dem " + std::to_string(length + 1) +
                  ". Byte");
  }
}

TEST(PrintContentJson, HostileDepthAndBytesAreRefused) {
  EXPECT_NE(RefusalOf(std::string(1000000, '[')), "");
  EXPECT_EQ(RefusalOf("{\"lists\": " + std::string(100000, '[') + std::string(100000, ']') + "}"),
            cIncomplete);
  EXPECT_NE(RefusalOf(ListWith("title", "\"\xFF\xFE\"")), "");
  EXPECT_NE(RefusalOf(ListWith("title", "\"\\ud800\"")), "");
  EXPECT_EQ(RefusalOf("{\"lists\": [1e999999]}"), cIncomplete);
}

}  // namespace
}  // namespace kk
