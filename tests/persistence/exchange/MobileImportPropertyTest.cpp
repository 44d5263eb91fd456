#include <gtest/gtest.h>
#include <rapidcheck.h>
#include <rapidcheck/gtest.h>

#include <algorithm>

#include "TExchangeWorld.h"
#include "persistence/exchange/TfrmKKWatchlistImport.h"
#include "tests/support/TAnyTree.h"
#include "tests/support/TMobileWorld.h"

// The way of any list through the mobile document into any other, beside a plain model of what is
// promised: flat categories found by name, of each result the first of its kind, nothing lost.
namespace kk {
namespace {

struct TItemModel {
  TString Source;
  TString Article;
  TDateTime LastUpdate;
  std::vector<TString> Note;
  TGuid Parent;

  friend bool operator==(const TItemModel&, const TItemModel&) = default;
};

// A category with its groups one behind the other, and its depth in place of what hangs below it.
struct TCategoryModel {
  int Depth = 0;
  TGuid Id;
  TString Name;
  bool Expanded = false;
  std::vector<TString> Description;
  std::vector<TItemModel> Items;

  friend bool operator==(const TCategoryModel&, const TCategoryModel&) = default;
};

// In pre-order.
using TModel = std::vector<TCategoryModel>;

void Take(const TLstWatchlistCategory& iTree, int iDepth, TModel& ioModel) {
  for (const TWatchlistCategory* category : iTree) {
    TCategoryModel& model = ioModel.emplace_back();
    model.Depth = iDepth;
    model.Id = category->Id();
    model.Name = category->Name();
    model.Expanded = category->Expanded();
    model.Description = category->Description().Lines();
    for (const TWatchlistPlugin* group : category->LstPlugin()) {
      for (const TWatchlistItem* item : group->LstItem()) {
        model.Items.push_back({group->GetName(), item->GetName(), item->LastUpdateDate(),
                               item->Description().Lines(), item->ParentCategoryId()});
      }
    }
    Take(category->LstCategory(), iDepth + 1, ioModel);
  }
}
TModel Taken(const TLstWatchlistCategory& iTree) {
  TModel model;
  Take(iTree, 0, model);
  return model;
}

TCategoryModel* ByName(TModel& ioModel, size_t iCount, TStringView iName) {
  for (size_t i = 0; i < iCount; ++i) {
    if (SameText(ioModel[i].Name, iName)) return &ioModel[i];
  }
  return nullptr;
}

// Into the group of its source, which stands behind the others if it is new.
void AddTo(TCategoryModel& ioCategory, const TItemModel& iItem) {
  const auto last = std::find_if(ioCategory.Items.rbegin(), ioCategory.Items.rend(),
                                 [&](const auto& iOther) { return iOther.Source == iItem.Source; });
  const auto place = last == ioCategory.Items.rend() ? ioCategory.Items.end() : last.base();
  ioCategory.Items.insert(place, iItem);
}

bool Has(const TModel& iModel, const TItemModel& iItem) {
  return std::any_of(iModel.begin(), iModel.end(), [&](const TCategoryModel& iCategory) {
    return std::any_of(iCategory.Items.begin(), iCategory.Items.end(), [&](const auto& iOther) {
      return iOther.Source == iItem.Source && iOther.Article == iItem.Article;
    });
  });
}

class MobileImportProperty : public TExchangeTest {
 protected:
  MobileImportProperty() { AddMobileSources(); }

  void AddMobileSources() {
    for (const auto& source : Mobile) Handler()->LstIntegration().Add(source);
  }
  /// Another installation with the same sources.
  void StartAgain() {
    StartElsewhere();
    AddMobileSources();
  }
  /// Categories that bear the names of few, articles that are the same as others, items that name
  /// a category that is not theirs, and such without a result.
  void Fill() {
    FillTree(Tree(), {Shop, Mobile[0], Mobile[1]}, 3);
    TLstWatchlistCategory all(false);
    Tree().GetCategories(all, true);
    for (TWatchlistCategory* category : all) {
      if (category->Id() == cEmptyGuid) continue;
      if (*rc::gen::arbitrary<bool>()) {
        category->SetName(
            *rc::gen::elementOf(std::vector<TString>{u"Küche", u"KÜCHE", u"Bad", u""}));
      }
      for (TWatchlistPlugin* group : category->LstPlugin()) {
        for (TWatchlistItem* item : group->LstItem()) Vary(*item, all);
      }
    }
  }
  static void Vary(TWatchlistItem& ioItem, const TLstWatchlistCategory& iAll) {
    const TString name = *rc::gen::oneOf(
        AnyText(), rc::gen::map(rc::gen::inRange(0, 12),
                                [](int iNumber) { return u"Artikel " + IntToStr(iNumber); }));
    const TDateTime end = EncodeDateTime({2026, *rc::gen::inRange(1, 13), 5, 6, 7, 8, 0});
    ioItem.SetSearchResult(FakeResult(name, *rc::gen::arbitrary<bool>() ? end : TDateTime()));
    switch (*rc::gen::inRange(0, 8)) {
      case 0:
        return ioItem.SetParentCategoryId(NewGuid());
      case 1:
        return ioItem.SetParentCategoryId(
            iAll.GetItems(*rc::gen::inRange(0, iAll.GetCount())).Id());
      default:
        break;
    }
  }
  std::string Exported() const {
    Handler()->SaveAllForMobileExport(Folder.File(u"mobil.xml"));
    return Folder.Read(u"mobil.xml");
  }
  static bool Import(const std::string& iDocument) {
    TMemoryStream stream(iDocument);
    return TfrmKKWatchlistImport::ExecuteInBackgroundFromKKMobileStream(stream);
  }

  /// What the document of this list holds: its categories, and in each the items that come along.
  TModel Documented() const {
    TModel document = Taken(Tree());
    std::vector<TItemModel> items;
    for (const auto& source : Mobile) {
      TLstWatchlistItem own(false);
      Tree().GetItemsByPluginId(source->GetId(), own, true);
      for (const TWatchlistItem* item : own) {
        const TIntf<ISearchResult> result = item->SearchResult();
        if (Storable(result->GetName()).empty()) continue;  // this source knows them by their names
        items.push_back({source->GetName(),
                         Storable(result->GetName()),
                         result->GetEndTime(),
                         {},
                         item->ParentCategoryId()});
      }
    }
    for (TCategoryModel& category : document) {
      category = {0, category.Id, Storable(category.Name), false, {}, {}};
      std::copy_if(items.begin(), items.end(), std::back_inserter(category.Items),
                   [&](const TItemModel& iItem) { return iItem.Parent == category.Id; });
    }
    return document;
  }
  /// What the list is behind the import of that document.
  TModel Expected(const TModel& iDocument) const {
    TModel live = Taken(Tree());
    const size_t count = live.size();
    std::vector<size_t> places;
    for (const TCategoryModel& category : iDocument) {
      const TCategoryModel* found = ByName(live, count, category.Name);
      places.push_back(found != nullptr ? static_cast<size_t>(found - live.data()) : live.size());
      if (found == nullptr) live.push_back({0, category.Id, category.Name, false, {}, {}});
    }
    for (const auto& source : Mobile) {
      for (size_t i = 0; i < iDocument.size(); ++i) {
        for (TItemModel item : iDocument[i].Items) {
          if (item.Source != source->GetName() || Has(live, item)) continue;
          item.Parent = live[places[i]].Id;
          AddTo(live[places[i]], item);
        }
      }
    }
    return live;
  }

  const std::vector<TIntf<TMobileSource>> Mobile{MakeIntf<TMobileSource>(u"Telefon"),
                                                 MakeIntf<TMobileSource>(u"Funk")};
};

RC_GTEST_FIXTURE_PROP(MobileImportProperty, AnyListComesIntoAnyOther, ()) {
  Fill();
  const TModel document = Documented();
  const std::string text = Exported();
  StartAgain();
  Fill();
  const TModel expected = Expected(document);
  RC_CLASSIFY(expected.size() > Taken(Tree()).size(), "new categories");
  RC_ASSERT(Import(text));
  RC_ASSERT((Taken(Tree()) == expected));
  RC_ASSERT(User.ShownCount() == 0);

  // The second time there is nothing new in it.
  RC_ASSERT(Import(text));
  RC_ASSERT((Taken(Tree()) == expected));
}

RC_GTEST_FIXTURE_PROP(MobileImportProperty, AnyListIntoItselfChangesNothing, ()) {
  Fill();
  TLstWatchlistCategory all(false);
  Tree().GetCategories(all, true);
  for (TWatchlistCategory* category : all) {
    category->SetName(Storable(category->Name()));
    for (TWatchlistPlugin* group : category->LstPlugin()) {
      for (TWatchlistItem* item : group->LstItem()) {
        item->SetSearchResult(FakeResult(Storable(item->GetName())));
      }
    }
  }
  const TModel before = Taken(Tree());
  RC_ASSERT(Import(Exported()));
  RC_ASSERT((Taken(Tree()) == before));
}

}  // namespace
}  // namespace kk
