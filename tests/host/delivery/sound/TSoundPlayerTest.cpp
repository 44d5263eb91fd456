#include "host/delivery/sound/TSoundPlayer.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <thread>

#include "tests/support/TLogRecorder.h"
#include "tests/support/TSoundServer.h"
#include "tests/support/TTempFolder.h"
#include "tests/support/TWavBytes.h"

namespace kk {
namespace {

using std::chrono::milliseconds;
using TSteady = std::chrono::steady_clock;

// What one call of Play gave.
struct TPlayed {
  bool Done = false;
  int Error = 0;
  int64_t Ms = 0;
};

class TSoundPlayerTest : public testing::Test {
 protected:
  TString Tone(const TWavBytes& iTone) {
    FFolder.Write(u"ton.wav", iTone.Bytes());
    return FFolder.File(u"ton.wav");
  }

  static TPlayed Play(TSoundPlayer& iPlayer, TStringView iFile) {
    const auto begin = TSteady::now();
    TPlayed played;
    errno = 0;
    played.Done = iPlayer.Play(iFile);
    played.Error = errno;
    played.Ms = std::chrono::duration_cast<milliseconds>(TSteady::now() - begin).count();
    return played;
  }

  // A program that stands in for the one that plays: a script.
  TSoundOptions Script(const std::string& iText, const std::string& iShell = "/bin/sh") {
    FFolder.Write(u"script", "#!" + iShell + "\n" + iText + "\n");
    const std::string path = FFolder.Path() + "/script";
    chmod(path.c_str(), 0700);
    return {.Program = path};
  }

  // The program as the product starts it, where no sound server is.
  TSoundOptions NoServer() const {
    return {.Environment = {"PULSE_SERVER=unix:" + FFolder.Path() + "/nobody",
                            "PULSE_RUNTIME_PATH=" + FFolder.Path(), "HOME=" + FFolder.Path(),
                            "DBUS_SESSION_BUS_ADDRESS=disabled:"}};
  }

  std::string LastLine() const { return FLog.Lines().empty() ? "" : FLog.Lines().back(); }
  std::string LineFor(const std::string& iName, const std::string& iReason) const {
    return "error Host: Der Ton " + FFolder.Path() + "/" + iName +
           " wurde nicht abgespielt: " + iReason;
  }

  static void ExpectNoChildIsLeft() {
    EXPECT_EQ(waitpid(-1, nullptr, WNOHANG), -1);
    EXPECT_EQ(errno, ECHILD);
  }

  TTempFolder FFolder;
  TLogRecorder FLog;
};

// The longest run of blocks of 10 ms in which the tone is heard, in ms.
int64_t ToneLengthMs(const std::vector<float>& iSamples, double iFrequency) {
  constexpr size_t cBlock = TSoundServer::cRate / 100;
  int64_t length = 0;
  for (size_t at = 0; at + cBlock <= iSamples.size(); at += cBlock) {
    const std::vector<float> block(iSamples.begin() + at, iSamples.begin() + at + cBlock);
    if (ToneAmplitude(block, iFrequency, TSoundServer::cRate) > 0.3) length += 10;
  }
  return length;
}

TEST_F(TSoundPlayerTest, AllOfTheToneIsHeardAtARealSoundServerAndPlayWaitsForItsEnd) {
  TSoundServer server;
  TSoundPlayer player({.Environment = server.Environment()});
  const TString file = Tone({.Frequency = 1000, .Frames = 17640});
  server.StartRecording();
  const TPlayed played = Play(player, file);
  const std::vector<float> heard = server.StopRecording();

  EXPECT_TRUE(played.Done) << LastLine();
  EXPECT_GE(played.Ms, 400);
  EXPECT_NEAR(ToneLengthMs(heard, 1000), 400, 30);
  EXPECT_LT(ToneLengthMs(heard, 1500), 30);
  EXPECT_TRUE(FLog.Lines().empty());
}

TEST_F(TSoundPlayerTest, TheSoundOfTheProgramIsHeardWithBothOfItsTones) {
  TSoundServer server;
  TSoundPlayer player({.Environment = server.Environment()});
  server.StartRecording();
  EXPECT_TRUE(player.Play(u"" KK_BIN_DIR "/../share/kaufkobolde/remind.wav")) << LastLine();
  const std::vector<float> heard = server.StopRecording();
  EXPECT_GT(ToneAmplitude(heard, 880, TSoundServer::cRate), 0.03);
  EXPECT_GT(ToneAmplitude(heard, 698.46, TSoundServer::cRate), 0.03);
  EXPECT_LT(ToneAmplitude(heard, 1000, TSoundServer::cRate), 0.01);
}

TEST_F(TSoundPlayerTest, ASoundOfOneFrameAndOneOfEightChannelsArePlayedAtARealSoundServer) {
  TSoundServer server;
  TSoundPlayer player({.Environment = server.Environment()});
  EXPECT_TRUE(player.Play(Tone({.Frames = 1}))) << LastLine();
  EXPECT_TRUE(player.Play(Tone({.Frames = 1000, .Rate = 8000, .Channels = 8}))) << LastLine();
}

TEST_F(TSoundPlayerTest, TwoSoundsArePlayedAtTheSameTime) {
  TSoundServer server;
  TSoundPlayer player({.Environment = server.Environment()});
  FFolder.Write(u"tief.wav", TWavBytes{.Frequency = 500, .Frames = 22050}.Bytes());
  const TString high = Tone({.Frequency = 1000, .Frames = 22050});
  server.StartRecording();
  bool first = false;
  std::thread other([&] { first = player.Play(FFolder.File(u"tief.wav")); });
  const bool second = player.Play(high);
  other.join();
  const std::vector<float> heard = server.StopRecording();
  EXPECT_TRUE(first && second);
  EXPECT_NEAR(ToneLengthMs(heard, 500), 500, 40);
  EXPECT_NEAR(ToneLengthMs(heard, 1000), 500, 40);
}

TEST_F(TSoundPlayerTest, AFrozenSoundServerEndsWithTheDeadlineAndNoProcessIsLeft) {
  TSoundServer server;
  TSoundPlayer player({.Grace = milliseconds(300), .Environment = server.Environment()});
  const TString file = Tone({.Frames = 4410});
  server.Process().Signal(SIGSTOP);
  const TPlayed played = Play(player, file);
  EXPECT_FALSE(played.Done);
  EXPECT_EQ(played.Error, ETIMEDOUT);
  EXPECT_GE(played.Ms, 400);
  EXPECT_LT(played.Ms, 2000);
  EXPECT_EQ(LastLine(), LineFor("ton.wav", "Die Tonausgabe des Rechners antwortet nicht"));
  EXPECT_EQ(waitpid(-1, nullptr, WNOHANG), 0);  // the server, and no other child that has ended
}

TEST_F(TSoundPlayerTest, ASoundServerThatIsGoneInTheMiddleOfASoundIsAFailure) {
  TSoundServer server;
  TSoundPlayer player({.Environment = server.Environment()});
  const TString file = Tone({.Frames = 44100 * 20});
  server.StartRecording();
  TPlayed played;
  std::thread playing([&] { played = Play(player, file); });
  server.WaitForSound();
  server.Process().Stop();
  playing.join();
  EXPECT_FALSE(played.Done);
  EXPECT_EQ(played.Error, EIO);
  EXPECT_LT(played.Ms, 10000);
  EXPECT_EQ(LastLine().substr(0, LineFor("ton.wav", "Die Tonausgabe wurde unterbrochen (").size()),
            LineFor("ton.wav", "Die Tonausgabe wurde unterbrochen ("));
}

TEST_F(TSoundPlayerTest, AFileThatIsCutOffWhileItIsPlayedAtARealSoundServerIsAFailure) {
  TSoundServer server;
  TSoundPlayer player({.Environment = server.Environment()});
  const TString file = Tone({.Frames = 44100 * 20});
  server.StartRecording();
  TPlayed played;
  std::thread playing([&] { played = Play(player, file); });
  server.WaitForSound();
  EXPECT_EQ(truncate(ToUtf8(file).c_str(), 44100), 0);
  playing.join();
  EXPECT_FALSE(played.Done);
  EXPECT_EQ(played.Error, ENODATA);
  const std::string begin = LineFor("ton.wav", "Von 882000 Abtastwerten ließen sich nur ");
  EXPECT_EQ(LastLine().substr(0, begin.size()), begin);
}

TEST_F(TSoundPlayerTest, WithoutASoundServerTheReasonIsToldAtOnce) {
  TSoundPlayer player(NoServer());
  const TPlayed played = Play(player, Tone({.Frames = 44100 * 60}));
  EXPECT_FALSE(played.Done);
  EXPECT_EQ(played.Error, ECONNREFUSED);
  EXPECT_LT(played.Ms, 5000);
  EXPECT_EQ(LastLine(), LineFor("ton.wav",
                                "Die Tonausgabe des Rechners ist nicht erreichbar "
                                "(Connection refused)"));
  ExpectNoChildIsLeft();
}

TEST_F(TSoundPlayerTest, AFileThatCantBePlayedGivesItsReasonAndTheErrorOfTheSystem) {
  TSoundPlayer player(NoServer());
  const std::string good = TWavBytes().Bytes();
  const auto failure = [&](TStringView iName) { return Play(player, FFolder.File(iName)).Error; };

  EXPECT_EQ(failure(u"fehlt.wav"), ENOENT);
  EXPECT_EQ(LastLine(), LineFor("fehlt.wav", "Die Datei gibt es nicht"));
  FFolder.Write(u"leer.wav", "");
  EXPECT_EQ(failure(u"leer.wav"), ENODATA);
  EXPECT_EQ(LastLine(), LineFor("leer.wav", "Die Datei ist leer"));
  FFolder.Write(u"kurz.wav", good.substr(0, good.size() - 1));
  EXPECT_EQ(failure(u"kurz.wav"), ENODATA);
  EXPECT_EQ(LastLine(), LineFor("kurz.wav", "Die Datei ist unvollständig, ihr Ende fehlt"));
  FFolder.Write(u"text.wav", "Ein Text");
  EXPECT_EQ(failure(u"text.wav"), EINVAL);
  EXPECT_EQ(LastLine(), LineFor("text.wav", "Die Datei ist keine WAV-Datei"));
  EXPECT_EQ(FLog.Lines().size(), 4u);
  ExpectNoChildIsLeft();
}

TEST_F(TSoundPlayerTest, ANameThatBeginsWithADashIsAFileName) {
  TSoundPlayer player(NoServer());
  EXPECT_EQ(Play(player, u"--help").Error, ENOENT);
}

TEST_F(TSoundPlayerTest, ANameThatNoFileCanHaveIsRefused) {
  TSoundPlayer player(NoServer());
  const TString file = Tone({});
  EXPECT_EQ(Play(player, u"").Error, EINVAL);
  EXPECT_EQ(Play(player, file + u'\0' + u".wav").Error, EINVAL);
  EXPECT_EQ(LastLine(), LineFor("ton.wav.wav", "Der Dateiname ist ungültig"));
}

TEST_F(TSoundPlayerTest, AProgramThatTellsNoLengthIsKilledAfterTheGrace) {
  TSoundOptions options = Script("exec tail -f /dev/null");
  options.Grace = milliseconds(200);
  TSoundPlayer player(options);
  const TPlayed played = Play(player, u"x.wav");
  EXPECT_EQ(played.Error, ETIMEDOUT);
  EXPECT_GE(played.Ms, 200);
  EXPECT_LT(played.Ms, 2000);
  ExpectNoChildIsLeft();
}

TEST_F(TSoundPlayerTest, TheSoundsLengthIsAddedToTheDeadline) {
  TSoundOptions options = Script("echo 400; exec tail -f /dev/null");
  options.Grace = milliseconds(300);
  TSoundPlayer player(options);
  const TPlayed played = Play(player, u"x.wav");
  EXPECT_EQ(played.Error, ETIMEDOUT);
  EXPECT_GE(played.Ms, 700);
  EXPECT_LT(played.Ms, 2500);
}

TEST_F(TSoundPlayerTest, ASoundBeyondTheBoundIsNotPlayed) {
  TSoundPlayer player(Script("echo 600001; exec tail -f /dev/null"));
  EXPECT_EQ(Play(player, u"x.wav").Error, EFBIG);
  EXPECT_EQ(LastLine(),
            "error Host: Der Ton x.wav wurde nicht abgespielt: "
            "Der Ton dauert länger als 600 Sekunden");
  ExpectNoChildIsLeft();
}

TEST_F(TSoundPlayerTest, ASoundAsLongAsTheBoundIsPlayed) {
  TSoundPlayer player(Script("echo 600000"));
  EXPECT_TRUE(Play(player, u"x.wav").Done);
}

TEST_F(TSoundPlayerTest, ASuccessWithoutALengthIsNone) {
  TSoundPlayer silent(Script("exit 0"));
  EXPECT_EQ(Play(silent, u"x.wav").Error, EPROTO);
  TSoundPlayer babbling(Script("echo 12x"));
  EXPECT_EQ(Play(babbling, u"x.wav").Error, EPROTO);
  TSoundPlayer negative(Script("echo -5"));
  EXPECT_EQ(Play(negative, u"x.wav").Error, EPROTO);
  ExpectNoChildIsLeft();
}

TEST_F(TSoundPlayerTest, AProgramThatCrashesIsAFailureWithItsSignal) {
  TSoundPlayer player(Script("echo 5; kill -SEGV $$"));
  EXPECT_EQ(Play(player, u"x.wav").Error, EIO);
  EXPECT_EQ(LastLine(),
            "error Host: Der Ton x.wav wurde nicht abgespielt: "
            "Das Hilfsprogramm für Töne wurde abgebrochen (Signal 11)");
}

TEST_F(TSoundPlayerTest, TheLastReasonCountsWhateverElseWasWritten) {
  TSoundPlayer player(
      Script("yes 'kaufkobolde-play: Lärm' | head -n 2000 >&2\n"
             "printf 'kaufkobolde-play: Der \\033Grund\\nNachsatz\\n' >&2; exit 5"));
  EXPECT_EQ(Play(player, u"x.wav").Error, 5);
  EXPECT_EQ(LastLine(), "error Host: Der Ton x.wav wurde nicht abgespielt: Der Grund");
}

TEST_F(TSoundPlayerTest, NoMoreIsKeptOfWhatIsWrittenThanTheNewestBytes) {
  TSoundPlayer player(Script("echo 'kaufkobolde-play: alt' >&2; yes | head -c 5000 >&2; exit 5"));
  EXPECT_EQ(Play(player, u"x.wav").Error, 5);
  EXPECT_EQ(LastLine(),
            "error Host: Der Ton x.wav wurde nicht abgespielt: "
            "Das Hilfsprogramm für Töne nennt keinen Grund");
}

TEST_F(TSoundPlayerTest, AFailureWithoutAReasonSaysSo) {
  TSoundPlayer player(Script("echo Lärm >&2; exit 5"));
  EXPECT_EQ(Play(player, u"x.wav").Error, 5);
  EXPECT_EQ(LastLine(),
            "error Host: Der Ton x.wav wurde nicht abgespielt: "
            "Das Hilfsprogramm für Töne nennt keinen Grund");
}

TEST_F(TSoundPlayerTest, AMissingProgramIsAFailure) {
  TSoundPlayer player({.Program = "/nothing/kaufkobolde-play"});
  EXPECT_EQ(Play(player, u"x.wav").Error, ENOENT);
  EXPECT_EQ(LastLine(),
            "error Host: Der Ton x.wav wurde nicht abgespielt: Das Hilfsprogramm für "
            "Töne lässt sich nicht starten: No such file or directory");
  ExpectNoChildIsLeft();
}

// Its own handles, signals and session are not for the program that plays.

TEST_F(TSoundPlayerTest, TheProgramInheritsNoHandlesAndHasASessionOfItsOwn) {
  const int leaked = dup(STDERR_FILENO);  // stays open when a program is started
  TSoundPlayer player(
      Script("cd \"$(dirname $1)\"; echo 5\n"
             "ls -l /proc/$$/fd > handles; cut -d' ' -f6 /proc/$$/stat > session\n"
             "echo $$ > own"));
  EXPECT_TRUE(player.Play(FFolder.File(u"x.wav")));
  EXPECT_EQ(FFolder.Read(u"session"), FFolder.Read(u"own"));
  EXPECT_EQ(FFolder.Read(u"handles").find(" " + std::to_string(leaked) + " -> "),
            std::string::npos);
  close(leaked);
}

TEST_F(TSoundPlayerTest, TheProgramInheritsNeitherBlockedNorIgnoredSignals) {
  sigset_t blocked;
  sigset_t before;
  sigemptyset(&blocked);
  sigaddset(&blocked, SIGTERM);
  pthread_sigmask(SIG_BLOCK, &blocked, &before);
  const auto ignored = signal(SIGHUP, SIG_IGN);
  // Not by the shell, which lifts what is blocked.
  TSoundPlayer player(
      Script("import os, sys\n"
             "print(5)\n"
             "lines = [x for x in open('/proc/self/status') if x[:6] in ('SigBlk', 'SigIgn')]\n"
             "mask = int(lines[0].split()[1], 16) | int(lines[1].split()[1], 16) & 1\n"
             "open(os.path.dirname(sys.argv[1]) + '/signals', 'w').write(str(mask))",
             "/usr/bin/python3"));
  EXPECT_TRUE(player.Play(FFolder.File(u"x.wav")));
  signal(SIGHUP, ignored);
  pthread_sigmask(SIG_SETMASK, &before, nullptr);
  EXPECT_EQ(FFolder.Read(u"signals"), "0");
}

TEST_F(TSoundPlayerTest, NoHandleIsLeftBehindHoweverASoundEnds) {
  const auto handles = [] {
    return std::distance(std::filesystem::directory_iterator("/proc/self/fd"), {});
  };
  const auto before = handles();
  EXPECT_TRUE(TSoundPlayer(Script("echo 5")).Play(u"x.wav"));
  EXPECT_FALSE(TSoundPlayer(Script("exit 5")).Play(u"x.wav"));
  EXPECT_FALSE(TSoundPlayer(Script("echo 600001; exec tail -f /dev/null")).Play(u"x.wav"));
  EXPECT_FALSE(TSoundPlayer({.Program = "/nothing/kaufkobolde-play"}).Play(u"x.wav"));
  EXPECT_EQ(handles(), before);
}

TEST_F(TSoundPlayerTest, StopEndsAPlayingSoundAtOnceAndNoProcessIsLeft) {
  const std::string pipe = FFolder.Path() + "/pipe";
  ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
  TSoundPlayer player(
      Script("trap '' TERM HUP INT; echo 500000; echo läuft > \"$1\"; exec tail -f /dev/null"));
  TPlayed played;
  std::thread playing([&] { played = Play(player, FromUtf8(pipe)); });
  std::string line;
  std::getline(std::ifstream(pipe), line);  // waits until the program runs
  EXPECT_EQ(line, "läuft");
  const auto stopped = TSteady::now();
  player.Stop();
  playing.join();
  EXPECT_LT(TSteady::now() - stopped, milliseconds(1000));
  EXPECT_FALSE(played.Done);
  EXPECT_EQ(played.Error, ECANCELED);
  EXPECT_EQ(LastLine(), LineFor("pipe", "Abgebrochen, das Programm wird beendet"));
  ExpectNoChildIsLeft();
}

TEST_F(TSoundPlayerTest, AfterStopNothingIsPlayed) {
  TSoundPlayer player(Script("echo 5; echo > \"$1\""));
  player.Stop();
  player.Stop();
  EXPECT_EQ(Play(player, FFolder.File(u"x.wav")).Error, ECANCELED);
  EXPECT_EQ(Play(player, FFolder.File(u"x.wav")).Error, ECANCELED);
  EXPECT_FALSE(FFolder.Has(u"x.wav"));
  EXPECT_EQ(LastLine(), LineFor("x.wav", "Das Programm wird beendet"));
}

TEST_F(TSoundPlayerTest, InstalledItIsBehindTheDoorOfTheHost) {
  TSoundPlayer player(NoServer());
  ISoundPlayer* before = SetSoundPlayer(&player);
  errno = 0;
  EXPECT_FALSE(PlaySound(FFolder.File(u"fehlt.wav")));
  EXPECT_EQ(errno, ENOENT);
  SetSoundPlayer(before);
}

}  // namespace
}  // namespace kk
