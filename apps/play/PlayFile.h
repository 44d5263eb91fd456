#pragma once

#include <iosfwd>
#include <string>
#include <vector>

namespace kk {

/// What kaufkobolde-play does: plays one WAV file. As soon as the file is known to be good, its
/// length goes to iOutput as one line with the whole number of ms. Answers the exit code: 0 only if
/// every frame that the header tells has been played; else the number of the operating system for
/// the reason, which then stands in the last line of iErrors, in German behind cPlayErrorPrefix.
/// iArguments: the file, and nothing else. Has no time limit; the caller has one.
int PlayFile(const std::vector<std::string>& iArguments, std::ostream& iOutput,
             std::ostream& iErrors);

inline constexpr char cPlayErrorPrefix[] = "kaufkobolde-play: ";

}  // namespace kk
