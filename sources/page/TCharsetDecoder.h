#pragma once

#include <string>
#include <string_view>

namespace kk {

/// The text of a page from its bytes, in UTF-8 without a byte order mark. The character set is
/// found as browsers do (WHATWG, Encoding and HTML standards): a byte order mark, else the charset
/// of the HTTP header, else a <meta> within the first 1024 bytes; without any of them, or where
/// their label is none of the standard's, UTF-8 if all bytes are, and windows-1252 if not. Bytes
/// that have no meaning become U+FFFD; nothing fails. ISO-8859-16, which ICU lacks, counts as
/// unknown. Thread-safe.
std::string DecodePage(std::string_view iBytes, std::string_view iContentType);

/// The standard's encoding for a label, by ICU's name; empty for none. So no page gets at what ICU
/// knows beyond the standard, such as UTF-7.
std::string EncodingOfLabel(std::string_view iLabel);

/// The value of a parameter of a content type, such as charset; empty if there is none.
std::string ContentTypeParameter(std::string_view iContentType, std::string_view iName);

}  // namespace kk
