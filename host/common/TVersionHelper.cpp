#include "host/common/TVersionHelper.h"

namespace kk {

TString TVersionHelper::ReplaceVersionParams(TStringView iText) {
  const TString withMain = ReplaceAll(iText, u"%MV", IntToStr(cMainVersion));
  return ReplaceAll(withMain, u"%SV", u"." + IntToStr(cSubVersion));
}

}  // namespace kk
