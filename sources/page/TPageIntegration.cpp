#include "sources/page/TPageIntegration.h"

#include "sources/page/PageConsts.h"
#include "sources/page/PageResourceStrings.h"
#include "sources/page/TPageSearchResult.h"
#include "sources/page/TPageStream.h"

namespace kk {

namespace {

// Names of the fields of a mobile record; the first three are the exchange's own.
constexpr char16_t cFieldPluginGuid[] = u"pluginguid";
constexpr char16_t cFieldCategoryGuid[] = u"categoryguid";
constexpr char16_t cFieldOfferDateUtc[] = u"offerdateutc";
constexpr char16_t cFieldName[] = u"name";
constexpr char16_t cFieldUrl[] = u"url";
constexpr char16_t cFieldPrice[] = u"price";
constexpr char16_t cFieldSeller[] = u"seller";

constexpr int64_t cMsOfUnixEpoch = 25569 * TDateTime::cMsPerDay;  // 1970-01-01

// A GUID as mobile records write it: in lower case, without braces.
TString MobileGuid(const TGuid& iGuid) {
  const TString text = GUIDToString(iGuid);
  TString mobile;
  for (const char16_t c : text.substr(1, text.size() - 2)) {
    mobile += c >= u'A' && c <= u'F' ? static_cast<char16_t>(c + 32) : c;
  }
  return mobile;
}

void AddLine(TStringList& ioLines, TStringView iName, TStringView iValue) {
  if (!iValue.empty()) {
    ioLines.Add(TString(iName) + u"=" + WithoutControlCharacters(ToSingleLine(iValue)));
  }
}

TString UtcText(TDateTime iLocal) {
  const TDateTime utc = TDateTime::FromMs(LocalToUtcMs(iLocal) + cMsOfUnixEpoch);
  return FormatDateTime(u"yyyy-mm-dd hh:nn:ss", utc);
}

}  // namespace

TPageIntegration::TPageIntegration(const THttpLimits& iLimits)
    : FUpdate(MakeIntf<TPageUpdate>(iLimits)),
      FVisualization(MakeIntf<TPageVisualization>(FUpdate)),
      FConverter(MakeIntf<TPageConverter>()) {}

TGuid TPageIntegration::GetId() const { return cPagePluginId; }

TString TPageIntegration::GetName() const { return _resPageName; }

bool TPageIntegration::QueryDelegated(const TGuid& iIid, void** oInterface) {
  return FUpdate->QueryInterface(iIid, oInterface) ||
         FVisualization->QueryInterface(iIid, oInterface) ||
         FConverter->QueryInterface(iIid, oInterface);
}

TIntf<IInterfaceList> TPageIntegration::LoadSearchResults(TStream& iStream, bool /*iDecodeUTF8*/) {
  const TIntf<IInterfaceList> results = NewInterfaceList();
  for (TPageData& data : ReadPageStream(iStream)) {
    results->Add(MakeIntf<TPageSearchResult>(std::move(data)));
  }
  return results;
}

void TPageIntegration::SaveSearchResults(const IInterfaceList& iList, TStream& ioStream) {
  TPageStreamWriter writer;
  for (int i = 0; i < iList.GetCount(); ++i) {
    if (const auto page = GetAs<IPageSearchResult>(iList, i)) writer.Add(page->Data());
  }
  ioStream.Write(writer.TakeBytes());
}

void TPageIntegration::ExportSearchResults(const IInterfaceList& iList, const TStringList& iParams,
                                           TStringList& ioLines) {
  for (int i = 0; i < iList.GetCount(); ++i) {
    const auto page = GetAs<IPageSearchResult>(iList, i);
    if (!page) continue;
    const TPageData& data = page->Data();
    ioLines.Add(u"[searchresult]");
    AddLine(ioLines, cFieldPluginGuid, MobileGuid(cPagePluginId));
    AddLine(ioLines, cFieldCategoryGuid, iParams.GetValue(cFieldCategoryGuid));
    AddLine(ioLines, cFieldName, data.Product.Name);
    AddLine(ioLines, cFieldUrl, FromUtf8(data.Address.Text()));
    AddLine(ioLines, cFieldPrice, PriceText(data));
    AddLine(ioLines, cFieldSeller, data.Product.Offer.Seller);
    if (!data.Changed.IsZero()) AddLine(ioLines, cFieldOfferDateUtc, UtcText(data.Changed));
    ioLines.Add(u"[/searchresult]");
  }
}

TIntf<IInterfaceList> TPageIntegration::CreateSearchResults(const TStringList& iFields) {
  const TIntf<IInterfaceList> results = NewInterfaceList();
  const TString url = iFields.GetValue(cFieldUrl);
  const auto address = TPageAddress::Parse(ToUtf8(url));
  if (!address) return results;
  const TString name = Trim(iFields.GetValue(cFieldName));
  results->Add(MakeIntf<TPageSearchResult>(NewPageData(*address, name.empty() ? url : name)));
  return results;
}

bool TPageIntegration::HandlesPluginGuid(TStringView iGuid) const {
  const TString guid = Trim(iGuid);
  return SameText(guid, MobileGuid(cPagePluginId)) || SameText(guid, GUIDToString(cPagePluginId));
}

}  // namespace kk
