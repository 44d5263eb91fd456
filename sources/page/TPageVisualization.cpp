#include "sources/page/TPageVisualization.h"

#include "host/contract/TPluginIntegration.h"
#include "sources/page/PageConsts.h"
#include "sources/page/PageResourceStrings.h"
#include "sources/page/TPageConverter.h"
#include "sources/page/TPageSearchResult.h"

namespace kk {

namespace {

constexpr uint8_t cReminderKindSms = 0;
// What fits into an SMS beside the price, the end and the address.
constexpr size_t cMaxSmsName = 60;

class TPageReminderText : public TInterfaced<IReminderText> {
 public:
  TPageReminderText(TString iCaption, TString iText, TString iLink)
      : FCaption(std::move(iCaption)), FText(std::move(iText)), FLink(std::move(iLink)) {}

  TString GetCaption() const override { return FCaption; }
  TString GetText() const override { return FText; }
  TString GetLink() const override { return FLink; }

 private:
  TString FCaption;
  TString FText;
  TString FLink;
};

TString Shortened(const TString& iName) {
  if (iName.size() <= cMaxSmsName) return iName;
  const bool cutsPair = iName[cMaxSmsName - 2] >= 0xD800 && iName[cMaxSmsName - 2] < 0xDC00;
  return iName.substr(0, cMaxSmsName - (cutsPair ? 2 : 1)) + u"…";
}

// What is known of a page, each piece with its words.
std::vector<TString> FactsOf(const TPageData& iData) {
  const TOffer& offer = iData.Product.Offer;
  std::vector<TString> facts;
  if (offer.Price) facts.push_back(Format(_resPageReminderPrice, {PriceText(iData)}));
  if (!offer.Seller.empty()) facts.push_back(Format(_resPageReminderSeller, {offer.Seller}));
  if (!offer.EndTime.IsZero()) {
    facts.push_back(Format(_resPageReminderEnd, {TimeText(offer.EndTime)}));
  }
  return facts;
}

TString Joined(const std::vector<TString>& iParts, TStringView iSeparator) {
  TString text;
  for (const TString& part : iParts) {
    if (!text.empty()) text += iSeparator;
    text += part;
  }
  return text;
}

}  // namespace

TPageVisualization::TPageVisualization(TIntf<TPageUpdate> iUpdate)
    : FUpdate(std::move(iUpdate)), FList(cPageListLayoutKey, _resPageListEmpty) {}

TString TPageVisualization::GetCaption() const { return _resPageName; }

TString TPageVisualization::GetMenuCaption() const { return _resPageName; }

TBitmap TPageVisualization::GetImage() const { return {cPageImage}; }

TBitmap TPageVisualization::GetImageSelected() const { return {cPageImageSelected}; }

TIntf<IIntegrationInfo> TPageVisualization::GetIntegrationInfo() const {
  return MakeIntf<TPluginIntegrationInfo>(cPagePluginId, cPagePluginGroup);
}

TIntf<IReminderText> TPageVisualization::GetReminderText(uint8_t iKind,
                                                         const TIntf<ISearchResult>& iResult) {
  const auto page = Supports<IPageSearchResult>(iResult);
  if (!page) return {};
  const TPageData& data = page->Data();
  const TString& name = data.Product.Name;
  const TString link = FromUtf8(data.Address.Text());
  std::vector<TString> parts = FactsOf(data);
  if (iKind == cReminderKindSms) {
    parts.insert(parts.begin(), Shortened(name));
    return MakeIntf<TPageReminderText>(Shortened(name), Joined(parts, u", "), link);
  }
  parts.insert(parts.begin(), name);
  return MakeIntf<TPageReminderText>(name, Joined(parts, u"\r\n"), link);
}

TIntf<ISearchResult> TPageVisualization::CreateSearchResultFromCmdLine(TStringView iValue) {
  const auto address = TPageAddress::Parse(ToUtf8(iValue));
  if (!address) return {};
  return MakeIntf<TPageSearchResult>(NewPageData(*address, Trim(iValue)));
}

void TPageVisualization::ReleaseListData() {
  FList.ReleaseListData();
  FVisible = false;
}

void TPageVisualization::Close() {
  FList.Close();
  FVisible = false;
}

bool TPageVisualization::QueryDelegated(const TGuid& iIid, void** oInterface) {
  return FList.Results()->QueryInterface(iIid, oInterface) ||
         FUpdate->QueryInterface(iIid, oInterface);
}

}  // namespace kk
