#pragma once

#include <iosfwd>
#include <string>
#include <vector>

namespace kk {

/// The program kaufkobolde-print: reads lists as JSON (PrintContentsFromJson) and writes them as
/// one PDF file, in place of what the file held. Its one argument is the file's path. Answers the
/// exit code: 0, or 1 with "kaufkobolde-print: " and the German reason as a line. Needs Qt's
/// application for fonts. Main thread.
int PrintFile(const std::vector<std::string>& iArguments, std::istream& ioInput,
              std::ostream& ioErrors);

}  // namespace kk
