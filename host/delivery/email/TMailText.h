#pragma once

#include <string>

#include "host/base/TDateTime.h"
#include "host/base/TString.h"

namespace kk {

/// Text for one line that others read by rules: a header, a command, a line of the log. Without
/// control characters (NUL, CR and LF among them) and without line and paragraph separators.
TString HeaderText(TStringView iText);

/// A header's text without its line breaks: as it is where all of it is plain (printable ASCII that
/// fits in a line), else as encoded words of 64 characters at most (RFC 2047), one to a line.
std::string EncodedText(TStringView iText);
/// The same for the name before an address, where fewer characters are plain.
std::string EncodedName(TStringView iName);

/// A text of lines as quoted-printable (RFC 2045, 6.7): ASCII, lines of 76 characters at most that
/// end with CR LF, none of which begins with a dot. CR LF, CR, LF, line and paragraph separators
/// end a line; control characters other than the tab are left out. A last line without an end gets
/// one.
std::string QuotedPrintable(TStringView iText);

/// A moment, as local time and as UTC (milliseconds since 1970), as RFC 5322 writes it:
/// "Fri, 20 Nov 2026 18:30:00 +0100".
std::string MailDate(TDateTime iLocal, int64_t iUtcMs);

}  // namespace kk
