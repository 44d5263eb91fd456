#include "host/search/TToolbarButtonSearch.h"

#include "host/search/SearchConsts.h"
#include "host/search/SearchResourceStrings.h"

namespace kk {

TGuid TToolbarButtonSearch::GetId() const { return cToolbuttonSearchId; }

TGuid TToolbarButtonSearch::GetPluginId() const { return cSearchPluginId; }

int TToolbarButtonSearch::GetSortOrder() const { return cToolbuttonSearchSortOrder; }

TString TToolbarButtonSearch::GetCaption() const { return TString(_resSearchCaption); }

TBitmap TToolbarButtonSearch::GetImage() { return {TString(cToolbuttonSearchImage)}; }

TBitmap TToolbarButtonSearch::GetImageSelected() {
  return {TString(cToolbuttonSearchImageSelected)};
}

}  // namespace kk
