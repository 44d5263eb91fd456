#include "sources/page/TPageConverter.h"

#include "sources/page/PageResourceStrings.h"
#include "sources/page/TPageSearchResult.h"

namespace kk {

TString LineText(TStringView iText) { return WithoutControlCharacters(ToSingleLine(iText)); }

TString PriceText(const TPageData& iData) {
  const TOffer& offer = iData.Product.Offer;
  return offer.Price ? offer.Price->ToDisplay(offer.Currency) : TString();
}

TString TimeText(TDateTime iTime) {
  return iTime.IsZero() ? TString() : FormatDateTime(u"dd.mm.yyyy hh:nn", iTime);
}

void TPageConverter::Convert(bool iHeader, const TIntf<ISearchResult>& iSearchResult,
                             TStringList& ioLines) {
  if (iHeader) {
    for (const TStringView title :
         {_resPageColumnName, _resPageColumnPrice, _resPageColumnAvailability, _resPageColumnSeller,
          _resPageColumnEnd, _resPageColumnAddress, _resPageColumnImage, _resPageColumnChanged}) {
      ioLines.Add(title);
    }
    return;
  }
  const auto page = Supports<IPageSearchResult>(iSearchResult);
  if (!page) return;
  const TPageData& data = page->Data();
  const TProduct& product = data.Product;
  for (const TString& value :
       {product.Name, PriceText(data), AvailabilityDisplay(product.Offer.Availability),
        product.Offer.Seller, TimeText(product.Offer.EndTime), FromUtf8(data.Address.Text()),
        product.Image, TimeText(data.Changed)}) {
    ioLines.Add(LineText(value));
  }
}

}  // namespace kk
