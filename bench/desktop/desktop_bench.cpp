// What the program with the window costs with a big list: docs/performance.md tells how to read it.
// desktop_bench [start|category|refresh|delete|move|tree]... runs all or those.

#include <QAbstractTableModel>
#include <QApplication>
#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <memory>

#include "apps/desktop/shell/TDesktopProgram.h"
#include "bench/desktop/TBenchShop.h"
#include "bench/desktop/TDeskWorld.h"
#include "bench/desktop/TPaintCounter.h"
#include "bench/desktop/TStartWatch.h"

namespace kk {
namespace {

namespace fs = std::filesystem;

constexpr char cCalledVariable[] = "KK_BENCH_CALLED";
constexpr int cItems = 100'000;
constexpr int cCategories = 500;
constexpr int cRuns = 5;
// Another category with items.
constexpr TStringView cOther = u"Kategorie 0";
constexpr int cSizes[] = {1'000, 2'000, 5'000, 10'000, 20'000};

double Median(std::vector<double> iValues) {
  std::ranges::sort(iValues);
  return iValues[iValues.size() / 2];
}

TString NameOfSize(int iSize) { return u"Auswahl " + IntToStr(iSize); }

/// Wall clock and work of what it runs, until the loop has nothing left to do.
struct TCost {
  double Ms = 0;
  double WorkMs = 0;
};
TCost CostOf(const std::function<void()>& iFunction) {
  const double wall = WallMs();
  const double work = WorkMs();
  iFunction();
  return {WallMs() - wall, kk::WorkMs() - work};
}
TCost CostToIdle(const std::function<void()>& iFunction) {
  return CostOf([&] {
    iFunction();
    TDeskWorld::CrankUntilIdle();
  });
}

/// The shop, the lists of its pages, and folders with copies of them.
class TFolders {
 public:
  TFolders() {
    std::string pattern = (fs::temp_directory_path() / "kk-desktop-bench-XXXXXX").string();
    if (mkdtemp(pattern.data()) == nullptr) throw Exception(u"no temporary folder");
    FFolder = pattern;
  }
  ~TFolders() {
    std::error_code ignored;
    fs::remove_all(FFolder, ignored);
  }
  TFolders(const TFolders&) = delete;
  TFolders& operator=(const TFolders&) = delete;

  /// A list of so many items, for one use. iSettings: lines for the section "Watchlist".
  std::string Copy(int iItems, const std::string& iSettings = {}) {
    const fs::path original = FFolder / std::to_string(iItems);
    if (!fs::exists(original)) Make(original, iItems);
    const fs::path copy = FFolder / ("copy" + std::to_string(++FCopies));
    fs::copy(original, copy, fs::copy_options::recursive);
    std::ofstream(copy / "kaufkobolde.ini", std::ios::app) << iSettings;
    return copy.string();
  }

 private:
  void Make(const fs::path& iFolder, int iItems) {
    fs::create_directories(iFolder);
    const fs::path program =
        fs::read_symlink("/proc/self/exe").parent_path() / "desktop_bench_list";
    const int categories = std::min(cCategories, iItems / 10);
    const std::string call = program.string() + " " + iFolder.string() + " " + FShop.Origin() +
                             " " + std::to_string(iItems) + " " + std::to_string(categories);
    if (std::system(call.c_str()) != 0) throw Exception(u"no list");
  }

  TBenchShop FShop;
  fs::path FFolder;
  int FCopies = 0;
};

// The start of the real program, in processes of their own.

std::vector<double> StartOnce(const std::string& iFolder) {
  const std::string program = fs::read_symlink("/proc/self/exe").string();
  const std::string call = std::string(cCalledVariable) + "=" + std::to_string(WallMs()) + " " +
                           program + " run --data " + iFolder;
  std::FILE* const output = popen(call.c_str(), "r");
  std::vector<double> times(6);
  const int count = std::fscanf(output, "%lf %lf %lf %lf %lf %lf", &times[0], &times[1], &times[2],
                                &times[3], &times[4], &times[5]);
  if (pclose(output) != 0 || count != 6) throw Exception(u"the program did not start");
  return times;
}

void Start(TFolders& ioFolders) {
  std::printf(
      "| items | loop runs | window painted | list painted | free for the user | longest turn | "
      "work |\n"
      "|---:|---:|---:|---:|---:|---:|---:|\n");
  for (const int items : {1'000, 10'000, cItems}) {
    std::vector<std::vector<double>> runs(6);
    for (int run = 0; run < cRuns; ++run) {
      const std::vector<double> times = StartOnce(ioFolders.Copy(items));
      for (size_t i = 0; i < times.size(); ++i) runs[i].push_back(times[i]);
    }
    std::printf("| %d |", items);
    for (const auto& values : runs) {
      std::printf(" %.0f (%.0f) |", Median(values), *std::ranges::min_element(values));
    }
    std::printf("\n");
  }
}

// A category comes on the screen.

class TPlainRows : public QAbstractTableModel {
 public:
  explicit TPlainRows(const QAbstractItemModel& iModel) {
    for (int row = 0; row < iModel.rowCount(); ++row) {
      QStringList texts;
      for (int column = 0; column < iModel.columnCount(); ++column) {
        texts.append(iModel.index(row, column).data().toString());
      }
      FRows.push_back(texts);
    }
  }
  int rowCount(const QModelIndex& iParent = {}) const override {
    return iParent.isValid() ? 0 : static_cast<int>(FRows.size());
  }
  int columnCount(const QModelIndex& = {}) const override {
    return static_cast<int>(FRows.front().size());
  }
  QVariant data(const QModelIndex& iIndex, int iRole) const override {
    if (iRole != Qt::DisplayRole) return {};
    return FRows[static_cast<size_t>(iIndex.row())][iIndex.column()];
  }

 private:
  std::vector<QStringList> FRows;
};

// The same texts in a plain view of Qt's.
double BareMs(QTreeView& iView) {
  TPlainRows rows(*iView.model());
  QTreeView view;
  view.setUniformRowHeights(true);
  view.resize(iView.size());
  view.show();
  TDeskWorld::CrankUntilIdle();
  return CostToIdle([&] { view.setModel(&rows); }).Ms;
}

void Category(TFolders& ioFolders) {
  std::printf("| sorted | items | ms | of it work | bare ms |\n|---|---:|---:|---:|---:|\n");
  TDeskWorld world(ioFolders.Copy(cItems));
  world.Start();
  for (const bool sorted : {false, true}) {
    if (sorted) world.Items().ClickHeader(0);
    for (const int size : cSizes) {
      std::vector<double> ms, work, bare;
      for (int run = 0; run < cRuns; ++run) {
        world.GoTo(cOther);
        TDeskWorld::CrankUntilIdle();
        TVirtualNode& node = world.Node(NameOfSize(size));
        const TCost cost = CostToIdle([&] { world.Tree().FocusNode(node); });
        if (world.Items().GetCount() != size) throw Exception(u"not that list");
        ms.push_back(cost.Ms);
        work.push_back(cost.WorkMs);
        bare.push_back(BareMs(world.ItemsView()));
      }
      std::printf("| %s | %d | %.1f | %.1f | %.1f |\n", sorted ? "by a text" : "no", size,
                  Median(ms), Median(work), Median(bare));
    }
  }
}

// Sources refresh.

void Refresh(TFolders& ioFolders) {
  TDeskWorld world(ioFolders.Copy(cItems));
  world.Start();
  world.GoTo(NameOfSize(1'000));
  world.Tree().ExpandNode(world.Node(NameOfSize(1'000)));
  world.Items().SelectRows({3}, 3);
  TDeskWorld::CrankUntilIdle();
  const auto wait = [&] {
    TDeskWorld::CrankUntil([&] { return world.List().OpenUpdates() == 0; });
    TDeskWorld::CrankUntilIdle();
  };

  TPaintCounter rows(world.ItemsView());
  TPaintCounter nodes(world.TreeView());
  world.OpenItemsMenu();
  rows.Restart();
  nodes.Restart();
  world.ClickItems(u"Aktualisieren");
  wait();
  std::printf(
      "A refresh of one item: rows of the list painted %d (in %d paints), nodes %d (in %d)\n",
      rows.Rows(), rows.Paints(), nodes.Rows(), nodes.Paints());

  world.OpenItemsMenu();
  TDeskWorld::CrankUntilIdle();
  rows.Restart();
  nodes.Restart();
  std::vector<TIntf<ISearchResult>> before;
  for (int row = 0; row < world.Items().GetCount(); ++row) {
    before.push_back(world.Items().Results(row));
  }
  TWatchdog watchdog;
  const TCost all = CostOf([&] {
    world.ClickItems(u"Alle aktualisieren");
    wait();
  });
  for (size_t row = 0; row < before.size(); ++row) {
    if (world.Items().Results(static_cast<int>(row)) == before[row]) throw Exception(u"not all");
  }
  std::printf(
      "1,000 refreshes: %.0f ms, of it work of the main thread %.0f ms; longest turn %.1f ms, "
      "longest work in one %.1f ms, turns with more than 50 ms of work: %d; rows painted "
      "%d, at once at most %d; nodes painted %d, at once at most %d\n",
      all.Ms, all.WorkMs, watchdog.LongestMs(), watchdog.LongestWorkMs(), watchdog.LongTurns(),
      rows.Rows(), rows.MostRows(), nodes.Rows(), nodes.MostRows());
}

// Many selected items are deleted or moved.

enum class TShape { Collapsed, Expanded, EachSecond };

void Edit(TFolders& ioFolders, bool iDeletes, TShape iShape, const char* iName) {
  TDeskWorld world(ioFolders.Copy(cItems));
  world.Start();
  for (const int size : cSizes) {
    const TString name = NameOfSize(size);
    world.GoTo(name);
    if (iShape == TShape::Expanded) {
      world.Tree().ExpandNode(world.Node(name));
      world.Tree().ExpandNode(*world.Node(name).FirstChild());
    }
    TDeskWorld::CrankUntilIdle();
    std::vector<int> selected;
    for (int row = 0; row < size; row += iShape == TShape::EachSecond ? 2 : 1)
      selected.push_back(row);
    const TCost select = CostToIdle([&] { world.Items().SelectRows(selected, 0); });
    const TCost menu = CostToIdle([&] { world.OpenItemsMenu(); });
    const TCost cost = CostToIdle([&] {
      iDeletes ? world.ClickItems(u"Löschen") : world.ClickItems(u"Verschieben nach ...", u"Ziel");
    });
    std::printf("| %s | %zu | %.0f | %.0f | %.2f | %.0f | %.0f |\n", iName, selected.size(),
                cost.Ms, cost.WorkMs, cost.WorkMs * 1e3 / static_cast<double>(selected.size()),
                select.Ms, menu.Ms);
    std::fflush(stdout);
    if (world.Items().GetCount() != size - static_cast<int>(selected.size()))
      throw Exception(u"not all have gone");
  }
}

void EditAll(TFolders& ioFolders, bool iDeletes) {
  std::printf(
      "| what | selected | ms | of it work | µs of work per item | to select | to open the menu |\n"
      "|---|---:|---:|---:|---:|---:|---:|\n");
  const std::string verb = iDeletes ? "delete" : "move";
  Edit(ioFolders, iDeletes, TShape::Collapsed, verb.c_str());
  Edit(ioFolders, iDeletes, TShape::EachSecond, (verb + ", each second row").c_str());
  Edit(ioFolders, iDeletes, TShape::Expanded, (verb + ", nodes on show").c_str());
}

// All nodes of categories and groups are asked what they show.

int AskNodes(TDeskWorld& ioWorld) {
  int nodes = 0;
  TVirtualStringTree& tree = ioWorld.Tree();
  const std::function<void(const TVirtualNode&)> ask = [&](const TVirtualNode& iParent) {
    for (int i = 0; i < iParent.GetCount(); ++i) {
      TVirtualNode& node = iParent.GetItems(i);
      if (node.GetCount() == 0) continue;  // items
      (void)tree.Text(node);
      (void)tree.ImageIndex(node);
      ++nodes;
      ask(node);
    }
  };
  ask(tree.Root());
  return nodes;
}

void Tree(TFolders& ioFolders) {
  std::printf(
      "| counts | nodes | ms | behind a change | painted on the screen |\n"
      "|---|---:|---:|---:|---:|\n");
  struct TMode {
    const char* Name;
    const char* Settings;
  };
  for (const TMode& mode :
       {TMode{"none", "ShowItemCountInTree=0\nShowItemCountInTreeRecursive=0\n"},
        TMode{"own", "ShowItemCountInTree=1\nShowItemCountInTreeRecursive=0\n"},
        TMode{"with sub-categories", "ShowItemCountInTree=1\nShowItemCountInTreeRecursive=1\n"}}) {
    TDeskWorld world(ioFolders.Copy(cItems, mode.Settings));
    world.Start();
    world.GoTo(u"Auswahl 10000");
    TDeskWorld::CrankUntilIdle();
    std::vector<double> again, changed, painted;
    int nodes = 0;
    for (int run = 0; run < 4 * cRuns; ++run) {
      again.push_back(CostOf([&] { nodes = AskNodes(world); }).Ms);
      world.Items().SelectRows({0}, 0);
      world.OpenItemsMenu();
      world.ClickItems(u"Löschen");
      changed.push_back(CostOf([&] { AskNodes(world); }).Ms);
      TDeskWorld::CrankUntilIdle();
      painted.push_back(CostOf([&] { world.TreeView().viewport()->repaint(); }).Ms);
    }
    if (world.Items().GetCount() != 10'000 - 4 * cRuns) throw Exception(u"not all have gone");
    std::printf("| %s | %d | %.2f | %.2f | %.2f |\n", mode.Name, nodes, Median(again),
                Median(changed), Median(painted));
  }
}

void RunAll(std::vector<std::string> iNames) {
  if (iNames.empty()) iNames = {"start", "category", "refresh", "delete", "move", "tree"};
  TFolders folders;  // forks
  int count = 1;
  char name[] = "desktop_bench";
  char* arguments[] = {name, nullptr};
  const QApplication application(count, arguments);
  for (const std::string& what : iNames) {
    std::printf("\n%s\n\n", what.c_str());
    if (what == "start") Start(folders);
    if (what == "category") Category(folders);
    if (what == "refresh") Refresh(folders);
    if (what == "delete") EditAll(folders, true);
    if (what == "move") EditAll(folders, false);
    if (what == "tree") Tree(folders);
    std::fflush(stdout);
  }
}

// In the process that is the real program.
void WatchStart() {
  if (const char* const called = std::getenv(cCalledVariable)) {
    static TStartWatch* const watch = new TStartWatch(std::atof(called));  // until the end
    (void)watch;
  }
}

Q_COREAPP_STARTUP_FUNCTION(WatchStart)

}  // namespace
}  // namespace kk

int main(int iCount, char** iArguments) {
  setenv("QT_QPA_PLATFORM", "offscreen", 0);
  setenv("DBUS_SESSION_BUS_ADDRESS", "unix:path=/nonexistent", 1);
  std::vector<std::string> words(iArguments + 1, iArguments + iCount);
  if (!words.empty() && words.front() == "run") {
    return kk::TDesktopProgram::Main({words.begin() + 1, words.end()});
  }
  try {
    kk::RunAll(words);
    return 0;
  } catch (const std::exception& e) {
    std::fprintf(stderr, "%s\n", kk::ToUtf8(kk::MessageOf(e)).c_str());
    return 1;
  }
}
