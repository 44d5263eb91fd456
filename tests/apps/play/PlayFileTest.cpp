#include "apps/play/PlayFile.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>
#include <sndfile.h>
#include <sys/stat.h>

#include <cerrno>
#include <sstream>

#include "apps/play/ESoundError.h"
#include "apps/play/TWavFile.h"
#include "tests/support/TTempFolder.h"
#include "tests/support/TWavBytes.h"

namespace kk {
namespace {

class TWavFileTest : public testing::Test {
 protected:
  std::string Write(const std::string& iBytes) {
    FFolder.Write(u"ton.wav", iBytes);
    return Path();
  }
  std::string Path() const { return FFolder.Path() + "/ton.wav"; }

  // The number and the reason with which the file is refused; empty if it is taken.
  static std::string Refusal(const std::string& iPath) {
    try {
      TWavFile file(iPath);
      return {};
    } catch (const ESoundError& e) {
      return std::to_string(e.Number()) + " " + e.what();
    }
  }
  std::string RefusalOf(const std::string& iBytes) { return Refusal(Write(iBytes)); }

  static std::string Is(int iNumber, const std::string& iReason) {
    return std::to_string(iNumber) + " " + iReason;
  }

  TTempFolder FFolder;
};

TEST_F(TWavFileTest, TellsFramesAndLengthFromTheHeader) {
  const TWavFile file(Write(TWavBytes{.Frames = 11025, .Channels = 2}.Bytes()));
  EXPECT_EQ(file.Frames(), 11025);
  EXPECT_EQ(file.Channels(), 2);
  EXPECT_EQ(file.Rate(), 44100);
  EXPECT_EQ(file.LengthMs(), 250);
}

TEST_F(TWavFileTest, ASoundOfOneFrameLastsOneMillisecond) {
  TWavFile file(Write(TWavBytes{.Frames = 1}.Bytes()));
  EXPECT_EQ(file.LengthMs(), 1);
  std::vector<float> block(16);
  EXPECT_EQ(file.Read(block), 1);
  EXPECT_EQ(file.Read(block), 0);
}

TEST_F(TWavFileTest, ReadsAllFramesInBlocksThatEndBetweenFrames) {
  TWavFile file(Write(TWavBytes{.Frames = 1000, .Channels = 2}.Bytes()));
  std::vector<float> block(301);
  int64_t sum = 0;
  float highest = 0;
  while (const int64_t frames = file.Read(block)) {
    EXPECT_LE(frames, 150);
    for (int64_t i = 0; i < frames; ++i) highest = std::max(highest, block[2 * i]);
    sum += frames;
  }
  EXPECT_EQ(sum, 1000);
  EXPECT_NEAR(highest, 16000.0 / 32768, 0.01);
}

TEST_F(TWavFileTest, AMissingFileIsRefused) {
  EXPECT_EQ(Refusal(Path()), Is(ENOENT, "Die Datei gibt es nicht"));
}

TEST_F(TWavFileTest, APathThroughAFileIsRefusedWithTheSystemsReason) {
  Write("x");
  EXPECT_EQ(Refusal(Path() + "/ton.wav").substr(0, 35),
            Is(ENOTDIR, "Die Datei lässt sich nicht öffnen").substr(0, 35));
}

TEST_F(TWavFileTest, AFolderIsRefused) {
  EXPECT_EQ(Refusal(FFolder.Path()), Is(EISDIR, "Das ist ein Ordner und keine Datei"));
}

TEST_F(TWavFileTest, APipeIsRefusedAtOnceInsteadOfWaitedFor) {
  ASSERT_EQ(mkfifo(Path().c_str(), 0600), 0);
  EXPECT_EQ(Refusal(Path()), Is(EINVAL, "Das ist keine gewöhnliche Datei"));
}

TEST_F(TWavFileTest, AnEmptyFileIsRefused) {
  EXPECT_EQ(RefusalOf(""), Is(ENODATA, "Die Datei ist leer"));
}

TEST_F(TWavFileTest, WhateverIsNoWavFileByItsHeaderIsRefused) {
  const std::string reason = Is(EINVAL, "Die Datei ist keine WAV-Datei");
  const std::string good = TWavBytes().Bytes();
  EXPECT_EQ(RefusalOf("Das ist ein Text, der nur .wav heißt."), reason);
  EXPECT_EQ(RefusalOf("RIFF"), reason);
  EXPECT_EQ(RefusalOf("RIFX" + good.substr(4)), reason);
  EXPECT_EQ(RefusalOf(good.substr(0, 8) + "AVI " + good.substr(12)), reason);
}

TEST_F(TWavFileTest, AnotherSoundFormatThatTheLibraryKnowsIsRefused) {
  SF_INFO info{};
  info.samplerate = 44100;
  info.channels = 1;
  info.format = SF_FORMAT_AIFF | SF_FORMAT_PCM_16;
  SNDFILE* file = sf_open(Path().c_str(), SFM_WRITE, &info);
  ASSERT_NE(file, nullptr);
  const std::vector<short> samples(100, 1000);
  EXPECT_EQ(sf_write_short(file, samples.data(), 100), 100);
  sf_close(file);
  EXPECT_EQ(Refusal(Path()), Is(EINVAL, "Die Datei ist keine WAV-Datei"));
}

TEST_F(TWavFileTest, AFileThatWasCutOffAnywhereIsRefused) {
  const std::string good = TWavBytes{.Frames = 20}.Bytes();
  for (size_t size = 12; size < good.size(); ++size) {
    EXPECT_EQ(RefusalOf(good.substr(0, size)),
              Is(ENODATA, "Die Datei ist unvollständig, ihr Ende fehlt"))
        << size << " bytes";
  }
  EXPECT_EQ(RefusalOf(good), "");
}

TEST_F(TWavFileTest, AHeaderWithoutAnySoundBehindItIsRefused) {
  EXPECT_EQ(RefusalOf(TWavBytes{.Frames = 0}.Bytes()), Is(ENODATA, "Die Datei enthält keinen Ton"));
}

TEST_F(TWavFileTest, LessThanOneFrameIsNoSound) {
  const std::string bytes = TWavBytes{.Frames = 0, .Channels = 2}.Bytes();
  const std::string tooShort = bytes.substr(0, bytes.size() - 4) + LittleEndianBytes(2, 4) + "ab";
  EXPECT_EQ(RefusalOf(tooShort), Is(ENODATA, "Die Datei enthält keinen Ton"));
}

TEST_F(TWavFileTest, ChunksBeforeTheSoundAreSkippedAlsoOddOnes) {
  const std::string bytes =
      TWavBytes{.Frames = 10, .ChunksBefore = TWavBytes::Chunk("LIST", "odd")}.Bytes();
  EXPECT_EQ(RefusalOf(bytes), "");
}

TEST_F(TWavFileTest, EndlessChunksEndInARefusal) {
  std::string chunks;
  for (int i = 0; i < 2000; ++i) chunks += TWavBytes::Chunk("junk", "");
  EXPECT_EQ(RefusalOf(TWavBytes{.Frames = 10, .ChunksBefore = chunks}.Bytes()),
            Is(ENODATA, "Die Datei ist unvollständig, ihr Ende fehlt"));
}

TEST_F(TWavFileTest, AbsurdFormatsAreRefused) {
  EXPECT_EQ(RefusalOf(TWavBytes{.Frames = 10, .Channels = 9}.Bytes()),
            Is(EINVAL, "Die Datei hat 9 Kanäle, höchstens 8 lassen sich abspielen"));
  EXPECT_EQ(RefusalOf(TWavBytes{.Frames = 10, .Channels = 8}.Bytes()), "");
  EXPECT_EQ(
      RefusalOf(TWavBytes{.Frames = 10, .Rate = 192001}.Bytes()),
      Is(EINVAL, "Die Abtastrate der Datei von 192001 Hz liegt nicht zwischen 4000 und 192000"));
  EXPECT_EQ(
      RefusalOf(TWavBytes{.Frames = 10, .Rate = 3999}.Bytes()),
      Is(EINVAL, "Die Abtastrate der Datei von 3999 Hz liegt nicht zwischen 4000 und 192000"));
  EXPECT_EQ(RefusalOf(TWavBytes{.Frames = 10, .Rate = 4000}.Bytes()), "");
  EXPECT_EQ(RefusalOf(TWavBytes{.Frames = 10, .Rate = 192000}.Bytes()), "");
}

TEST_F(TWavFileTest, AFormatThatTheLibraryDoesNotKnowIsRefusedWithItsReason) {
  std::string bytes = TWavBytes{.Frames = 10}.Bytes();
  bytes[20] = '\x7F';  // the code of the compression
  const std::string begin = Is(EINVAL, "Die WAV-Datei ist beschädigt oder von unbekannter Art (");
  EXPECT_EQ(RefusalOf(bytes).substr(0, begin.size()), begin);
}

// Whatever bytes are changed: either refused, or every frame that is told can be read.
RC_GTEST_FIXTURE_PROP(TWavFileTest, ADamagedHeaderNeverPromisesMoreThanCanBeRead, ()) {
  std::string bytes = TWavBytes{.Frames = 40}.Bytes();
  for (int i = 0; i < 3; ++i) {
    bytes[*rc::gen::inRange<size_t>(0, 48)] = *rc::gen::arbitrary<char>();
  }
  Write(bytes);
  try {
    TWavFile file(Path());
    std::vector<float> block(static_cast<size_t>(file.Channels()) * 64);
    int64_t sum = 0;
    while (const int64_t frames = file.Read(block)) sum += frames;
    RC_ASSERT(sum == file.Frames());
  } catch (const ESoundError& e) {
    RC_ASSERT(e.Number() > 0 && e.Number() < 128);
  }
}

TEST(PlayFile, WithoutAFileItTellsHowItIsCalled) {
  std::ostringstream output;
  std::ostringstream errors;
  EXPECT_EQ(PlayFile({}, output, errors), EINVAL);
  EXPECT_EQ(PlayFile({"a", "b"}, output, errors), EINVAL);
  EXPECT_EQ(output.str(), "");
  EXPECT_EQ(errors.str(),
            "kaufkobolde-play: Aufruf: kaufkobolde-play DATEI\n"
            "kaufkobolde-play: Aufruf: kaufkobolde-play DATEI\n");
}

TEST(PlayFile, WhyAFileIsRefusedStandsInOneLineAndNoLengthIsTold) {
  std::ostringstream output;
  std::ostringstream errors;
  EXPECT_EQ(PlayFile({"/nothing/there.wav"}, output, errors), ENOENT);
  EXPECT_EQ(output.str(), "");
  EXPECT_EQ(errors.str(), "kaufkobolde-play: Die Datei gibt es nicht\n");
}

// The sound that is installed with the program.
class TRemindWavTest : public testing::Test {
 protected:
  static std::vector<float> Samples() {
    TWavFile file(KK_BIN_DIR "/../share/kaufkobolde/remind.wav");
    EXPECT_EQ(file.Channels(), 1);
    EXPECT_EQ(file.Rate(), 44100);
    std::vector<float> samples(static_cast<size_t>(file.Frames()));
    EXPECT_EQ(file.Read(samples), file.Frames());
    return samples;
  }
};

TEST_F(TRemindWavTest, LastsOneSecondAndStaysBelowFullScale) {
  const std::vector<float> samples = Samples();
  EXPECT_EQ(samples.size(), 44100u);
  float highest = 0;
  for (const float sample : samples) highest = std::max(highest, std::abs(sample));
  EXPECT_GT(highest, 0.3F);
  EXPECT_LT(highest, 0.9F);
}

TEST_F(TRemindWavTest, BeginsAndEndsWithoutAClick) {
  const std::vector<float> samples = Samples();
  for (size_t i = 0; i < 20; ++i) {
    EXPECT_LT(std::abs(samples[i]), 0.02F);
    EXPECT_LT(std::abs(samples[samples.size() - 1 - i]), 0.005F);
  }
}

}  // namespace
}  // namespace kk
