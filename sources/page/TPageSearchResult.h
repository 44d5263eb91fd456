#pragma once

#include "host/contract/ISearchResult.h"
#include "host/contract/ISearchResultSameKey.h"
#include "sources/page/TPageData.h"

namespace kk {

/// By which this source knows its own results. Main thread.
class IPageSearchResult : public ISearchResult {
 public:
  using TParent = ISearchResult;
  static constexpr TGuid cIid = GuidLiteral("{6E2C1F57-9B0A-4D1E-8C63-3D7A51F0B2E4}");

  virtual const TPageData& Data() const = 0;
};

/// One watched page. What was read of it never changes; a refresh makes a new result.
class TPageSearchResult : public TInterfaced<IPageSearchResult, ISearchResultSameKey> {
 public:
  explicit TPageSearchResult(TPageData iData) : FData(std::move(iData)) {}

  TGuid GetId() const override { return FData.Id; }
  TString GetName() const override { return FData.Product.Name; }
  bool HasEndTime() const override { return !FData.Product.Offer.EndTime.IsZero(); }
  TDateTime GetEndTime() const override { return FData.Product.Offer.EndTime; }
  void SetId(const TGuid& iId) override { FData.Id = iId; }
  /// True for a result of this source with the same address.
  bool IsSame(const TIntf<ISearchResult>& iOther) const override;
  TIntf<ISearchResult> Clone() const override;
  /// What of the address decides that.
  TString GetSameKey() const override { return FromUtf8(FData.Address.Key()); }

  const TPageData& Data() const override { return FData; }

 private:
  TPageData FData;
};

}  // namespace kk
