#include <gtest/gtest.h>
#include <rapidcheck.h>
#include <rapidcheck/gtest.h>

#include "TFileWorld.h"
#include "tests/support/TAnyTree.h"

// Whatever the user writes comes back as it was; only what XML can't hold at all may go.
namespace kk {
namespace {

constexpr TGuid cFirst = GuidLiteral("{5E000000-0000-0000-0000-000000000001}");
constexpr TGuid cSecond = GuidLiteral("{5E000000-0000-0000-0000-000000000002}");

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
