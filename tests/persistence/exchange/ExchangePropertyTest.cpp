#include <gtest/gtest.h>
#include <rapidcheck.h>
#include <rapidcheck/gtest.h>

#include "TExchangeWorld.h"
#include "persistence/exchange/TfrmKKWatchlistImport.h"
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

}  // namespace
}  // namespace kk
