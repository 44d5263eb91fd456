#include "persistence/TWatchlistFileLoader.h"

#include <limits>
#include <unordered_map>

#include "host/base/Log.h"
#include "host/common/TFileCompression.h"
#include "host/common/TFileHelper.h"
#include "persistence/CatchAllCategory.h"
#include "persistence/TWatchlistCategoryLoader.h"
#include "persistence/TWatchlistItemLoader.h"
#include "plugin/texts/UnitKKPluginWatchlistConsts.h"
#include "plugin/texts/UnitKKPluginWatchlistResourceStrings.h"
#include "reminders/TRemindItemLoader.h"

namespace kk {

namespace {

constexpr TStringView cSender = _resLoggingSenderWatchlistHandler;

// A damaged entry may hold anything; a message must not carry it into the log.
constexpr size_t cMaxVersionLength = 32;
constexpr TStringView cVersionIsNoNumber = u"Die Versionsangabe ist keine Zahl";

// The answers of FindCategoryById on a whole tree, each in constant time.
class TCategoryIndex {
 public:
  explicit TCategoryIndex(const TLstWatchlistCategory& iTree) { Enter(iTree); }

  // With the catch-all category for an id that isn't there; null if that is missing, too.
  TWatchlistCategory* FindOrCatchAll(const TGuid& iId) const {
    auto hit = FById.find(iId);
    if (hit == FById.end()) hit = FById.find(cEmptyGuid);
    return hit == FById.end() ? nullptr : hit->second;
  }

 private:
  // The first one counts, in the order of that search: a level, then the subtree of each child.
  void Enter(const TLstWatchlistCategory& iLevel) {
    for (TWatchlistCategory* category : iLevel) FById.emplace(category->Id(), category);
    for (const TWatchlistCategory* category : iLevel) Enter(category->LstCategory());
  }

  std::unordered_map<TGuid, TWatchlistCategory*> FById;
};

}  // namespace

void TWatchlistFileLoader::FoundCategories(bool iFound) {
  if (!iFound) throw Exception(Format(_resFileNotFoundInZip, {cStreamCategories}));
}

void TWatchlistFileLoader::Step() {
  if (FOnStep) FOnStep(this);
}

void TWatchlistFileLoader::AddEmptyCategory(TLstWatchlistCategory& ioLst) {
  AddCatchAllCategory(ioLst);
}

int TWatchlistFileLoader::LoadFileVersion() {
  TMemoryStream stream;
  if (!TFileCompression::DecompressFile(FFileName, cStreamVersion, stream)) return 0;
  if (stream.GetSize() > cMaxVersionLength) throw EConvertError(cVersionIsNoNumber);
  const int64_t version = StrToInt(FromUtf8(stream.Bytes()));
  using TLimits = std::numeric_limits<int>;
  if (version < TLimits::min() || version > TLimits::max()) throw EConvertError(cVersionIsNoNumber);
  return static_cast<int>(version);
}

void TWatchlistFileLoader::LoadRemindItems(TLstRemindItem& ioLst, bool iDecodeUTF8) {
  TMemoryStream stream;
  if (!TFileCompression::DecompressFile(FFileName, cStreamRemind, stream, FOnStep)) return;
  Step();
  TRemindItemLoader::LoadFromStream(stream, ioLst, iDecodeUTF8, FOnStep);
  FoundRemindItems();
}

void TWatchlistFileLoader::LoadCategories(TLstWatchlistCategory& ioLst, bool iDecodeUTF8) {
  TMemoryStream stream;
  if (!TFileCompression::DecompressFile(FFileName, cStreamCategories, stream, FOnStep)) {
    FoundCategories(false);
    return;
  }
  Step();
  TWatchlistCategoryLoader::LoadFromStream(stream, ioLst, iDecodeUTF8, FOnStep);
  FoundCategories(true);
}

// Results without a record are passed over; a record without a result stays without one.
void TWatchlistFileLoader::AttachSearchResults(const TLstWatchlistItem& iItems,
                                               const TIntf<IInterfaceList>& iResults) {
  std::unordered_map<TGuid, TWatchlistItem*> byId;
  for (TWatchlistItem* item : iItems) byId.emplace(item->SearchResultId(), item);
  const int count = iResults ? iResults->GetCount() : 0;
  for (int i = 0; i < count; ++i) {
    Step();
    const auto result = GetAs<ISearchResult>(*iResults, i);
    if (!result) continue;
    const auto item = byId.find(result->GetId());
    if (item != byId.end()) item->second->SetSearchResult(result);
  }
}

// From the end, so that a group holds its items in the reverse order of the stream: every load
// turns the order round, and that is required. The stored category of an item stays as it was, also
// in the catch-all category.
void TWatchlistFileLoader::PlaceItems(TLstWatchlistItem& ioItems,
                                      const TIntf<IWatchlistIntegration>& iIntegration,
                                      const TLstWatchlistCategory& iTree) {
  const TCategoryIndex categories(iTree);
  while (ioItems.GetCount() > 0) {
    Step();
    const int last = ioItems.GetCount() - 1;
    TWatchlistCategory* category =
        categories.FindOrCatchAll(ioItems.GetItems(last).ParentCategoryId());
    if (category == nullptr) return;  // what is left goes with the list
    category->LstPlugin().FindOrAdd(iIntegration).LstItem().Add(ioItems.Extract(last));
  }
}

void TWatchlistFileLoader::LoadIntegration(const TIntf<IWatchlistIntegration>& iIntegration,
                                           TLstWatchlistCategory& ioLstCategory, bool iDecodeUTF8) {
  const TGuid id = iIntegration->GetId();
  const TString idText = GUIDToString(id);
  TLstWatchlistItem items(true);
  TMemoryStream stream;
  if (!TFileCompression::DecompressFile(FFileName, TString(cStreamItemsPrefix) + idText, stream,
                                        FOnStep)) {
    return;
  }
  Step();
  TWatchlistItemLoader::LoadFromStream(stream, items, iIntegration, iDecodeUTF8, FOnStep);
  if (!TFileCompression::DecompressFile(FFileName, idText, stream, FOnStep)) return;
  Step();
  const TIntf<IInterfaceList> results = iIntegration->LoadSearchResults(stream, iDecodeUTF8);
  Step();
  FoundIntegration(id);
  AttachSearchResults(items, results);
  PlaceItems(items, iIntegration, ioLstCategory);
}

void TWatchlistFileLoader::LoadIntegrations(TLstWatchlistCategory& ioLstCategory,
                                            const TLstWatchlistIntegration& iLstIntegration,
                                            const TChangeCounts& iBefore, bool iDecodeUTF8) {
  TStringList names;
  TFileCompression::FilesInside(FFileName, names, false);
  for (TWatchlistIntegration* record : iLstIntegration) {
    const TString idText = GUIDToString(record->Integration()->GetId());
    if (names.IndexOf(TString(cStreamItemsPrefix) + idText) < 0 || names.IndexOf(idText) < 0) {
      continue;
    }
    LoadIntegration(record->Integration(), ioLstCategory, iDecodeUTF8);
    // What was changed at a step is in no file yet.
    if (record->ChangeCount() == iBefore.at(record)) record->SetUnchanged();
  }
}

bool TWatchlistFileLoader::LoadsOlderVersion() {
  const int version = LoadFileVersion();
  if (version < cWatchlistFileVersion) {
    LogInfo(cSender, _resLoggingFileVersionOlder, {cWatchlistFileVersion, version});
  }
  if (version > cWatchlistFileVersion) {
    LogInfo(cSender, _resLoggingFileVersionNewer, {cWatchlistFileVersion, version});
  }
  return version < cWatchlistFileVersion;
}

void TWatchlistFileLoader::LoadStreams(TLstWatchlistCategory& ioLstCategory,
                                       TLstRemindItem& ioLstRemindItem,
                                       const TLstWatchlistIntegration& iLstIntegration) {
  TChangeCounts before;
  for (const TWatchlistIntegration* record : iLstIntegration) {
    before.emplace(record, record->ChangeCount());
  }
  const bool decodeUTF8 = LoadsOlderVersion();
  LoadRemindItems(ioLstRemindItem, decodeUTF8);
  LoadCategories(ioLstCategory, decodeUTF8);
  if (ioLstCategory.GetCount() == 0) AddEmptyCategory(ioLstCategory);
  LoadIntegrations(ioLstCategory, iLstIntegration, before, decodeUTF8);
}

bool TWatchlistFileLoader::LoadFromFile(TLstWatchlistCategory& ioLstCategory,
                                        TLstRemindItem& ioLstRemindItem,
                                        const TLstWatchlistIntegration& iLstIntegration) {
  if (!FileExists(FFileName)) {
    LogInfo(cSender, _resLoggingFileNotFound, {FFileName});
    AddEmptyCategory(ioLstCategory);
    return false;
  }
  try {
    LoadStreams(ioLstCategory, ioLstRemindItem, iLstIntegration);
    return true;
  } catch (const std::exception& e) {
    LogError(cSender, _resLoggingFileLoadFailed, {FFileName, ToSingleLine(MessageOf(e))});
  }
  ioLstCategory.Clear();
  AddEmptyCategory(ioLstCategory);
  return false;
}

}  // namespace kk
