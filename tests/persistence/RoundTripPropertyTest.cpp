#include <gtest/gtest.h>
#include <rapidcheck.h>
#include <rapidcheck/gtest.h>

#include "TFileWorld.h"

// Whatever the user writes comes back as it was; only what XML can't hold at all may go.
namespace kk {
namespace {

constexpr TGuid cFirst = GuidLiteral("{5E000000-0000-0000-0000-000000000001}");
constexpr TGuid cSecond = GuidLiteral("{5E000000-0000-0000-0000-000000000002}");

// What XML 1.0 (production 2) can hold of a text.
TString Storable(const TString& iText) {
  TString kept;
  for (size_t i = 0; i < iText.size(); ++i) {
    const char16_t unit = iText[i];
    const bool high = unit >= 0xD800 && unit <= 0xDBFF;
    const bool pair =
        high && i + 1 < iText.size() && iText[i + 1] >= 0xDC00 && iText[i + 1] <= 0xDFFF;
    if (pair) {
      kept += unit;
      kept += iText[++i];
    } else if (unit == u'\t' || unit == u'\r' || unit == u'\n' || (unit >= 0x20 && unit < 0xD800) ||
               (unit >= 0xE000 && unit <= 0xFFFD)) {
      kept += unit;
    }
  }
  return kept;
}

// Lines are stored as one text: no lines and one empty line are the same.
std::vector<TString> StorableLines(const TStringList& iLines) {
  std::vector<TString> lines;
  for (const TString& line : iLines.Lines()) lines.push_back(Storable(line));
  if (lines.size() == 1 && lines[0].empty()) lines.clear();
  return lines;
}
std::vector<TString> StorableNote(const TStringList& iLines) {
  return Trim(iLines.GetText()).empty() ? std::vector<TString>() : StorableLines(iLines);
}

rc::Gen<TString> AnyText() {
  const std::vector<TString> pieces = {u"a",
                                       u"Ä",
                                       u" ",
                                       u"\t",
                                       u"\n",
                                       u"\r",
                                       u"\r\n",
                                       u"]]>",
                                       u"<",
                                       u"&amp;",
                                       u"&#0;",
                                       u"\"'",
                                       u"😀",
                                       u"<!--",
                                       u"-->",
                                       u"<![CDATA[",
                                       u"\u0001",
                                       u"\u007F",
                                       u"\u0085",
                                       u"\u2028",
                                       u"\uFEFF",
                                       u"\uFFFE",
                                       u"=",
                                       u"%s",
                                       TString(1, char16_t(0xD83D)),
                                       TString(1, char16_t(0xDE00)),
                                       TString(1, u'\0'),
                                       u"</Name>"};
  return rc::gen::map(
      rc::gen::container<std::vector<TString>>(rc::gen::oneOf(
          rc::gen::elementOf(pieces),
          rc::gen::map(rc::gen::inRange(0, 0x10000),
                       [](int unit) { return TString(1, static_cast<char16_t>(unit)); }))),
      [](const std::vector<TString>& parts) {
        TString text;
        for (const TString& part : parts) text += part;
        std::erase(text, u'|');
        return text;
      });
}

void FillLines(TStringList& ioLines) {
  ioLines.Assign(*rc::gen::resize(4, rc::gen::container<std::vector<TString>>(AnyText())));
}

// One line for each thing of a tree, whole; the order of each group as it is or turned round.
void Describe(const TLstWatchlistCategory& iTree, bool iAsStored,
              std::vector<std::string>& ioText) {
  const auto quoted = [](const std::vector<TString>& iLines) {
    std::string text;
    for (const TString& line : iLines) text += " \"" + ToUtf8(line) + "\"";
    return text;
  };
  for (const TWatchlistCategory* category : iTree) {
    const auto lines =
        iAsStored ? StorableLines(category->Description()) : category->Description().Lines();
    ioText.push_back("category " + ToUtf8(GUIDToString(category->Id())) +
                     quoted({iAsStored ? Storable(category->Name()) : category->Name()}) +
                     (category->Expanded() ? " +" : " -") + quoted(lines));
    for (const TWatchlistPlugin* group : category->LstPlugin()) {
      ioText.push_back("group " + ToUtf8(group->GetName()));
      const auto start = static_cast<ptrdiff_t>(ioText.size());
      for (const TWatchlistItem* item : group->LstItem()) {
        const auto note =
            iAsStored ? StorableNote(item->Description()) : item->Description().Lines();
        ioText.push_back("item " + ToUtf8(item->GetName()) + " " +
                         ToUtf8(GUIDToString(item->SearchResultId())) + " " +
                         ToUtf8(GUIDToString(item->ParentCategoryId())) + " " +
                         std::to_string(item->LastUpdateDate().Ms()) + quoted(note));
      }
      if (iAsStored) std::reverse(ioText.begin() + start, ioText.end());
    }
    ioText.emplace_back("children");
    Describe(category->LstCategory(), iAsStored, ioText);
    ioText.emplace_back("end");
  }
}

void FillGroups(TWatchlistCategory& ioCategory, const std::vector<TIntf<TFakeSource>>& iSources) {
  for (const auto& source : iSources) {
    for (int count = *rc::gen::inRange(0, 4); count > 0; --count) {
      TWatchlistItem& item =
          AddItem(ioCategory, source, FromUtf8("Artikel " + std::to_string(count)));
      FillLines(item.Description());
      item.SetLastUpdateDate(TDateTime::FromMs(*rc::gen::inRange<int64_t>(0, 4'000'000'000'000)));
    }
  }
}

void FillTree(TLstWatchlistCategory& ioTree, const std::vector<TIntf<TFakeSource>>& iSources,
              int iDepth, int iAtLeast = 0) {
  for (int count = *rc::gen::inRange(iAtLeast, 4); count > 0; --count) {
    TWatchlistCategory& category = AddCategory(ioTree, *AnyText());
    FillLines(category.Description());
    category.SetExpanded(*rc::gen::arbitrary<bool>());
    FillGroups(category, iSources);
    if (iDepth > 1) FillTree(category.LstCategory(), iSources, iDepth - 1);
  }
}

RC_GTEST_PROP(RoundTrip, AnyTreeComesBackEqual, ()) {
  TFileWorld world;
  const std::vector<TIntf<TFakeSource>> sources = {world.AddSource(u"Eins", cFirst),
                                                   world.AddSource(u"Zwei", cSecond)};
  FillTree(world.Tree(), sources, 3, 1);
  std::vector<std::string> expected;
  Describe(world.Tree(), true, expected);

  world.SaveAll();
  world.ForgetTree();
  RC_ASSERT(world.Load());
  std::vector<std::string> actual;
  Describe(world.Tree(), false, actual);
  RC_ASSERT(actual == expected);

  // A second save and load turn the groups round once more and change nothing else.
  expected.clear();
  Describe(world.Tree(), true, expected);
  world.SaveAll();
  world.ForgetTree();
  RC_ASSERT(world.Load());
  actual.clear();
  Describe(world.Tree(), false, actual);
  RC_ASSERT(actual == expected);
}

TEST(RoundTrip, AHundredThousandCharactersComeBackEqual) {
  TFileWorld world;
  const auto source = world.AddSource(u"Eins", cFirst);
  TString text;
  for (int i = 0; i < 100'000; ++i) text += static_cast<char16_t>(u'!' + i % 90);
  std::erase(text, u'|');
  TWatchlistCategory& category = AddCategory(world.Tree(), text);
  category.SetDescription({text, text});
  AddItem(category, source, u"Uhr").SetDescription({text});
  world.SaveAll();
  world.ForgetTree();
  ASSERT_TRUE(world.Load());
  const TWatchlistCategory& loaded = world.Tree().GetItems(0);
  EXPECT_EQ(loaded.Name(), text);
  EXPECT_EQ(loaded.Description().Lines(), (std::vector<TString>{text, text}));
  EXPECT_EQ(loaded.LstPlugin().GetItems(0).LstItem().GetItems(0).Description().Lines(),
            (std::vector<TString>{text}));
}

TEST(RoundTrip, AHundredThousandItemsAreSavedAndLoadedInNoTime) {
  constexpr int cCategories = 1000;
  constexpr int cItems = 100;
  TFileWorld world;
  const auto source = world.AddSource(u"Eins", cFirst);
  for (int i = 0; i < cCategories; ++i) {
    TWatchlistCategory& category = AddCategory(world.Tree(), FromUtf8(std::to_string(i)));
    for (int j = 0; j < cItems; ++j) AddItem(category, source, u"Uhr");
  }
  world.SaveAll();
  world.ForgetTree();
  ASSERT_TRUE(world.Load());
  EXPECT_EQ(world.Tree().GetCount(), cCategories);
  EXPECT_EQ(world.Tree().GetItems(cCategories - 1).GetItemCount(true), cItems);
}

}  // namespace
}  // namespace kk
