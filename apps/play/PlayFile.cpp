#include "apps/play/PlayFile.h"

#include <cerrno>
#include <ostream>

#include "apps/play/ESoundError.h"
#include "apps/play/TPulseOutput.h"
#include "apps/play/TWavFile.h"

namespace kk {

namespace {

constexpr int64_t cBlockFrames = 4096;

void Play(const std::string& iPath, std::ostream& iOutput) {
  TWavFile file(iPath);
  iOutput << file.LengthMs() << std::endl;
  TPulseOutput output(file.Channels(), file.Rate());
  std::vector<float> block(static_cast<size_t>(cBlockFrames * file.Channels()));
  int64_t played = 0;
  while (const int64_t frames = file.Read(block)) {
    output.Write(block, frames);
    played += frames;
  }
  output.Drain();
  if (played != file.Frames()) {
    throw ESoundError(
        ENODATA, Format(u"Von %d Abtastwerten ließen sich nur %d lesen", {file.Frames(), played}));
  }
}

}  // namespace

int PlayFile(const std::vector<std::string>& iArguments, std::ostream& iOutput,
             std::ostream& iErrors) {
  if (iArguments.size() != 1) {
    iErrors << cPlayErrorPrefix << "Aufruf: kaufkobolde-play DATEI" << std::endl;
    return EINVAL;
  }
  try {
    Play(iArguments.front(), iOutput);
    return 0;
  } catch (const ESoundError& e) {
    iErrors << cPlayErrorPrefix << e.what() << std::endl;
    return e.Number();
  }
}

}  // namespace kk
