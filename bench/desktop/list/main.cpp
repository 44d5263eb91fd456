// Writes a watch list for the benchmarks of the desktop: desktop_bench_list FOLDER ORIGIN ITEMS
// CATEGORIES. Its items are pages at the origin, such as "http://127.0.0.1:8080"; it is the same at
// every call. At the top level stand an empty category "Ziel" and "Auswahl 1000" to
// "Auswahl 20000" with so many items, as far as there are so many; the others, nested in two
// levels, share the rest.

#include <cstdio>
#include <cstdlib>
#include <exception>
#include <fstream>
#include <random>

#include "bench/NumberedGuid.h"
#include "host/base/Exception.h"
#include "host/common/TFileHelper.h"
#include "host/contract/IApplication.h"
#include "persistence/TWatchlistHandler.h"
#include "sources/page/PageConsts.h"
#include "sources/page/TPageIntegration.h"
#include "sources/page/TPageReader.h"
#include "sources/page/TPageSearchResult.h"

namespace kk {
namespace {

constexpr int cBig[] = {1'000, 2'000, 5'000, 10'000, 20'000};
constexpr int cChildren = 9;
constexpr int64_t cFirstMs = 3'900'000'000'000;

TIntf<ISearchResult> Page(const std::string& iOrigin, uint32_t iNumber) {
  static constexpr TStringView cWords[] = {
      u"Kamera",  u"Objektiv", u"Wanduhr",    u"Tischlampe", u"Porzellan",   u"Vase",
      u"Teppich", u"Radio",    u"Silberdose", u"Fahrrad",    u"Schallplatte"};
  std::minstd_rand random(iNumber + 1);
  const std::string path = "/artikel/" + std::to_string(iNumber);
  TPageData data = NewPageData(*TPageAddress::Parse(iOrigin + path), u"");
  data.Id = NumberedGuid(3, iNumber);
  for (int i = 0; i < 4; ++i) data.Product.Name += TString(cWords[random() % 11]) + u" ";
  data.Product.Name += IntToStr(iNumber);
  data.Product.Image = FromUtf8(iOrigin + path + ".jpg");
  data.Product.Offer.Price = TPrice(static_cast<int64_t>(random() % 100'000), 2);
  data.Product.Offer.Currency = u"EUR";
  data.Product.Offer.Seller = TString(u"haendler") + IntToStr(static_cast<int>(random() % 500));
  data.Product.Offer.Availability = TAvailability::avInStock;
  data.ReaderVersion = cPageReaderVersion;
  data.Changed = TDateTime::FromMs(cFirstMs + int64_t{iNumber} * 61'000);
  return MakeIntf<TPageSearchResult>(std::move(data));
}

class TList {
 public:
  TList(const char* iFolder, std::string iOrigin) : FOrigin(std::move(iOrigin)) {
    SetHostFolders(DefaultHostFolders(FromUtf8(iFolder)));
    CreateHandler(nullptr);
    Handler()->LstIntegration().Add(FSource);
  }
  ~TList() { FreeHandler(); }
  TList(const TList&) = delete;
  TList& operator=(const TList&) = delete;

  void Fill(int iItems, int iCategories) {
    TLstWatchlistCategory& roots = Handler()->LstCategory();
    int categories = 0;
    int items = 0;
    AddCategory(roots, u"Ziel", categories++);
    for (const int size : cBig) {
      if (items + size > iItems) break;
      AddItems(AddCategory(roots, u"Auswahl " + IntToStr(size), categories++), items, size);
      items += size;
    }
    const int others = iCategories - categories;
    const int left = iItems - items;
    TWatchlistCategory* parent = nullptr;
    for (int i = 0; i < others; ++i) {
      const bool isRoot = i % (cChildren + 1) == 0;
      TWatchlistCategory& category = AddCategory(isRoot ? roots : parent->LstCategory(),
                                                 u"Kategorie " + IntToStr(i), categories++);
      if (isRoot) parent = &category;
      category.SetExpanded(isRoot);
      const int size = left / others + (i < left % others ? 1 : 0);
      AddItems(category, items, size);
      items += size;
    }
  }

  /// So that the program begins in the section, with the biggest category of up to 10,000 items.
  static void WriteSettings() {
    const TWatchlistCategory* selected = nullptr;
    for (const TWatchlistCategory* category : Handler()->LstCategory()) {
      const int count = category->GetItemCount(false);
      if (count > 10'000) continue;
      if (selected == nullptr || count > selected->GetItemCount(false)) selected = category;
    }
    std::ofstream(ToUtf8(HostFolders().Config) + "/kaufkobolde.ini")
        << "[General]\nWindowSection=" << ToUtf8(GUIDToString(cMainMenuFormIDWatchlist))
        << "\n\n[Watchlist]\nLastSelected=" << ToUtf8(GUIDToString(selected->Id())) << '\n';
  }

  bool Save() {
    SourceRecord().SetChangedItems(true);
    SourceRecord().SetChangedSearchResults(true);
    Handler()->SaveToFile();
    return !Handler()->LastSaveFailed();
  }

 private:
  static TWatchlistIntegration& SourceRecord() { return Handler()->LstIntegration().GetItems(0); }
  static TWatchlistCategory& AddCategory(TLstWatchlistCategory& ioList, TStringView iName,
                                         int iNumber) {
    TWatchlistCategory& category = ioList.Add(std::make_unique<TWatchlistCategory>());
    category.SetId(NumberedGuid(2, static_cast<uint32_t>(iNumber)));
    category.SetName(iName);
    return category;
  }
  void AddItems(TWatchlistCategory& ioCategory, int iFirst, int iCount) {
    if (iCount == 0) return;
    TLstWatchlistItem& items = ioCategory.LstPlugin().FindOrAdd(FSource).LstItem();
    for (int i = iFirst; i < iFirst + iCount; ++i) {
      auto item = std::make_unique<TWatchlistItem>();
      item->SetSearchResult(Page(FOrigin, static_cast<uint32_t>(i)));
      item->SetParentCategoryId(ioCategory.Id());
      item->SetLastUpdateDate(TDateTime::FromMs(cFirstMs + int64_t{i} * 61'000));
      if (i % 10 == 0) item->Description().Add(u"Notiz zu Nummer " + IntToStr(i));
      items.Add(std::move(item));
    }
  }

  std::string FOrigin;
  TIntf<TPageIntegration> FSource = MakeIntf<TPageIntegration>();
};

}  // namespace
}  // namespace kk

int main(int iCount, char** iArguments) {
  if (iCount != 5) {
    std::fputs("usage: desktop_bench_list FOLDER ORIGIN ITEMS CATEGORIES\n", stderr);
    return 2;
  }
  try {
    kk::TList list(iArguments[1], iArguments[2]);
    list.Fill(std::atoi(iArguments[3]), std::atoi(iArguments[4]));
    kk::TList::WriteSettings();
    return list.Save() ? 0 : 1;
  } catch (const std::exception& e) {
    std::fprintf(stderr, "%s\n", kk::ToUtf8(kk::MessageOf(e)).c_str());
    return 1;
  }
}
