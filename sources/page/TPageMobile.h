#pragma once

#include <optional>

#include "host/base/TStringList.h"
#include "sources/page/TPageData.h"

namespace kk {

/// A page as one "searchresult" of the document for the program on the telephone; docs/format.md
/// tells its fields. What only this installation can use stays at home: the id, and what a server
/// has said for asking again. Main thread.

/// The lines of one result, behind those that are there. Each value stands on one line.
void WriteMobilePage(const TPageData& iData, const TStringList& iParams, TStringList& ioLines);
/// A page as it was then, with a new id, which the next refresh reads from the ground up. Nothing
/// without an address of http or https; any other field that is missing or makes no sense is
/// unknown.
std::optional<TPageData> ReadMobilePage(const TStringList& iFields);
/// Whether a record with this id is one of these: in any case, with braces or without.
bool IsMobilePageGuid(TStringView iGuid);

}  // namespace kk
