#include "plugin/TToolbarButtonWatchlist.h"

#include "plugin/texts/UnitKKPluginWatchlistConsts.h"
#include "plugin/texts/UnitKKPluginWatchlistResourceStrings.h"

namespace kk {

TGuid TToolbarButtonWatchlist::GetId() const { return cToolbuttonId; }

TGuid TToolbarButtonWatchlist::GetPluginId() const { return cPluginId; }

int TToolbarButtonWatchlist::GetSortOrder() const { return cToolbuttonSortOrder; }

TString TToolbarButtonWatchlist::GetCaption() const { return TString(_resToolButtonCaption); }

TBitmap TToolbarButtonWatchlist::GetImage() {
  if (!FBitmap) FBitmap = TBitmap{TString(cToolbuttonImageResourceName)};
  return *FBitmap;
}

TBitmap TToolbarButtonWatchlist::GetImageSelected() {
  if (!FBitmapSelected) FBitmapSelected = TBitmap{TString(cToolbuttonImageSelectedResourceName)};
  return *FBitmapSelected;
}

}  // namespace kk
