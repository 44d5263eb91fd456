// What the watch list costs, beside the bare cost of the same bytes or look-ups in the same run.
// Each row's "ratio" is the watch list's time over the bare time.

#include <benchmark/benchmark.h>
#include <zlib.h>

#include <cstring>
#include <functional>
#include <optional>
#include <pugixml.hpp>
#include <random>
#include <unordered_map>

#include "bench/Compare.h"
#include "bench/TBenchWorld.h"
#include "host/common/TFileCompression.h"
#include "host/common/TFileHelper.h"
#include "persistence/TWatchlistFileLoader.h"
#include "reminders/TLstRemindItem.h"

namespace {

using namespace kk;  // NOLINT: a program of its own

std::string Deflated(const std::string& iBytes) {
  uLongf size = compressBound(iBytes.size());
  std::string packed(size, '\0');
  compress2(reinterpret_cast<Bytef*>(packed.data()), &size,
            reinterpret_cast<const Bytef*>(iBytes.data()), iBytes.size(), 9);
  packed.resize(size);
  return packed;
}

void Inflate(const std::string& iPacked, std::string& oBytes) {
  uLongf size = oBytes.size();
  uncompress(reinterpret_cast<Bytef*>(oBytes.data()), &size,
             reinterpret_cast<const Bytef*>(iPacked.data()), iPacked.size());
}

// One world at a time is kept from benchmark to benchmark; making one takes longer than most rows.
// It goes with main, before the statics that it uses.
std::optional<TBenchWorld> keptWorld;

TBenchWorld& World(int64_t iItems) {
  if (!keptWorld || keptWorld->ItemIds().size() != static_cast<size_t>(iItems)) {
    keptWorld.reset();
    keptWorld.emplace(static_cast<int>(iItems));
    keptWorld->MarkAllChanged();
    keptWorld->Handler().SaveToFile();
  }
  return *keptWorld;
}

// Load: bare is inflating every entry and parsing the XML ones.
void Load(benchmark::State& ioState) {
  TBenchWorld& world = World(ioState.range(0));
  struct TBare {
    std::string Packed;
    std::string Bytes;
    bool IsXml;
  };
  std::vector<TBare> bare;
  for (auto& entry : world.Entries()) {
    const bool isXml = entry.Name == u"categories" || entry.Name.starts_with(u"items");
    bare.push_back({Deflated(entry.Bytes), std::move(entry.Bytes), isXml});
  }
  Compare(
      ioState,
      [&] {
        TLstWatchlistCategory categories(true);
        TLstRemindItem reminders(true);
        TWatchlistFileLoader loader(world.Handler().GetFileName());
        return Seconds([&] {
          if (!loader.LoadFromFile(categories, reminders, world.Handler().LstIntegration())) {
            std::abort();
          }
        });
      },
      [&] {
        return Seconds([&] {
          for (TBare& entry : bare) {
            Inflate(entry.Packed, entry.Bytes);
            pugi::xml_document document;
            if (entry.IsXml) document.load_buffer(entry.Bytes.data(), entry.Bytes.size());
          }
        });
      });
}

void Save(benchmark::State& ioState, const std::function<void(TBenchWorld&)>& iChange) {
  TBenchWorld& world = World(ioState.range(0));
  const std::vector<TBenchWorld::TEntry> entries = world.Entries();
  Compare(
      ioState,
      [&] {
        iChange(world);
        return Seconds([&] { world.Handler().SaveToFile(); });
      },
      [&] {
        return Seconds([&] {
          for (const auto& entry : entries) benchmark::DoNotOptimize(Deflated(entry.Bytes));
        });
      });
}

// Save of everything; bare is deflating the same bytes.
void SaveAll(benchmark::State& ioState) {
  Save(ioState, [](TBenchWorld& ioWorld) { ioWorld.MarkAllChanged(); });
}

// Save after the note of one item was edited; bare is deflating the whole file's bytes.
void SaveOneChange(benchmark::State& ioState) {
  Save(ioState, [](TBenchWorld& ioWorld) {
    ioWorld.Handler().LstIntegration().GetItems(0).SetChangedItems(true);
  });
}

// 1,000 random look-ups by id; bare is a hash map of the same ids.
void FindItemById(benchmark::State& ioState) {
  TBenchWorld& world = World(ioState.range(0));
  std::unordered_map<TGuid, TWatchlistItem*> map;
  for (const TGuid& id : world.ItemIds()) {
    map.emplace(id, world.Handler().LstCategory().FindItemById(id));
  }
  std::minstd_rand random(7);
  std::vector<TGuid> ids;
  for (int i = 0; i < 1000; ++i) ids.push_back(world.ItemIds()[random() % world.ItemIds().size()]);
  Compare(
      ioState,
      [&] {
        return Seconds([&] {
          for (const TGuid& id : ids) {
            benchmark::DoNotOptimize(world.Handler().LstCategory().FindItemById(id));
          }
        });
      },
      [&] {
        return Seconds([&] {
          for (const TGuid& id : ids) benchmark::DoNotOptimize(map.find(id));
        });
      });
}

// One question for a result that is not there; bare is asking a plain array of the source's
// results.
void HasSearchResult(benchmark::State& ioState) {
  TBenchWorld& world = World(ioState.range(0));
  TLstWatchlistItem items(false);
  world.Handler().LstCategory().GetItemsByPluginId(world.SourceId(0), items, true);
  std::vector<TIntf<ISearchResult>> results;
  for (const TWatchlistItem* item : items) results.push_back(item->SearchResult());
  const TIntf<ISearchResult> absent = TBenchSource::MakeResult(NewGuid(), 0xFFFFFFFF);
  Compare(
      ioState,
      [&] {
        return Seconds([&] {
          benchmark::DoNotOptimize(world.Handler().HasSearchResult(world.SourceId(0), absent));
        });
      },
      [&] {
        return Seconds([&] {
          for (const auto& result : results) benchmark::DoNotOptimize(result->IsSame(absent));
        });
      });
}

// Delete of all items of a source by their ids; bare is erasing the same results from a hash map.
void DeleteAllOfSource(benchmark::State& ioState) {
  TBenchWorld& world = World(ioState.range(0));
  std::vector<TGuid> ids;
  Compare(
      ioState,
      [&] {
        world.Fill();
        ids.clear();
        TLstWatchlistItem items(false);
        world.Handler().LstCategory().GetItemsByPluginId(world.SourceId(0), items, true);
        for (const TWatchlistItem* item : items) ids.push_back(item->SearchResultId());
        return Seconds([&] {
          for (const TGuid& id : ids) world.Handler().LstCategory().DeleteItemById(id);
        });
      },
      [&] {
        std::unordered_map<TGuid, TIntf<ISearchResult>> map;
        for (uint32_t i = 0; i < ids.size(); ++i) {
          map.emplace(ids[i], TBenchSource::MakeResult(ids[i], i));
        }
        return Seconds([&] {
          for (const TGuid& id : ids) map.erase(id);
        });
      });
  world.Fill();
}

// By size and not by name, so that each world is made once.
void RegisterAll() {
  for (const int64_t items : {1'000, 10'000, 100'000, 1'000'000}) {
    for (const auto& [name, function] : {std::pair{"Load", &Load},
                                         {"SaveAll", &SaveAll},
                                         {"SaveOneChange", &SaveOneChange},
                                         {"FindItemById", &FindItemById},
                                         {"HasSearchResult", &HasSearchResult},
                                         {"DeleteAllOfSource", &DeleteAllOfSource}}) {
      benchmark::RegisterBenchmark(name, function)
          ->Arg(items)
          ->UseManualTime()
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
  keptWorld.reset();
  return 0;
}
