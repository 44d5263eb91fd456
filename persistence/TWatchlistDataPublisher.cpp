#include "persistence/TWatchlistDataPublisher.h"

#include "host/base/Exception.h"

namespace kk {

TString TWatchlistDataPublisher::GetDataStreamName(int) const {
  throw ERangeError(u"TWatchlistDataPublisher.GetDataStreamName");
}

TGuid TWatchlistDataPublisher::GetDataStreamId(int) const {
  throw ERangeError(u"TWatchlistDataPublisher.GetDataStreamId");
}

bool TWatchlistDataPublisher::GetHasDataForExport(int) const {
  throw ERangeError(u"TWatchlistDataPublisher.GetHasDataForExport");
}

bool TWatchlistDataPublisher::GetDataStream(const TGuid&, TMemoryStream&) { return false; }

bool TWatchlistDataPublisher::SetDataStream(const TGuid&, TMemoryStream&) { return false; }

}  // namespace kk
