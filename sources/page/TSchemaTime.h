#pragma once

#include <string_view>

#include "host/base/TDateTime.h"

namespace kk {

/// When something ends, from a date or a date and time of ISO 8601 as pages write them:
/// "2020-12-06T20:00:00.000Z", "2020-12-06 20:00", "20201206T200000+0100", "2020-12-06". Local time
/// then; one without an offset is local already, and a day alone ends with its last second. Zero
/// for any other text and for years before 1970 or after 2199, with which pages mean "never".
TDateTime EndTimeFromText(std::string_view iText);

}  // namespace kk
