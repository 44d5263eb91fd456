#pragma once

#include <functional>
#include <string>
#include <vector>

#include "model/IWatchlistModelRoot.h"
#include "model/TLstWatchlistCategory.h"

namespace kk {

/// The owner of the model while it lives: a tree, and a record of what its items told it, one line
/// each: "add Name", "delete Name". An item without a result stands under its id.
class TTestModelRoot : public IWatchlistModelRoot {
 public:
  using TCallback = std::function<void(TWatchlistItem&)>;

  TTestModelRoot() : FBefore(SetWatchlistModelRoot(this)) {}
  ~TTestModelRoot() override {
    FRoot.Clear();
    SetWatchlistModelRoot(FBefore);
  }
  TTestModelRoot(const TTestModelRoot&) = delete;
  TTestModelRoot& operator=(const TTestModelRoot&) = delete;

  void NotifyItemAdd(TWatchlistItem& iItem) override { Note("add ", iItem, FOnAdd); }
  void NotifyItemDelete(TWatchlistItem& iItem) override { Note("delete ", iItem, FOnDelete); }
  TLstWatchlistCategory& RootCategories() override { return FRoot; }

  std::vector<std::string>& Notes() { return FNotes; }
  /// Called after the line is written, as a listener would be.
  void SetOnAdd(TCallback iCallback) { FOnAdd = std::move(iCallback); }
  void SetOnDelete(TCallback iCallback) { FOnDelete = std::move(iCallback); }

 private:
  void Note(const char* iWhat, TWatchlistItem& iItem, const TCallback& iCallback) {
    const TString name =
        iItem.SearchResult() ? iItem.GetName() : GUIDToString(iItem.SearchResultId());
    FNotes.push_back(iWhat + ToUtf8(name));
    if (iCallback) iCallback(iItem);
  }

  std::vector<std::string> FNotes;
  TCallback FOnAdd;
  TCallback FOnDelete;
  IWatchlistModelRoot* FBefore;
  TLstWatchlistCategory FRoot{true};
};

}  // namespace kk
