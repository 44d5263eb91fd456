#pragma once

#include <string>
#include <vector>

#include "bench/TBenchSource.h"
#include "persistence/TWatchlistHandler.h"

namespace kk {

/// A watch list of so many items in 200 categories and 5 sources, the same at every run, with its
/// file in a temporary folder that goes with it. There is one at a time: it owns the handler.
class TBenchWorld {
 public:
  static constexpr int cCategories = 200;
  static constexpr int cSources = 5;

  explicit TBenchWorld(int iItems);
  ~TBenchWorld();
  TBenchWorld(const TBenchWorld&) = delete;
  TBenchWorld& operator=(const TBenchWorld&) = delete;

  TWatchlistHandler& Handler() const { return *kk::Handler(); }
  const std::vector<TGuid>& ItemIds() const { return FItemIds; }
  const TGuid& SourceId(int iIndex) const { return FSourceIds[static_cast<size_t>(iIndex)]; }
  void MarkAllChanged();
  /// Puts the items into the tree; those of a source that stand there stay.
  void Fill();

  /// The bytes of all entries of the file, unpacked, with their names.
  struct TEntry {
    TString Name;
    std::string Bytes;
  };
  std::vector<TEntry> Entries() const;

 private:
  std::string FFolder;
  int FItems;
  std::vector<TGuid> FSourceIds;
  std::vector<TGuid> FItemIds;
};

}  // namespace kk
