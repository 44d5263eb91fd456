#include <gtest/gtest.h>
#include <rapidcheck.h>
#include <rapidcheck/gtest.h>

#include "TExchangeWorld.h"
#include "host/base/Exception.h"
#include "persistence/exchange/TfrmKKWatchlistImport.h"
#include "persistence/exchange/TfrmWatchlistImportProgress.h"
#include "tests/support/TAnyTree.h"

namespace kk {
namespace {

constexpr TDateTime cLater = TDateTime::FromMs(60000 * TDateTime::cMsPerDay);

class ExchangeProperty : public TExchangeTest {
 protected:
  void Fill() { FillTree(Tree(), {Auction, Shop}, 3, 1); }
  bool Import() { return TfrmKKWatchlistImport::ExecuteInBackground(ExportFile()); }
  /// As it is, or as it stands behind an export and an import, which turns each group round.
  static std::vector<std::string> Description(bool iAsStored) {
    std::vector<std::string> text;
    Describe(Tree(), iAsStored, text);
    return text;
  }
  static std::vector<TGuid> ItemIds() {
    std::vector<TGuid> ids;
    for (const TWatchlistIntegration* record : Handler()->LstIntegration()) {
      TLstWatchlistItem items(false);
      Tree().GetItemsByPluginId(record->Integration()->GetId(), items, true);
      for (const TWatchlistItem* item : items) ids.push_back(item->SearchResultId());
    }
    return ids;
  }
};

RC_GTEST_FIXTURE_PROP(ExchangeProperty, AnyListComesIntoAnEmptyOneAsItIs, ()) {
  Fill();
  // Of several reminders of the future only the first would come along, as required.
  const std::vector<TGuid> ids = ItemIds();
  const size_t reminders = ids.empty() ? 0 : *rc::gen::inRange<size_t>(0, ids.size() + 1);
  for (size_t i = 0; i < reminders; ++i) {
    RemindBySound(*Tree().FindItemById(ids[i]), u"ton.wav",
                  i + 1 < reminders ? Now().PlusMs(-1) : cLater);
  }
  const std::vector<std::string> expected = Description(true);
  ExportAll();
  StartElsewhere();
  RC_ASSERT(Import());
  RC_ASSERT(Description(false) == expected);
  RC_ASSERT(Handler()->LstRemind().GetCount() == (reminders > 0 ? 1 : 0));
  if (reminders == 0) return;
  const TRemindItem& reminder = Handler()->LstRemind().First();
  RC_ASSERT(reminder.Id() == ids[reminders - 1]);
  RC_ASSERT(reminder.RemindTime() == cLater);
  RC_ASSERT(reminder.RemindTypes().Has(rtSound));
}

RC_GTEST_FIXTURE_PROP(ExchangeProperty, AnyListIntoItselfChangesNothingButTheFlags, ()) {
  Fill();
  // A name that a file can't hold comes back as another.
  TLstWatchlistCategory all(false);
  Tree().GetCategories(all, true);
  for (TWatchlistCategory* category : all) category->SetName(Storable(category->Name()));
  const std::vector<TGuid> ids = ItemIds();
  if (!ids.empty()) RemindBySound(*Tree().FindItemById(ids[0]), u"ton.wav", Now().PlusMs(-1));
  ExportAll();
  Forget();
  const std::vector<std::string> before = Description(false);
  RC_ASSERT(Import());
  RC_ASSERT(Description(false) == before);
  RC_ASSERT(ItemIds() == ids);
  RC_ASSERT(Handler()->LstRemind().GetCount() == (ids.empty() ? 0 : 1));
  for (const auto& source : {Auction, Shop}) {
    TLstWatchlistItem items(false);
    Tree().GetItemsByPluginId(source->GetId(), items, true);
    RC_ASSERT(Flags(source) == (items.GetCount() > 0 ? "RI" : "-"));
  }
}

/// The step as it is required, word by word: the list shrinks, and the index goes on.
struct TPlainStep {
  std::vector<std::string> Left;
  std::vector<std::string> Taken;
  std::string Told;

  explicit TPlainStep(const std::vector<bool>& iGood) {
    TLstRemindItem list(true);
    std::vector<bool> good = iGood;
    for (size_t i = 0; i < iGood.size(); ++i) Left.push_back(std::to_string(i));
    for (size_t i = 0; i < iGood.size(); ++i) list.Add(std::make_unique<TRemindItem>(cEmptyGuid));
    try {
      for (int i = 0; i < static_cast<int>(iGood.size()); ++i) {
        TRemindItem& reminder = list.GetItems(i);
        if (!good[static_cast<size_t>(i)]) continue;
        Taken.push_back(Left[static_cast<size_t>(i)]);
        list.Extract(reminder);
        good.erase(good.begin() + i);
        Left.erase(Left.begin() + i);
      }
    } catch (const EListError& e) {
      Told = ToUtf8(e.Message());
    }
  }
};

std::vector<std::string> SoundFiles(const TLstRemindItem& iLst) {
  std::vector<std::string> names;
  for (int i = 0; i < iLst.GetCount(); ++i) {
    const auto& sound =
        dynamic_cast<const TRemindDetailsSound&>(iLst.GetItems(i).LstDetails().GetItems(0));
    names.push_back(ToUtf8(sound.SoundFile()));
  }
  return names;
}

RC_GTEST_FIXTURE_PROP(ExchangeProperty, OfAnyRemindersThoseComeInThatThePlainStepTakes,
                      (const std::vector<bool>& iGood)) {
  const TWatchlistItem& item = Item(Category(u"Küche"), Shop, u"Lampe");
  TLstWatchlistCategory tree(false);
  tree.Add(*Tree().FindCategoryByName(u"Küche"));  // its one item is there already
  TLstRemindItem reminders(true);
  for (size_t i = 0; i < iGood.size(); ++i) {
    auto reminder = std::make_unique<TRemindItem>(item.SearchResultId());
    reminder->SetRemindTime(iGood[i] ? cLater : Now().PlusMs(-1));
    reminder->LstDetails().Add(
        std::make_unique<TRemindDetailsSound>(IntToStr(static_cast<int>(i))));
    reminders.Add(std::move(reminder));
  }
  TImportData data;
  data.LstCategory = &tree;
  data.LstRemindItem = &reminders;
  data.LstIntegration = &Handler()->LstIntegration();
  const TPlainStep expected(iGood);
  if (!expected.Told.empty()) User.ExpectMessage(FromUtf8(expected.Told));
  RC_ASSERT(TfrmWatchlistImportProgress::Display(nullptr, data, true) == expected.Told.empty());
  RC_ASSERT(SoundFiles(Handler()->LstRemind()) == expected.Taken);
  RC_ASSERT(SoundFiles(reminders) == expected.Left);
}

}  // namespace
}  // namespace kk
