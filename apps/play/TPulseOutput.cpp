#include "apps/play/TPulseOutput.h"

#include <pulse/channelmap.h>
#include <pulse/error.h>

#include <cerrno>

#include "apps/play/ESoundError.h"

namespace kk {

namespace {

[[noreturn]] void Fail(int iNumber, TStringView iSentence, int iError) {
  throw ESoundError(iNumber, Format(u"%s (%s)", {iSentence, FromUtf8(pa_strerror(iError))}));
}

}  // namespace

TPulseOutput::TPulseOutput(int iChannels, int iRate) : FChannels(iChannels) {
  const pa_sample_spec format = {PA_SAMPLE_FLOAT32NE, static_cast<uint32_t>(iRate),
                                 static_cast<uint8_t>(iChannels)};
  pa_channel_map map;
  pa_channel_map_init_extend(&map, format.channels, PA_CHANNEL_MAP_WAVEEX);
  int error = 0;
  FStream.reset(pa_simple_new(nullptr, "Kaufkobolde", PA_STREAM_PLAYBACK, nullptr, "Erinnerung",
                              &format, &map, nullptr, &error));
  if (!FStream) Fail(ECONNREFUSED, u"Die Tonausgabe des Rechners ist nicht erreichbar", error);
}

void TPulseOutput::Write(const std::vector<float>& iBlock, int64_t iFrames) {
  int error = 0;
  const size_t bytes = static_cast<size_t>(iFrames * FChannels) * sizeof(float);
  if (pa_simple_write(FStream.get(), iBlock.data(), bytes, &error) != 0)
    Fail(EIO, u"Die Tonausgabe wurde unterbrochen", error);
}

void TPulseOutput::Drain() {
  int error = 0;
  if (pa_simple_drain(FStream.get(), &error) != 0)
    Fail(EIO, u"Die Tonausgabe wurde unterbrochen", error);
}

}  // namespace kk
