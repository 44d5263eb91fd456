#pragma once

#include "host/base/TGuid.h"

namespace kk {

/// The form of ids in the document for the mobile program: no braces, lower case. The empty id is
/// 32 zeros with hyphens.
TString GuidToStringEx(const TGuid& iId);
/// Reads that form, blanks at the ends aside; an empty text is the empty id. Any other text raises
/// EConvertError.
TGuid StringToGUIDEx(TStringView iText);

}  // namespace kk
