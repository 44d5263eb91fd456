#pragma once

#include "host/base/TDelegate.h"
#include "host/base/TObject.h"
#include "host/contract/IPluginDataPublisher.h"

namespace kk {

/// Imports a file, or a stream of the mobile program; true if it was imported.
using TNotifyEventImportFromFile = TDelegate<bool(TObject* Sender, TStringView iFileName)>;
using TNotifyEventImportFromKKMobile = TDelegate<bool(TObject* Sender, TMemoryStream& iStream)>;

/// The watch list's data for the host. The streams come with the export: until then there are none,
/// every index raises ERangeError, and every id is answered by false. Main thread.
class TWatchlistDataPublisher : public TInterfaced<IPluginDataPublisher>, public TObject {
 public:
  /// The receivers outlive the publisher.
  TWatchlistDataPublisher(TNotifyEventImportFromFile iDoImportFromFile,
                          TNotifyEventImportFromKKMobile iDoImportFromKKMobile)
      : FDoImportFromFile(iDoImportFromFile), FDoImportFromKKMobile(iDoImportFromKKMobile) {}

  int GetDataStreamCount() const override { return 0; }
  TString GetDataStreamName(int iIndex) const override;
  TGuid GetDataStreamId(int iIndex) const override;
  bool GetHasDataForExport(int iIndex) const override;
  bool GetDataStream(const TGuid& iId, TMemoryStream& ioDataStream) override;
  bool SetDataStream(const TGuid& iId, TMemoryStream& iDataStream) override;

  /// What writing a stream will call.
  const TNotifyEventImportFromFile& DoImportFromFile() const { return FDoImportFromFile; }
  const TNotifyEventImportFromKKMobile& DoImportFromKKMobile() const {
    return FDoImportFromKKMobile;
  }

 private:
  TNotifyEventImportFromFile FDoImportFromFile;
  TNotifyEventImportFromKKMobile FDoImportFromKKMobile;
};

}  // namespace kk
