#pragma once

#include "host/base/IInterface.h"
#include "host/base/TStream.h"

namespace kk {

/// The data of a plug-in as streams that the host moves between installations. Main thread. An
/// index without a stream raises ERangeError.
class IPluginDataPublisher : public IInterface {
 public:
  using TParent = IInterface;
  static constexpr TGuid cIid = GuidLiteral("{9F932910-4CD1-41E7-A093-C8B7FA96D838}");

  virtual int GetDataStreamCount() const = 0;
  virtual TString GetDataStreamName(int iIndex) const = 0;
  virtual TGuid GetDataStreamId(int iIndex) const = 0;
  virtual bool GetHasDataForExport(int iIndex) const = 0;
  virtual bool GetDataStream(const TGuid& iId, TMemoryStream& ioDataStream) = 0;
  virtual bool SetDataStream(const TGuid& iId, TMemoryStream& iDataStream) = 0;
};

}  // namespace kk
