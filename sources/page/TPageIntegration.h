#pragma once

#include "host/contract/IWatchlistIntegration.h"
#include "sources/page/TPageConverter.h"
#include "sources/page/TPageUpdate.h"
#include "sources/page/TPageVisualization.h"

namespace kk {

/// This source as the watch list knows it. It answers the queries for its refresh, its list view
/// and its converter, too. Main thread.
class TPageIntegration : public TInterfaced<IWatchlistIntegration> {
 public:
  explicit TPageIntegration(const THttpLimits& iLimits = {});

  TGuid GetId() const override;
  TGuid GetAffiliateId() const override { return GetId(); }
  TString GetName() const override;
  bool SupportsMobileExport() const override { return true; }
  /// iDecodeUTF8 means nothing here: the format has always been one of its own.
  TIntf<IInterfaceList> LoadSearchResults(TStream& iStream, bool iDecodeUTF8) override;
  void SaveSearchResults(const IInterfaceList& iList, TStream& ioStream) override;
  /// Each result as the lines of one "searchresult".
  void ExportSearchResults(const IInterfaceList& iList, const TStringList& iParams,
                           TStringList& ioLines) override;
  /// One result as it was when it was exported; none without an address.
  TIntf<IInterfaceList> CreateSearchResults(const TStringList& iFields) override;
  bool HandlesPluginGuid(TStringView iGuid) const override;

  TPageUpdate& Update() const { return *FUpdate; }
  TPageVisualization& Visualization() const { return *FVisualization; }
  const TIntf<TPageConverter>& Converter() const { return FConverter; }

 protected:
  bool QueryDelegated(const TGuid& iIid, void** oInterface) override;

 private:
  TIntf<TPageUpdate> FUpdate;
  TIntf<TPageVisualization> FVisualization;
  TIntf<TPageConverter> FConverter;
};

}  // namespace kk
