#include "host/common/Images.h"

namespace kk {

TBitmap CreateBmp(TStringView /*iModule*/, TStringView iResourceName) {
  return {TString(iResourceName)};
}

void GetImageFromCommonResources(TStringView iResourceName, TBitmap& ioBitmap) {
  ioBitmap.ResourceName = iResourceName;
}

}  // namespace kk
