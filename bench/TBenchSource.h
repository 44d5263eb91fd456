#pragma once

#include "host/contract/IWatchlistIntegration.h"

namespace kk {

/// A source whose results take about 300 bytes each in its stream: id, name and a text that packs
/// about as well as real ones. They tell keys, and take part in the mobile exchange. Fast by
/// design, so that the watch list's own cost is seen.
class TBenchSource : public TInterfaced<IWatchlistIntegration> {
 public:
  TBenchSource(const TGuid& iId, TStringView iName) : FId(iId), FName(iName) {}

  TGuid GetId() const override { return FId; }
  TGuid GetAffiliateId() const override { return FId; }
  TString GetName() const override { return FName; }
  bool SupportsMobileExport() const override { return true; }
  TIntf<IInterfaceList> LoadSearchResults(TStream& iStream, bool iDecodeUTF8) override;
  void SaveSearchResults(const IInterfaceList& iList, TStream& ioStream) override;
  void ExportSearchResults(const IInterfaceList& iList, const TStringList& iParams,
                           TStringList& ioLines) override;
  TIntf<IInterfaceList> CreateSearchResults(const TStringList&) override;
  bool HandlesPluginGuid(TStringView) const override { return false; }

  /// A result; the number makes its text.
  static TIntf<ISearchResult> MakeResult(const TGuid& iId, uint32_t iNumber);

 private:
  TGuid FId;
  TString FName;
};

}  // namespace kk
