#pragma once

#include "host/base/TDelegate.h"
#include "host/base/TObject.h"
#include "host/contract/IPluginDataPublisher.h"

namespace kk {

/// Imports a file, or a stream of the mobile program; true if it was imported.
using TNotifyEventImportFromFile = TDelegate<bool(TObject* Sender, TStringView iFileName)>;
using TNotifyEventImportFromKKMobile = TDelegate<bool(TObject* Sender, TMemoryStream& iStream)>;

/// The watch list's data for the host, as two streams: the whole file, and the document for the
/// program on the telephone. Reading one saves first; writing one imports it in the background.
/// Failures of files raise EInOutError. Main thread.
class TWatchlistDataPublisher : public TInterfaced<IPluginDataPublisher>, public TObject {
 public:
  /// The first may be empty: nothing is imported then.
  TWatchlistDataPublisher(TNotifyEventImportFromFile iDoImportFromFile,
                          TNotifyEventImportFromKKMobile iDoImportFromKKMobile)
      : FDoImportFromFile(iDoImportFromFile), FDoImportFromKKMobile(iDoImportFromKKMobile) {}

  /// Off, there is no data and nothing is imported; on at first. Off before the handler or the
  /// receivers go, and as long as the list is not loaded: reading would save over the file.
  void SetEnabled(bool iEnabled) { FEnabled = iEnabled; }

  int GetDataStreamCount() const override;
  TString GetDataStreamName(int iIndex) const override;
  TGuid GetDataStreamId(int iIndex) const override;
  /// Whether there is any item.
  bool GetHasDataForExport(int iIndex) const override;
  /// The stream's content is replaced. False for an id that is none, and if nothing was written.
  bool GetDataStream(const TGuid& iId, TMemoryStream& ioDataStream) override;
  /// Whether it was imported. False for an id that is none.
  bool SetDataStream(const TGuid& iId, TMemoryStream& iDataStream) override;

 private:
  /// Of this object alone.
  TString TempFileName() const;
  bool GetMobileStream(TMemoryStream& ioDataStream) const;
  bool ImportFile(TMemoryStream& iDataStream);

  TNotifyEventImportFromFile FDoImportFromFile;
  TNotifyEventImportFromKKMobile FDoImportFromKKMobile;
  bool FEnabled = true;
};

}  // namespace kk
