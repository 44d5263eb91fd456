#include "views/columns/TAdditionalColumnDateOffer.h"

#include "plugin/texts/UnitKKPluginWatchlistConsts.h"
#include "plugin/texts/UnitKKPluginWatchlistResourceStrings.h"
#include "views/columns/TTreeViewCellPainterDateOffer.h"

namespace kk {

TAdditionalColumnDateOffer::TAdditionalColumnDateOffer()
    : TAdditionalColumnText(
          {.Id = cColumnIDDateOffer, .Caption = TString(_resColumnCaptionDateOffer), .Width = 60}) {
}

std::unique_ptr<ITreeViewCellPainter> TAdditionalColumnDateOffer::CreateCellPainter() const {
  return std::make_unique<TTreeViewCellPainterDateOffer>();
}

}  // namespace kk
