// What it costs to take a list over from a file, to write one, and to write the document for the
// telephone, beside a load or save of the same, and a plain XML writer.

#include <benchmark/benchmark.h>

#include <pugixml.hpp>
#include <sstream>

#include "bench/Compare.h"
#include "bench/TBenchWorld.h"
#include "bench/exchange/TBenchWindows.h"
#include "host/common/TFileHelper.h"
#include "persistence/TWatchlistFileSaverMobileExport.h"
#include "persistence/exchange/TWatchlistFileLoaderImport.h"
#include "persistence/exchange/TWatchlistFileSaverExport.h"
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

void ImportInto(const TBenchWorld& iWorld, const TString& iFileName, double& oLoad) {
  TLstWatchlistCategory categories(true);
  TLstRemindItem reminders(true);
  oLoad += Seconds([&] {
    TWatchlistFileLoaderImport loader(iFileName);
    if (!loader.LoadFromFile(categories, reminders, iWorld.Handler().LstIntegration())) {
      std::abort();
    }
  });
  TImportData data;
  data.LstCategory = &categories;
  data.LstRemindItem = &reminders;
  data.LstIntegration = &iWorld.Handler().LstIntegration();
  if (!TfrmWatchlistImportProgress::Display(nullptr, data, false)) std::abort();
}

// From the file to the end of what it was read into; bare is the load alone.
void Import(benchmark::State& ioState) {
  TBenchWindows windows;
  const TBenchWorld world(static_cast<int>(ioState.range(0)));
  const TImportFile file(world);
  double load = 0;
  Compare(
      ioState, [&] { return Seconds([&] { ImportInto(world, file.Name(), load); }); },
      [&] {
        file.Undo();
        return std::exchange(load, 0);
      });
  ioState.counters["longest_ms"] = windows.LongestStretch() * 1e3;
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
    for (const auto& [name, function] :
         {std::pair{"Import", &Import}, {"Export", &Export}, {"Mobile", &Mobile}}) {
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
