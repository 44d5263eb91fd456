#include "sources/page/TPageList.h"

#include "host/common/OpenURL.h"
#include "sources/page/PageConsts.h"
#include "sources/page/PageResourceStrings.h"
#include "sources/page/TPageConverter.h"
#include "sources/page/TPageSearchResult.h"

namespace kk {

namespace {

// One column: what it shows of a page, and by what it sorts.
class TPageColumnContent : public IResultColumnContent {
 public:
  using TText = TString (*)(const TPageData& iData);
  using TKey = TResultSortKey (*)(const TPageData& iData);

  TPageColumnContent(TText iText, TKey iKey) : FText(iText), FKey(iKey) {}

  TResultCell GetCell(const TIntf<ISearchResult>& iResult) const override {
    TResultCell cell;
    if (const auto page = Supports<IPageSearchResult>(iResult)) {
      cell.Text = LineText(FText(page->Data()));
    }
    return cell;
  }
  TResultSortKey GetSortKey(const TIntf<ISearchResult>& iResult) const override {
    const auto page = Supports<IPageSearchResult>(iResult);
    return page ? FKey(page->Data()) : TResultSortKey();
  }

 private:
  TText FText;
  TKey FKey;
};

using TAlign = TResultAlignment;

TResultColumn Column(const TGuid& iId, TStringView iCaption, int iWidth, TAlign iAlignment,
                     TPageColumnContent::TText iText, TPageColumnContent::TKey iKey) {
  TResultColumn column;
  column.Id = iId;
  column.Caption = iCaption;
  column.Width = iWidth;
  column.Alignment = iAlignment;
  column.Content = std::make_shared<TPageColumnContent>(iText, iKey);
  return column;
}

const TOffer& OfferOf(const TPageData& iData) { return iData.Product.Offer; }

TResultSortKey PriceKey(const TPageData& iData) {
  const TOffer& offer = OfferOf(iData);
  return offer.Price ? TResultSortKey::OfNumber(offer.Price->ToDouble(), offer.Currency)
                     : TResultSortKey();
}

// What can be had stands in front.
TResultSortKey AvailabilityKey(const TPageData& iData) {
  const TAvailability availability = OfferOf(iData).Availability;
  if (availability == TAvailability::avUnknown) return {};
  return TResultSortKey::OfNumber(static_cast<double>(availability));
}

std::vector<TResultColumn> PageColumns() {
  return {
      Column(
          cPageColumnName, _resPageColumnName, 260, TAlign::raLeft,
          [](const TPageData& iData) { return iData.Product.Name; },
          [](const TPageData& iData) { return TResultSortKey::OfText(iData.Product.Name); }),
      Column(cPageColumnPrice, _resPageColumnPrice, 100, TAlign::raRight, &PriceText, &PriceKey),
      Column(
          cPageColumnAvailability, _resPageColumnAvailability, 120, TAlign::raLeft,
          [](const TPageData& iData) { return AvailabilityDisplay(OfferOf(iData).Availability); },
          &AvailabilityKey),
      Column(
          cPageColumnSeller, _resPageColumnSeller, 140, TAlign::raLeft,
          [](const TPageData& iData) { return OfferOf(iData).Seller; },
          [](const TPageData& iData) { return TResultSortKey::OfText(OfferOf(iData).Seller); }),
      Column(
          cPageColumnEnd, _resPageColumnEnd, 120, TAlign::raLeft,
          [](const TPageData& iData) { return TimeText(OfferOf(iData).EndTime); },
          [](const TPageData& iData) { return TResultSortKey::OfTime(OfferOf(iData).EndTime); }),
      Column(
          cPageColumnChanged, _resPageColumnChanged, 120, TAlign::raLeft,
          [](const TPageData& iData) { return TimeText(iData.Changed); },
          [](const TPageData& iData) { return TResultSortKey::OfTime(iData.Changed); }),
      Column(
          cPageColumnAddress, _resPageColumnAddress, 260, TAlign::raLeft,
          [](const TPageData& iData) { return FromUtf8(iData.Address.Text()); },
          [](const TPageData& iData) {
            return TResultSortKey::OfText(FromUtf8(iData.Address.Text()));
          }),
  };
}

}  // namespace

TPageList::TPageList(TStringView iLayoutKey, TStringView iEmptyText)
    : TResultView(PageColumns(), iLayoutKey) {
  Table().SetEmptyText(iEmptyText);
  TMenuItem& open =
      OwnEntries().Add(_resPageOpen, TNotifyEvent::Of<&TPageList::DoOpenFocused>(this));
  open.SetDefault(true);
  SetOnOpen(TNotifyOpenResult::Of<&TPageList::DoOpenPage>(this));
}

void TPageList::DoOpenPage(TObject*, const TIntf<ISearchResult>& iResult) {
  if (const auto page = Supports<IPageSearchResult>(iResult)) {
    OpenURL(FromUtf8(page->Data().Address.Text()), true);
  }
}

void TPageList::DoOpenFocused(TObject* Sender) { DoOpenPage(Sender, Results()->GetFocused()); }

}  // namespace kk
