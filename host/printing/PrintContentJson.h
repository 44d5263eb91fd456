#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "host/controls/IPrinting.h"

namespace kk {

/// What is printed as JSON, for the program that makes PDF files: {"lists": [{"title": "...",
/// "date": "...", "source": "...", "headers": [four texts], "titles": [texts], "rows":
/// [[texts]]}]}. Any thread.
std::string PrintContentsToJson(const std::vector<TPrintContent>& iContents);
/// Raises Exception with a German text for anything else than that.
std::vector<TPrintContent> PrintContentsFromJson(std::string_view iJson);

}  // namespace kk
