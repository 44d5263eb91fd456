#include "sources/page/TPageMobile.h"

#include "host/base/Exception.h"
#include "sources/page/PageConsts.h"
#include "sources/page/TPageConverter.h"

namespace kk {

namespace {

// The first three are the exchange's own.
constexpr char16_t cFieldPluginGuid[] = u"pluginguid";
constexpr char16_t cFieldCategoryGuid[] = u"categoryguid";
constexpr char16_t cFieldOfferDateUtc[] = u"offerdateutc";
constexpr char16_t cFieldName[] = u"name";
constexpr char16_t cFieldUrl[] = u"url";
constexpr char16_t cFieldPrice[] = u"price";
constexpr char16_t cFieldCurrency[] = u"currency";
constexpr char16_t cFieldAvailability[] = u"availability";
constexpr char16_t cFieldSeller[] = u"seller";
constexpr char16_t cFieldPicture[] = u"image";
constexpr char16_t cFieldEndTimeUtc[] = u"endtimeutc";

constexpr char16_t cTimeFormat[] = u"yyyy-mm-dd hh:nn:ss";
constexpr int64_t cMsOfUnixEpoch = 25569 * TDateTime::cMsPerDay;  // 1970-01-01

// A GUID as mobile records write it: in lower case, without braces.
TString MobileGuid(const TGuid& iGuid) {
  const TString text = GUIDToString(iGuid);
  TString mobile;
  for (const char16_t c : text.substr(1, text.size() - 2)) mobile += AsciiLower(c);
  return mobile;
}

void AddLine(TStringList& ioLines, TStringView iName, TStringView iValue) {
  const TString value = LineText(iValue);
  if (!value.empty()) ioLines.Add(TString(iName) + u"=" + value);
}

void AddTime(TStringList& ioLines, TStringView iName, TDateTime iLocal) {
  if (iLocal.IsZero()) return;
  const TDateTime utc = TDateTime::FromMs(LocalToUtcMs(iLocal) + cMsOfUnixEpoch);
  AddLine(ioLines, iName, FormatDateTime(cTimeFormat, utc));
}

TDateTime TimeOf(const TStringList& iFields, TStringView iName) {
  const TString text = Trim(iFields.GetValue(iName));
  if (text.empty()) return {};
  try {
    return UtcMsToLocal(DateTimeStrEval(cTimeFormat, text).Ms() - cMsOfUnixEpoch);
  } catch (const EConvertError&) {
    return {};
  }
}

TString TextOf(const TStringList& iFields, TStringView iName) {
  return LineText(iFields.GetValue(iName));
}

std::optional<TPageAddress> AddressOf(const TStringList& iFields, TStringView iName) {
  return TPageAddress::Parse(ToUtf8(iFields.GetValue(iName)));
}

}  // namespace

void WriteMobilePage(const TPageData& iData, const TStringList& iParams, TStringList& ioLines) {
  const TOffer& offer = iData.Product.Offer;
  ioLines.Add(u"[searchresult]");
  AddLine(ioLines, cFieldPluginGuid, MobileGuid(cPagePluginId));
  AddLine(ioLines, cFieldCategoryGuid, iParams.GetValue(cFieldCategoryGuid));
  AddLine(ioLines, cFieldName, iData.Product.Name);
  AddLine(ioLines, cFieldUrl, FromUtf8(iData.Address.Text()));
  if (offer.Price) AddLine(ioLines, cFieldPrice, FromUtf8(offer.Price->ToNumber()));
  AddLine(ioLines, cFieldCurrency, offer.Currency);
  AddLine(ioLines, cFieldAvailability, FromUtf8(AvailabilityName(offer.Availability)));
  AddLine(ioLines, cFieldSeller, offer.Seller);
  AddLine(ioLines, cFieldPicture, iData.Product.Image);
  AddTime(ioLines, cFieldEndTimeUtc, offer.EndTime);
  AddTime(ioLines, cFieldOfferDateUtc, iData.Changed);
  ioLines.Add(u"[/searchresult]");
}

std::optional<TPageData> ReadMobilePage(const TStringList& iFields) {
  const auto address = AddressOf(iFields, cFieldUrl);
  if (!address) return {};
  const TString name = TextOf(iFields, cFieldName);
  TPageData data = NewPageData(*address, name.empty() ? TextOf(iFields, cFieldUrl) : name);
  TOffer& offer = data.Product.Offer;
  offer.Price = TPrice::FromNumber(ToUtf8(Trim(iFields.GetValue(cFieldPrice))));
  offer.Currency = FromUtf8(CurrencyFromText(ToUtf8(iFields.GetValue(cFieldCurrency))));
  offer.Availability = AvailabilityFromText(ToUtf8(iFields.GetValue(cFieldAvailability)));
  offer.Seller = TextOf(iFields, cFieldSeller);
  offer.EndTime = TimeOf(iFields, cFieldEndTimeUtc);
  if (const auto image = AddressOf(iFields, cFieldPicture)) {
    data.Product.Image = FromUtf8(image->Text());
  }
  data.Changed = TimeOf(iFields, cFieldOfferDateUtc);
  return data;
}

bool IsMobilePageGuid(TStringView iGuid) {
  const TString guid = Trim(iGuid);
  return SameText(guid, MobileGuid(cPagePluginId)) || SameText(guid, GUIDToString(cPagePluginId));
}

}  // namespace kk
