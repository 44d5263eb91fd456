#include "persistence/MobileGuid.h"

#include <algorithm>

namespace kk {

TString GuidToStringEx(const TGuid& iId) {
  TString text = GUIDToString(iId);
  std::erase_if(text, [](char16_t iChar) { return iChar == u'{' || iChar == u'}'; });
  std::ranges::transform(text, text.begin(), AsciiLower);
  return text;
}

TGuid StringToGUIDEx(TStringView iText) {
  const TString text = Trim(iText);
  return text.empty() ? cEmptyGuid : StringToGUID(u"{" + text + u"}");
}

}  // namespace kk
