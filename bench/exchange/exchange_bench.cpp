// What it costs to take a list over from a file, to write one, and to write the document for the
// telephone, beside a load or save of the same, and a plain XML writer.

#include <benchmark/benchmark.h>

#include <pugixml.hpp>
#include <sstream>

#include "bench/Compare.h"
#include "bench/TBenchWorld.h"
#include "bench/exchange/TBenchWindows.h"
#include "host/base/TClock.h"
#include "host/common/TFileHelper.h"
#include "persistence/TWatchlistFileSaverMobileExport.h"
#include "persistence/exchange/TWatchlistFileLoaderImport.h"
#include "persistence/exchange/TWatchlistFileSaverExport.h"
#include "persistence/exchange/TfrmKKWatchlistImport.h"
#include "persistence/exchange/TfrmWatchlistImportProgress.h"
#include "reminders/TLstRemindItemSync.h"

namespace {

using namespace kk;  // NOLINT: a program of its own

// A list as large as the live one; the first half of it is there already.
class TImportFile {
 public:
  explicit TImportFile(const TBenchWorld& iWorld) : FWorld(iWorld) {
    const auto count = static_cast<uint32_t>(iWorld.ItemIds().size());
    for (int i = 0; i < TBenchWorld::cCategories; ++i) {
      auto category = std::make_unique<TWatchlistCategory>();
      category->SetId(NewGuid());
      category->SetName(u"Kategorie " + IntToStr(i));
      FTree.Add(std::move(category));
    }
    for (uint32_t i = 0; i < count; ++i) Add(i, i + count / 2);
    Write();
  }
  const TString& Name() const { return FName; }
  /// Takes what was imported out of the live list again.
  void Undo() const {
    for (const TGuid& id : FNew) FWorld.Handler().LstCategory().DeleteItemById(id);
  }

 private:
  void Add(uint32_t iIndex, uint32_t iNumber) {
    TWatchlistCategory& category = FTree.GetItems(static_cast<int>(iIndex) % FTree.GetCount());
    const int source = static_cast<int>(iIndex) / FTree.GetCount() % TBenchWorld::cSources;
    auto item = std::make_unique<TWatchlistItem>();
    const TGuid id = NewGuid();
    item->SetSearchResult(TBenchSource::MakeResult(id, iNumber));
    item->SetParentCategoryId(category.Id());
    if (iNumber >= FWorld.ItemIds().size()) FNew.push_back(id);
    category.LstPlugin()
        .FindOrAdd(FWorld.Handler().LstIntegration().GetIntegrations(source))
        .LstItem()
        .Add(std::move(item));
  }
  void Write() const {
    TWatchlistFileSaverExport saver(FName);
    saver.SetIncludeCategories(true);
    for (TWatchlistIntegration* record : FWorld.Handler().LstIntegration()) {
      saver.IncludeIntegrations().Add(*record);
    }
    saver.SaveToFile(FTree, TLstRemindItem(true), FWorld.Handler().LstIntegration());
  }

  const TBenchWorld& FWorld;
  TString FName = TFileHelper::GetAppDataFileName(u"import.wch");
  TLstWatchlistCategory FTree{true};
  std::vector<TGuid> FNew;
};

// From the file to the end of what it was read into, as behind the dialogs; bare is the load alone.
void Import(benchmark::State& ioState) {
  TBenchWindows windows;
  const TBenchWorld world(static_cast<int>(ioState.range(0)));
  const TImportFile file(world);
  const auto import = [&] {
    if (!TfrmKKWatchlistImport::Display(nullptr, file.Name())) std::abort();
  };
  const auto load = [&] {
    TLstWatchlistCategory categories(true);
    TLstRemindItem reminders(true);
    TWatchlistFileLoaderImport loader(file.Name());
    if (!loader.LoadFromFile(categories, reminders, world.Handler().LstIntegration())) {
      std::abort();
    }
  };
  Compare(
      ioState,
      [&] {
        windows.Begin();
        return Seconds(import);
      },
      [&] {
        file.Undo();
        return Seconds(load);
      });
  ioState.counters["longest_ms"] = windows.LongestStretch() * 1e3;
}

// A file with one item and many reminders of it, of which each second one is taken; bare is the way
// of all from one list to another.
void Reminders(benchmark::State& ioState) {
  TBenchWindows windows;
  const TBenchWorld world(1);
  TLstWatchlistCategory categories(true);
  for (const TWatchlistCategory* live : world.Handler().LstCategory()) {
    auto category = std::make_unique<TWatchlistCategory>();
    category->SetId(live->Id());
    category->SetName(live->Name());
    categories.Add(std::move(category));
  }
  auto item = std::make_unique<TWatchlistItem>();
  item->SetSearchResult(TBenchSource::MakeResult(NewGuid(), 0));
  item->SetParentCategoryId(categories.GetItems(0).Id());
  const TGuid id = item->SearchResultId();
  categories.GetItems(0)
      .LstPlugin()
      .FindOrAdd(world.Handler().LstIntegration().GetIntegrations(0))
      .LstItem()
      .Add(std::move(item));
  const auto fill = [&](TLstRemindItem& ioLst) {
    for (int64_t i = 0; i < ioState.range(0); ++i) {
      auto reminder = std::make_unique<TRemindItem>(id);
      reminder->SetRemindTime(Now().PlusMs(TDateTime::cMsPerDay));
      ioLst.Add(std::move(reminder));
    }
  };
  TLstRemindItem reminders(true);
  TImportData data;
  data.LstCategory = &categories;
  data.LstRemindItem = &reminders;
  data.LstIntegration = &world.Handler().LstIntegration();
  Compare(
      ioState,
      [&] {
        reminders.Clear();
        fill(reminders);
        return Seconds([&] { TfrmWatchlistImportProgress::Display(nullptr, data, true); });
      },
      [&] {
        world.Handler().LstRemind().Clear();
        reminders.Clear();
        fill(reminders);
        TLstRemindItem target(true);
        return Seconds([&] { target.Append(reminders, false); });
      });
}

// Everything; bare is a save of everything.
void Export(benchmark::State& ioState) {
  TBenchWorld world(static_cast<int>(ioState.range(0)));
  const TWatchlistHandler& handler = world.Handler();
  Compare(
      ioState,
      [&] {
        TWatchlistFileSaverExport saver(TFileHelper::GetAppDataFileName(u"export.wch"));
        saver.SetIncludeCategories(true);
        saver.SetIncludeRemindItems(true);
        for (TWatchlistIntegration* record : handler.LstIntegration()) {
          saver.IncludeIntegrations().Add(*record);
        }
        return Seconds([&] {
          saver.SaveToFile(handler.LstCategory(), handler.LstRemind(), handler.LstIntegration());
        });
      },
      [&] {
        world.MarkAllChanged();
        return Seconds([&] { world.Handler().SaveToFile(); });
      });
}

// What a plain program would do: asks the sources for their lines, makes a document of them with
// the XML library, and writes it.
void WritePlainly(const TWatchlistHandler& iHandler, const TString& iFileName) {
  pugi::xml_document document;
  pugi::xml_node results = document.append_child("watchlist").append_child("searchresults");
  TStringList params;
  params.SetValue(u"categoryguid", GUIDToString(cEmptyGuid));
  for (const TWatchlistIntegration* record : iHandler.LstIntegration()) {
    TLstWatchlistItem items(false);
    iHandler.LstCategory().GetItemsByPluginId(record->Integration()->GetId(), items, true);
    TStringList lines;
    record->Integration()->ExportSearchResults(*items.GetSearchResultsFromItems(), params, lines);
    pugi::xml_node result;
    for (const TString& line : lines.Lines()) {
      const std::string text = ToUtf8(line);
      if (text.starts_with("[/")) continue;
      const size_t equals = text.find('=');
      if (equals == std::string::npos) {
        result = results.append_child("searchresult");
      } else {
        result.append_child(text.substr(0, equals).c_str())
            .append_child(pugi::node_pcdata)
            .set_value(text.c_str() + equals + 1);
      }
    }
  }
  std::ostringstream text;
  document.save(text, "  ");
  WriteFileAtomically(iFileName, text.view());
}

// The document for the telephone; bare is the above.
void Mobile(benchmark::State& ioState) {
  TBenchWorld world(static_cast<int>(ioState.range(0)));
  const TWatchlistHandler& handler = world.Handler();
  const TString fileName = TFileHelper::GetAppDataFileName(u"mobile.xml");
  Compare(
      ioState, [&] { return Seconds([&] { handler.SaveAllForMobileExport(fileName); }); },
      [&] { return Seconds([&] { WritePlainly(handler, fileName); }); });
}

void RegisterAll() {
  for (const int64_t items : {10'000, 20'000, 50'000, 100'000}) {
    for (const auto& [name, function] : {std::pair{"Import", &Import},
                                         {"Reminders", &Reminders},
                                         {"Export", &Export},
                                         {"Mobile", &Mobile}}) {
      benchmark::RegisterBenchmark(name, function)
          ->Arg(items)
          ->UseManualTime()
          ->MinTime(1)
          ->Unit(benchmark::kMillisecond);
    }
  }
}

}  // namespace

int main(int iArgc, char** iArgv) {
  RegisterAll();
  benchmark::Initialize(&iArgc, iArgv);
  if (benchmark::ReportUnrecognizedArguments(iArgc, iArgv)) return 1;
  benchmark::RunSpecifiedBenchmarks();
  return 0;
}
