#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

#include "apps/cli/ECliUsage.h"
#include "apps/cli/TCliJson.h"
#include "apps/cli/TCliLookup.h"
#include "apps/cli/TCliTreeText.h"
#include "host/base/TLocale.h"

namespace kk {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using TParsed = nlohmann::json;

constexpr TGuid cHouse = GuidLiteral("{11111111-1111-4111-8111-111111111111}");
constexpr TGuid cHall = GuidLiteral("{22222222-2222-4222-8222-222222222222}");
constexpr TGuid cLamp = GuidLiteral("{33333333-3333-4333-8333-333333333333}");
constexpr TGuid cClock = GuidLiteral("{44444444-4444-4444-8444-444444444444}");
constexpr TGuid cShop = GuidLiteral("{55555555-5555-4555-8555-555555555555}");

/// Haus (Lampe, with a note; inside: Flur with Uhr, an auction with a reminder).
TWatchlistInfo Tree() {
  TWatchlistItemInfo lamp{cLamp,
                          u"Lampe",
                          EncodeDateTime({2026, 11, 20, 18, 30, 0, 0}),
                          {},
                          {u"für den Tisch", u"blau"},
                          {}};
  TWatchlistItemInfo clock{cClock, u"Uhr", {}, EncodeDateTime({2026, 12, 1, 20, 0, 0, 250}),
                           {},     {}};
  TWatchlistCategoryInfo hall{cHall, u"Flur", {}, false, {{cShop, u"Shop", {clock}}}, {}};
  TWatchlistCategoryInfo house{cHouse, u"Haus", {u"Alles"}, true, {{cShop, u"Shop", {lamp}}},
                               {hall}};
  return {{{cEmptyGuid, u"<Keiner Kategorie zugewiesen>", {}, false, {}, {}}, house},
          {{cClock, EncodeDateTime({2026, 12, 1, 19, 0, 0, 0}), {0, 1, 2, 3, 4}}}};
}

std::vector<std::string> Shown(const TWatchlistInfo& iTree, const TCliTreeText::TValues& iValues) {
  SetLocaleName("de_DE");
  TCliTreeText text([&](const TGuid&, const TIntf<ISearchResult>&) { return iValues; });
  std::vector<std::string> lines;
  for (const TString& line : text.Tree(iTree)) lines.push_back(ToUtf8(line));
  return lines;
}

TEST(TCliJson, TreeHasTheKeysThatProgramsRead) {
  const TParsed tree = TParsed::parse(TCliJson::Tree(Tree()));
  const TParsed& house = tree["categories"][1];
  EXPECT_EQ(house["id"], "{11111111-1111-4111-8111-111111111111}");
  EXPECT_EQ(house["name"], "Haus");
  EXPECT_EQ(house["description"], TParsed({"Alles"}));
  EXPECT_EQ(house["expanded"], true);
  const TParsed& group = house["groups"][0];
  EXPECT_EQ(group["pluginId"], "{55555555-5555-4555-8555-555555555555}");
  EXPECT_EQ(group["name"], "Shop");
  EXPECT_EQ(group["items"][0], TParsed({{"id", "{33333333-3333-4333-8333-333333333333}"},
                                        {"name", "Lampe"},
                                        {"lastUpdate", "2026-11-20T18:30:00"},
                                        {"endTime", nullptr},
                                        {"note", {"für den Tisch", "blau"}}}));
  const TParsed& clock = house["categories"][0]["groups"][0]["items"][0];
  EXPECT_EQ(clock["lastUpdate"], nullptr);
  EXPECT_EQ(clock["endTime"], "2026-12-01T20:00:00.250");
  EXPECT_EQ(clock["note"], TParsed::array());
  EXPECT_EQ(tree["reminders"],
            TParsed::array({{{"id", "{44444444-4444-4444-8444-444444444444}"},
                             {"time", "2026-12-01T19:00:00"},
                             {"types", {"sound", "window", "sms", "calendar", "email"}},
                             {"soundFile", nullptr}}}));
}

TEST(TCliJson, EmptyTreeHasEmptyLists) {
  EXPECT_EQ(TParsed::parse(TCliJson::Tree({})),
            TParsed({{"categories", TParsed::array()}, {"reminders", TParsed::array()}}));
}

TEST(TCliJson, WhatATerminalWouldObeyIsEscapedAndReadsBackEqual) {
  TWatchlistInfo tree = Tree();
  const TString name = u"a\u001B[31m\u009B1m\u0085\u007F\n\"ü\\";
  tree.Categories[1].Name = name;
  const std::string text = TCliJson::Tree(tree);
  for (size_t i = 0; i < text.size(); ++i) {
    const auto byte = static_cast<unsigned char>(text[i]);
    ASSERT_TRUE(byte == '\n' || (byte >= 0x20 && byte != 0x7F)) << i;
  }
  EXPECT_EQ(FromUtf8(text).find(u'\u009B'), TString::npos);
  EXPECT_EQ(TParsed::parse(text)["categories"][1]["name"], ToUtf8(name));
}

TEST(TCliJson, ALoneSurrogateMakesNoBrokenUtf8) {
  TWatchlistInfo tree = Tree();
  tree.Categories[1].Name = TString(1, char16_t{0xD800});
  EXPECT_EQ(TParsed::parse(TCliJson::Tree(tree))["categories"][1]["name"], "\uFFFD");
}

TEST(TCliJson, ItemHasSourceCategoryValuesAndReminder) {
  const TWatchlistInfo tree = Tree();
  TCliItemDetails details;
  details.Item = tree.Categories[1].Groups[0].Items[0];
  details.Source = u"Shop";
  details.Category = u"Haus";
  details.Values = {{u"Preis", u"10,00 EUR"}};
  TParsed item = TParsed::parse(TCliJson::Item(details));
  EXPECT_EQ(item["name"], "Lampe");
  EXPECT_EQ(item["source"], "Shop");
  EXPECT_EQ(item["category"], "Haus");
  EXPECT_EQ(item["values"], TParsed::array({{{"title", "Preis"}, {"value", "10,00 EUR"}}}));
  EXPECT_EQ(item["reminder"], nullptr);
  details.Reminder = &tree.Reminders[0];
  item = TParsed::parse(TCliJson::Item(details));
  EXPECT_EQ(item["reminder"]["time"], "2026-12-01T19:00:00");
}

TEST(TCliJson, UnknownKindOfReminderIsAQuestionMark) {
  EXPECT_EQ(ReminderTypeName(5), u"?");
  EXPECT_EQ(ReminderTypeName(-1), u"?");
}

TEST(TCliTreeText, DrawsTheTree) {
  EXPECT_THAT(
      Shown(Tree(), {{u"Name", u"Lampe"}, {u"Preis", u"10,00 EUR"}}),
      ElementsAre(
          "Beobachten: 2 Artikel in 3 Kategorien",
          "├─ <Keiner Kategorie zugewiesen>  {00000000-0000-0000-0000-000000000000}",
          "└─ Haus  {11111111-1111-4111-8111-111111111111}",  //
          "   │  Alles",                                      //
          "   ├─ [Shop]", "   │  └─ Lampe  {33333333-3333-4333-8333-333333333333}",
          "   │     10,00 EUR · Stand 20.11.2026, 18:30:00",  //
          "   │     Notiz: für den Tisch",                    //
          "   │     Notiz: blau",                             //
          "   └─ Flur  {22222222-2222-4222-8222-222222222222}", "      └─ [Shop]",
          "         └─ Uhr  {44444444-4444-4444-8444-444444444444}",
          "            Lampe · 10,00 EUR · endet 01.12.2026, 20:00:00 · Stand nie · Erinnerung "
          "01.12.2026, 19:00:00 (Sound, Meldungsfenster, SMS, Kalender, E-Mail)"));
}

TEST(TCliTreeText, OnlyTheFirstFourColumnsAndNoLongValuesStandInTheTree) {
  const auto lines = Shown(Tree(), {{u"Adresse", TString(41, u'x')},
                                    {u"Leer", u""},
                                    {u"Stück", TString(40, u'y')},
                                    {u"Vier", u"4"},
                                    {u"Fünf", u"5"}});
  EXPECT_EQ(lines[6], "   │     " + std::string(40, 'y') + " · 4 · Stand 20.11.2026, 18:30:00");
}

TEST(TCliTreeText, NamesLoseWhatATerminalWouldObey) {
  TWatchlistInfo tree = Tree();
  tree.Categories[1].Name = u"Haus\u001B[2J";
  tree.Categories[1].Description = {u"\u001B]0;x\u0007Alles"};
  tree.Categories[1].Groups[0].Name = u"Sh\u0007op";
  tree.Categories[1].Groups[0].Items[0].Name = u"Lam\u202Epe\nX";
  for (const std::string& line : Shown(tree, {{u"Preis", u"\u001B[31m1"}})) {
    EXPECT_EQ(line.find('\x1B'), std::string::npos);
    EXPECT_EQ(line.find('\n'), std::string::npos);
  }
}

TEST(TCliTreeText, ItemShowsEachRowOnce) {
  SetLocaleName("de_DE");
  const TWatchlistInfo tree = Tree();
  TCliItemDetails details;
  details.Item = tree.Categories[1].Categories[0].Groups[0].Items[0];
  details.Source = u"Shop";
  details.Category = u"Haus > Flur";
  details.Values = {{u"Name", u"Uhr"}, {u"Preis", u"12,50 EUR"}, {u"Leer", u""}};
  details.Reminder = &tree.Reminders[0];
  std::vector<std::string> lines;
  for (const TString& line : TCliTreeText::Item(details)) lines.push_back(ToUtf8(line));
  EXPECT_THAT(lines,
              ElementsAre("Name:       Uhr",  //
                          "Id:         {44444444-4444-4444-8444-444444444444}",
                          "Quelle:     Shop",         //
                          "Kategorie:  Haus > Flur",  //
                          "Stand:      nie",          //
                          "Endet:      01.12.2026, 20:00:00", "Preis:      12,50 EUR",
                          "Erinnerung: 01.12.2026, 19:00:00 (Sound, Meldungsfenster, SMS, "
                          "Kalender, E-Mail)"));
}

class TCliLookupTest : public testing::Test {
 protected:
  std::string Refusal(const std::function<void()>& iCall) {
    try {
      iCall();
    } catch (const ECliUsage& e) {
      return ToUtf8(e.Message() + u" | " + e.Hint());
    }
    return "accepted";
  }

  TWatchlistInfo Info = Tree();
};

TEST_F(TCliLookupTest, FindsByNameWithoutRegardToCase) {
  const TCliLookup lookup(Info);
  EXPECT_EQ(lookup.Item(u"LAMPE").Id, cLamp);
  EXPECT_EQ(lookup.Category(u"flur").Id, cHall);
  EXPECT_EQ(lookup.Category(u"<keiner kategorie zugewiesen>").Id, cEmptyGuid);
}

TEST_F(TCliLookupTest, FindsByIdWithAndWithoutBraces) {
  const TCliLookup lookup(Info);
  EXPECT_EQ(lookup.Item(u"{33333333-3333-4333-8333-333333333333}").Name, u"Lampe");
  EXPECT_EQ(lookup.Item(u"33333333-3333-4333-8333-333333333333").Name, u"Lampe");
  EXPECT_EQ(lookup.Category(u"{22222222-2222-4222-8222-222222222222}").Name, u"Flur");
}

TEST_F(TCliLookupTest, AnIdGoesBeforeAName) {
  Info.Categories[1].Name = GUIDToString(cHall);
  EXPECT_EQ(TCliLookup(Info).Category(GUIDToString(cHall)).Id, cHall);
  Info.Categories[1].Categories[0].Id = NewGuid();
  EXPECT_EQ(TCliLookup(Info).Category(GUIDToString(cHall)).Id, cHouse);
}

TEST_F(TCliLookupTest, UnknownNameIsRefused) {
  const TCliLookup lookup(Info);
  EXPECT_EQ(Refusal([&] { lookup.Item(u"Haus"); }),
            "Den Artikel gibt es nicht: Haus | Namen und Ids zeigt: kaufkobolde-cli list");
  EXPECT_THAT(Refusal([&] { lookup.Category(u"{33333333-3333-4333-8333-333333333333}"); }),
              HasSubstr("Die Kategorie gibt es nicht"));
  EXPECT_THAT(Refusal([&] { lookup.ItemOrCategory(u"x\u001B[1m"); }),
              HasSubstr("Den Artikel oder die Kategorie gibt es nicht: x |"));
}

TEST_F(TCliLookupTest, AmbiguousNameIsRefusedWithAllCandidates) {
  Info.Categories[1].Categories[0].Groups[0].Items[0].Name = u"lampe";
  const TCliLookup lookup(Info);
  EXPECT_EQ(Refusal([&] { lookup.Item(u"Lampe"); }),
            "Den Namen gibt es 2-mal: Lampe | Gemeint sein kann:\n"
            "  {33333333-3333-4333-8333-333333333333}  Lampe (in Haus)\n"
            "  {44444444-4444-4444-8444-444444444444}  lampe (in Haus > Flur)");
  EXPECT_EQ(lookup.Item(GUIDToString(cClock)).Id, cClock);
}

TEST_F(TCliLookupTest, TellsPlaceAndNumbers) {
  const TCliLookup lookup(Info);
  const TWatchlistItemInfo& clock = lookup.Item(u"Uhr");
  EXPECT_EQ(lookup.PathOf(clock), u"Haus > Flur");
  EXPECT_EQ(lookup.GroupOf(clock)->Name, u"Shop");
  EXPECT_EQ(lookup.ItemCount(), 2u);
  EXPECT_EQ(lookup.Items()[0]->Id, cLamp);
  EXPECT_EQ(lookup.CountCategories(u"HAUS"), 1u);
  EXPECT_EQ(lookup.FindItem(cHouse), nullptr);
  EXPECT_EQ(lookup.GroupOf({}), nullptr);
  EXPECT_EQ(lookup.PathOf({}), u"");
}

}  // namespace
}  // namespace kk
