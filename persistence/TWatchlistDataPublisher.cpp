#include "persistence/TWatchlistDataPublisher.h"

#include <array>

#include "host/base/Exception.h"
#include "host/base/Guard.h"
#include "host/common/TFileHelper.h"
#include "persistence/TWatchlistHandler.h"
#include "plugin/texts/UnitKKPluginWatchlistConsts.h"
#include "plugin/texts/UnitKKPluginWatchlistResourceStrings.h"

namespace kk {

namespace {

struct TDataStream {
  TGuid Id;
  TStringView Name;
};

constexpr std::array cDataStreams{TDataStream{cDataStreamID, _resDataStreamName},
                                  TDataStream{cDataStreamIDMobile, _resDataStreamNameMobile}};

const TDataStream& DataStream(int iIndex, TStringView iOperation) {
  if (iIndex < 0 || iIndex >= static_cast<int>(cDataStreams.size())) {
    throw ERangeError(u"TWatchlistDataPublisher." + TString(iOperation));
  }
  return cDataStreams[static_cast<size_t>(iIndex)];
}

// The file goes when the import has ended, whatever became of it.
class TTempFile {
 public:
  explicit TTempFile(TString iName) : Name(std::move(iName)) {}
  ~TTempFile() {
    Guarded(u"TWatchlistDataPublisher", [this] { DeleteFile(Name); });
  }
  TTempFile(const TTempFile&) = delete;
  TTempFile& operator=(const TTempFile&) = delete;

  const TString Name;
};

void LoadFrom(TStringView iFileName, TMemoryStream& ioStream) {
  ioStream.Clear();
  ioStream.Write(ReadFileBytes(iFileName));
  ioStream.SetPosition(0);
}

}  // namespace

int TWatchlistDataPublisher::GetDataStreamCount() const {
  return static_cast<int>(cDataStreams.size());
}

TString TWatchlistDataPublisher::GetDataStreamName(int iIndex) const {
  return TString(DataStream(iIndex, u"GetDataStreamName").Name);
}

TGuid TWatchlistDataPublisher::GetDataStreamId(int iIndex) const {
  return DataStream(iIndex, u"GetDataStreamId").Id;
}

bool TWatchlistDataPublisher::GetHasDataForExport(int iIndex) const {
  DataStream(iIndex, u"GetHasDataForExport");
  return FEnabled && Handler()->GetItemCount() > 0;
}

bool TWatchlistDataPublisher::GetDataStream(const TGuid& iId, TMemoryStream& ioDataStream) {
  if (!FEnabled) return false;
  if (SameGuid(iId, cDataStreamIDMobile)) return GetMobileStream(ioDataStream);
  if (!SameGuid(iId, cDataStreamID)) return false;
  ioDataStream.Clear();
  Handler()->SaveAll();
  LoadFrom(Handler()->GetFileName(), ioDataStream);
  return true;
}

bool TWatchlistDataPublisher::GetMobileStream(TMemoryStream& ioDataStream) const {
  ioDataStream.Clear();
  const TString fileName = TempFileName();
  Handler()->SaveAllForMobileExport(fileName);
  if (!FileExists(fileName)) return false;
  LoadFrom(fileName, ioDataStream);
  DeleteFile(fileName);
  return true;
}

bool TWatchlistDataPublisher::SetDataStream(const TGuid& iId, TMemoryStream& iDataStream) {
  if (!FEnabled) return false;
  if (SameGuid(iId, cDataStreamIDMobile)) {
    iDataStream.SetPosition(0);
    return FDoImportFromKKMobile(this, iDataStream);
  }
  return SameGuid(iId, cDataStreamID) && ImportFile(iDataStream);
}

bool TWatchlistDataPublisher::ImportFile(TMemoryStream& iDataStream) {
  if (!FDoImportFromFile) return false;
  const TTempFile file(TempFileName());
  iDataStream.SetPosition(0);
  constexpr unsigned cOfThisUser = 0600;
  WriteFileAtomically(file.Name, iDataStream.Bytes(), cOfThisUser);
  return FDoImportFromFile(this, file.Name);
}

TString TWatchlistDataPublisher::TempFileName() const {
  return TFileHelper::GetTempFileName(IntToStr(reinterpret_cast<intptr_t>(this)) + u".tmp");
}

}  // namespace kk
