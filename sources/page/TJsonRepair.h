#pragma once

#include <string>
#include <string_view>

namespace kk {

/// Makes JSON of what pages write where JSON should stand. Linear; nothing fails: what can't be
/// mended is broken JSON afterwards, too. UTF-8.
///
/// Mended: the wrappings of CDATA and HTML comments, comments of JavaScript, commas that are too
/// many or missing between objects and lists, several values beside each other (they become a
/// list), line breaks and other control characters in strings, quotation marks within a string,
/// escapes that JSON doesn't know and halves of surrogates, strings in single quotes, names
/// without quotes, "undefined" and its like (they become null), numbers that JSON doesn't know
/// (they become strings), and a semicolon at the end.
std::string RepairJson(std::string_view iText);

}  // namespace kk
