#pragma once

#include "host/base/IInterfaceList.h"
#include "host/base/TStream.h"
#include "host/base/TStringList.h"
#include "host/contract/ISearchResult.h"

namespace kk {

inline constexpr TGuid IID_WatchlistIntegration =
    GuidLiteral("{BD2C5636-F634-4877-B534-FEDCA703F341}");

/// A source whose results can be watched: it loads, saves and refreshes them. Its results' streams
/// are in a format of its own that nobody else reads. Main thread.
class IWatchlistIntegration : public IInterface {
 public:
  using TParent = IInterface;
  static constexpr TGuid cIid = IID_WatchlistIntegration;

  /// The source's plug-in id.
  virtual TGuid GetId() const = 0;
  /// The id of the source that keeps this one's results; GetId where it keeps its own.
  virtual TGuid GetAffiliateId() const = 0;
  /// As the user reads it.
  virtual TString GetName() const = 0;
  virtual bool SupportsMobileExport() const = 0;
  /// Reads what SaveSearchResults wrote, from the stream's position on. With iDecodeUTF8 the stream
  /// comes from a watch list file of a version before the current one. Raises on a stream that it
  /// can't read.
  virtual TIntf<IInterfaceList> LoadSearchResults(TStream& iStream, bool iDecodeUTF8) = 0;
  /// Writes the results, in their order; empty entries are passed over. Raises if it can't.
  virtual void SaveSearchResults(const IInterfaceList& iList, TStream& ioStream) = 0;
  /// Writes the results as lines for the mobile exchange.
  virtual void ExportSearchResults(const IInterfaceList& iList, const TStringList& iParams,
                                   TStringList& ioLines) = 0;
  /// Makes results from the name=value fields of a mobile record.
  virtual TIntf<IInterfaceList> CreateSearchResults(const TStringList& iFields) = 0;
  /// Whether a mobile record with this plug-in GUID text belongs to this source.
  virtual bool HandlesPluginGuid(TStringView iGuid) const = 0;
};

}  // namespace kk
