#include <gtest/gtest.h>
#include <rapidcheck.h>
#include <rapidcheck/gtest.h>

#include "TFileWorld.h"
#include "host/common/TFileHelper.h"
#include "persistence/TWatchlistFileLoaderMobileImport.h"
#include "persistence/TWatchlistFileSaverMobileExport.h"
#include "tests/support/TAnyTree.h"
#include "tests/support/TMobileWorld.h"

namespace kk {
namespace {

constexpr TGuid cSource = GuidLiteral("{5E000000-0000-0000-0000-000000000001}");

// A line for each category, in pre-order, and for each of its items.
void DescribeFlat(const TLstWatchlistCategory& iTree, std::vector<std::string>& ioText) {
  for (const TWatchlistCategory* category : iTree) {
    ioText.push_back("category " + ToUtf8(GUIDToString(category->Id())) + " " +
                     ToUtf8(Storable(category->Name())));
    for (const TWatchlistPlugin* group : category->LstPlugin()) {
      for (const TWatchlistItem* item : group->LstItem()) {
        ioText.push_back("item " + ToUtf8(Storable(item->GetName())));
      }
    }
    DescribeFlat(category->LstCategory(), ioText);
  }
}

RC_GTEST_PROP(MobileExchangeProperty, CategoriesComeBackFlatAndItemsInThem, ()) {
  TFileWorld world;
  const auto source = MakeIntf<TMobileSource>(u"Laden", cSource);
  world.Integrations.Add(source);
  FillTree(world.Tree(), {source}, 3, 1);
  AddCategory(world.Tree(), u"<Keiner Kategorie zugewiesen>", cEmptyGuid);
  std::vector<std::string> expected;
  DescribeFlat(world.Tree(), expected);

  const TString fileName = world.Folder.File(u"mobil.xml");
  TWatchlistFileSaverMobileExport::Save(fileName, world.Tree(), world.Integrations);
  TMemoryStream stream(ReadFileBytes(fileName));
  TLstWatchlistCategory loaded(true);
  TWatchlistFileLoaderMobileImport().LoadFromStream(stream, world.Integrations, loaded);
  for (const TWatchlistCategory* category : loaded) {
    RC_ASSERT(category->LstCategory().GetCount() == 0);
  }
  std::vector<std::string> actual;
  DescribeFlat(loaded, actual);
  RC_ASSERT(actual == expected);
}

}  // namespace
}  // namespace kk
