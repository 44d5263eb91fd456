#include "persistence/TWatchlistFileSaver.h"

#include "host/base/Guard.h"
#include "host/common/TFileHelper.h"
#include "host/common/TFileWriter.h"
#include "persistence/TWatchlistCategorySaver.h"
#include "persistence/TWatchlistItemSaver.h"
#include "plugin/texts/UnitKKPluginWatchlistConsts.h"
#include "plugin/texts/UnitKKPluginWatchlistResourceStrings.h"
#include "reminders/TLstRemindItemSync.h"
#include "reminders/TRemindItemSaver.h"

namespace kk {

namespace {

constexpr int cMaximumCompression = 3;
constexpr unsigned cReadableByItsOwner = 0600;

TString ItemsStreamName(const TWatchlistIntegration& iIntegration) {
  return TString(cStreamItemsPrefix) + GUIDToString(iIntegration.Integration()->GetId());
}

TString SearchResultsStreamName(const TWatchlistIntegration& iIntegration) {
  return GUIDToString(iIntegration.Integration()->GetId());
}

}  // namespace

TWatchlistFileSaver::TWatchlistFileSaver(TStringView iFileName)
    : FStreams(true), FFileName(iFileName) {}

TString TWatchlistFileSaver::BackupFileName(TStringView iFileName) {
  return TString(iFileName.substr(0, iFileName.empty() ? 0 : iFileName.size() - 1)) + u"~";
}

void TWatchlistFileSaver::MakeBackup(TStringView iFileName) {
  Guarded(u"TWatchlistFileSaver.MakeBackup", [&] {
    if (FileExists(iFileName)) RenameFile(iFileName, BackupFileName(iFileName));
  });
}

void TWatchlistFileSaver::GetAllStreamsInFile(TStringView iFileName,
                                              TLstStreamForCompression& ioLst) {
  std::vector<std::unique_ptr<TStreamForCompression>> streams;
  const bool read = Guarded(u"TWatchlistFileSaver.GetAllStreamsInFile",
                            [&] { TFileCompression::ReadPacked(iFileName, streams); });
  for (auto& stream : streams) {
    // An archive can't be written with a nameless entry, and nobody can ask for one.
    if (!stream->GetName().empty()) ioLst.Add(std::move(stream));
  }
  // The save goes on with what there is, as required, and the one after it writes over the backup.
  if (!read) PutAside(iFileName);
}

bool TWatchlistFileSaver::CanSaveRemindItems(const TLstRemindItem& iLst) const {
  if (!FSaveOnlyIfChanged) return true;
  const auto* live = dynamic_cast<const TLstRemindItemSync*>(&iLst);
  return live != nullptr && live->GetChanged();
}

void TWatchlistFileSaver::SaveRemindItems(const TLstRemindItem& iLst) {
  TRemindItemSaver::SaveToStream(GetStreamByName(cStreamRemind), iLst);
}

bool TWatchlistFileSaver::CanSaveIntegration(const TWatchlistIntegration& iIntegration) const {
  return !FSaveOnlyIfChanged || iIntegration.IsChanged();
}

bool TWatchlistFileSaver::CanSaveItems(const TWatchlistIntegration& iIntegration) const {
  return !FSaveOnlyIfChanged || iIntegration.ChangedItems();
}

bool TWatchlistFileSaver::CanSaveSearchResults(const TWatchlistIntegration& iIntegration) const {
  return !FSaveOnlyIfChanged || iIntegration.ChangedSearchResults();
}

void TWatchlistFileSaver::SaveIntegration(const TLstWatchlistCategory& iLstCategory,
                                          const TWatchlistIntegration& iIntegration) {
  TLstWatchlistItem items(false);
  iLstCategory.GetItemsByPluginId(iIntegration.Integration()->GetId(), items, true);
  if (items.GetCount() == 0) {
    DeleteStream(ItemsStreamName(iIntegration));
    DeleteStream(SearchResultsStreamName(iIntegration));
    return;
  }
  if (CanSaveItems(iIntegration)) SaveItems(iIntegration, items);
  if (CanSaveSearchResults(iIntegration)) SaveSearchResults(iIntegration, items);
}

void TWatchlistFileSaver::SaveItems(const TWatchlistIntegration& iIntegration,
                                    const TLstWatchlistItem& iLst) {
  TWatchlistItemSaver::SaveToStream(GetStreamByName(ItemsStreamName(iIntegration)), iLst,
                                    iIntegration.Integration());
}

void TWatchlistFileSaver::SaveSearchResults(const TWatchlistIntegration& iIntegration,
                                            const TLstWatchlistItem& iLst) {
  const TIntf<IInterfaceList> results = iLst.GetSearchResultsFromItems();
  iIntegration.Integration()->SaveSearchResults(
      *results, GetStreamByName(SearchResultsStreamName(iIntegration)));
}

void TWatchlistFileSaver::SaveToFile(const TLstWatchlistCategory& iLstCategory,
                                     const TLstRemindItem& iLstRemindItem,
                                     const TLstWatchlistIntegration& iLstIntegration) {
  FLastSaveFailed = false;
  FStreams.Clear();
  GetAllStreamsInFile(FFileName, FStreams);
  try {
    SaveStreams(iLstCategory, iLstRemindItem, iLstIntegration);
  } catch (const std::exception& e) {
    FLastSaveFailed = true;
    LogError(_resLoggingSenderWatchlistHandler, _resLoggingFileSaveFailed,
             {FFileName, ToSingleLine(MessageOf(e))});
  }
}

void TWatchlistFileSaver::SaveStreams(const TLstWatchlistCategory& iLstCategory,
                                      const TLstRemindItem& iLstRemindItem,
                                      const TLstWatchlistIntegration& iLstIntegration) {
  SaveFileVersion();
  if (CanSaveRemindItems(iLstRemindItem)) SaveRemindItems(iLstRemindItem);
  if (CanSaveCategories()) SaveCategories(iLstCategory);
  for (const TWatchlistIntegration* record : iLstIntegration) {
    if (CanSaveIntegration(*record)) SaveIntegration(iLstCategory, *record);
  }
  // The backup takes the file's place away, and with it who may read it. A file that could not be
  // read must not be followed by another.
  const unsigned mode = ModeOf(ToUtf8(FFileName)) | cReadableByItsOwner;
  MakeBackup(FFileName);
  TFileCompression::CompressStreams({FStreams.begin(), FStreams.end()}, FFileName,
                                    cMaximumCompression, true, mode);
}

void TWatchlistFileSaver::SaveFileVersion() {
  GetStreamByName(cStreamVersion).Write(ToUtf8(IntToStr(cWatchlistFileVersion)));
}

void TWatchlistFileSaver::SaveCategories(const TLstWatchlistCategory& iLst) {
  TWatchlistCategorySaver::SaveToStream(GetStreamByName(cStreamCategories), iLst);
}

void TWatchlistFileSaver::DeleteStream(TStringView iName) {
  const int index = IndexOfStreamName(iName);
  if (index >= 0) FStreams.Delete(index);
}

TMemoryStream& TWatchlistFileSaver::GetStreamByName(TStringView iName) {
  TStreamForCompression* stream = FStreams.FindByName(iName);
  if (stream == nullptr) {
    stream = &FStreams.Add(std::make_unique<TStreamForCompression>(
        iName, std::make_unique<TMemoryStream>().release(), true));
  }
  return stream->GetEmptyStream();
}

}  // namespace kk
