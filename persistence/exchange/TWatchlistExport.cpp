#include "persistence/exchange/TWatchlistExport.h"

#include <algorithm>
#include <filesystem>

#include "host/base/Exception.h"
#include "host/base/Guard.h"
#include "host/common/TFileHelper.h"
#include "persistence/TWatchlistFileSaver.h"
#include "persistence/TWatchlistHandler.h"
#include "persistence/exchange/TWatchlistFileSaverExport.h"
#include "plugin/texts/UnitKKPluginWatchlistResourceStrings.h"
#include "reminders/TLstRemindItemSync.h"

namespace kk {

namespace {

namespace fs = std::filesystem;

bool IsSameFile(TStringView iA, TStringView iB) {
  std::error_code error;
  const fs::path a = fs::weakly_canonical(ToUtf8(iA), error);
  return !error && a == fs::weakly_canonical(ToUtf8(iB), error) && !error;
}

bool HasAbove(const TWatchlistCategory& iCategory, const std::vector<TWatchlistCategory*>& iLst) {
  const TLstWatchlistCategory* list = iCategory.List();
  const TWatchlistCategory* above = list != nullptr ? list->Parent() : nullptr;
  while (above != nullptr) {
    if (std::ranges::find(iLst, above) != iLst.end()) return true;
    list = above->List();
    above = list != nullptr ? list->Parent() : nullptr;
  }
  return false;
}

/// While it lives, a file that is to be written anew stands aside. The saver of an export deletes
/// it first, so that a full disk would leave neither the old nor the new one.
class TPutAway {
 public:
  explicit TPutAway(TStringView iFileName) : FFileName(iFileName) {
    if (!FileExists(FFileName)) return;
    FAside = FFileName + u"." + GUIDToString(NewGuid()).substr(1, 8) + u".tmp";
    RenameFile(FFileName, FAside);
  }
  ~TPutAway() {
    if (FAside.empty()) return;
    Guarded(u"TWatchlistExport", [this] { RenameFile(FAside, FFileName); });
  }
  TPutAway(const TPutAway&) = delete;
  TPutAway& operator=(const TPutAway&) = delete;

  /// The new file is there.
  void Forget() {
    if (!FAside.empty()) DeleteFile(FAside);
    FAside.clear();
  }

 private:
  TString FFileName;
  TString FAside;
};

}  // namespace

// The next save would keep what it takes for its own of a file that is another's by then.
void TWatchlistExport::CheckFileName(TStringView iFileName) {
  const TString list = Handler()->GetFileName();
  if (IsSameFile(iFileName, list) ||
      IsSameFile(iFileName, TWatchlistFileSaver::BackupFileName(list))) {
    throw Exception(Format(_resExportOwnFile, {iFileName}));
  }
  std::error_code error;
  const fs::file_status status = fs::status(ToUtf8(iFileName), error);
  if (fs::exists(status) && !fs::is_regular_file(status)) {
    throw Exception(Format(_resExportNoFile, {iFileName}));
  }
}

std::vector<TWatchlistIntegration*> TWatchlistExport::Sources() const {
  if (!FSources.empty()) return FSources;
  const TLstWatchlistIntegration& all = Handler()->LstIntegration();
  return {all.begin(), all.end()};
}

void TWatchlistExport::GetTree(TLstWatchlistCategory& oTree) const {
  if (FCategories.empty()) {
    for (TWatchlistCategory* category : Handler()->LstCategory()) oTree.Add(*category);
    return;
  }
  for (TWatchlistCategory* category : FCategories) {
    if (oTree.IndexOf(category) < 0 && !HasAbove(*category, FCategories)) oTree.Add(*category);
  }
}

std::unordered_set<TGuid> TWatchlistExport::ItemIds(const TLstWatchlistCategory& iTree) const {
  TLstWatchlistItem items(false);
  for (const TWatchlistIntegration* source : Sources()) {
    iTree.GetItemsByPluginId(source->Integration()->GetId(), items, true);
  }
  std::unordered_set<TGuid> ids;
  for (const TWatchlistItem* item : items) ids.insert(item->SearchResultId());
  return ids;
}

bool TWatchlistExport::SaveToFile(TStringView iFileName) const {
  CheckFileName(iFileName);
  TLstWatchlistCategory tree(false);
  GetTree(tree);
  const std::unordered_set<TGuid> ids = ItemIds(tree);
  if (ids.empty()) throw Exception(_resExportNothing);
  TPutAway old(iFileName);
  if (!Write(iFileName, tree, ids)) return false;
  old.Forget();
  return true;
}

bool TWatchlistExport::Write(TStringView iFileName, const TLstWatchlistCategory& iTree,
                             const std::unordered_set<TGuid>& iItemIds) const {
  TWatchlistFileSaverExport saver(iFileName);
  saver.SetIncludeCategories(true);
  for (TWatchlistIntegration* source : Sources()) saver.IncludeIntegrations().Add(*source);
  const TLstRemindItemSync& live = Handler()->GetLstRemind();
  const TLstRemindItemSync::TReading reading(live);
  TLstRemindItem reminders(false);
  for (int i = 0; i < live.GetCount(); ++i) {
    if (iItemIds.contains(live.GetItems(i).Id())) reminders.Add(live.GetItems(i));
  }
  saver.SetIncludeRemindItems(reminders.GetCount() > 0);
  saver.SaveToFile(iTree, reminders, Handler()->LstIntegration());
  return !saver.LastSaveFailed();
}

}  // namespace kk
