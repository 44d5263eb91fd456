#include "host/delivery/email/TMailOutbox.h"

#include <sys/stat.h>

#include <filesystem>
#include <fstream>
#include <mutex>

#include "TMailWorld.h"
#include "host/base/Exception.h"
#include "tests/support/TFaultyFileLayer.h"
#include "tests/support/TTestClock.h"

namespace kk {
namespace {

using enum TSmtpOutcome;
using testing::Contains;
using testing::ElementsAre;
using testing::EndsWith;
using testing::HasSubstr;
using testing::IsEmpty;

constexpr int64_t cMinute = TDateTime::cMsPerMinute;
constexpr int64_t cHour = TDateTime::cMsPerHour;

const TSmtpResult cSent{soSent, {}};
const TSmtpResult cLater{soForNow, u"später"};
const TSmtpResult cNever{soForGood, u"niemals"};

/// An outbox whose worker is the test itself, with a server that answers as the test says.
class TMailOutboxTest : public TMailWorld {
 protected:
  TMailOutboxTest() { Restart(); }

  void Restart() {
    FOutbox.reset();
    FOutbox = std::make_unique<TMailOutbox>(FBox.File(u"out"),
                                            [this](const TMailMessage& message, std::stop_token) {
                                              FAsked.push_back(message);
                                              if (FOnSend) FOnSend();
                                              return FAnswer;
                                            });
  }
  TMailMessage Add(TStringView iSubject = u"Betreff") {
    const TMailMessage message = TMailMessage::Build(Mail(iSubject, u"streng geheim"));
    FOutbox->Add(message, u"kein Anschluss");
    return message;
  }
  /// Turns the clock and tries what is due then; answers how many attempts that were.
  size_t After(int64_t iMs) {
    FClock.Advance(iMs);
    const size_t before = FAsked.size();
    FOutbox->RunDue();
    return FAsked.size() - before;
  }
  std::vector<std::string> Files(const std::string& iExtension = ".mail") {
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(FBox.Path() + "/out")) {
      if (entry.path().extension() == iExtension) names.push_back(entry.path());
    }
    return names;
  }
  void Overwrite(const std::string& iPath, const std::string& iBytes) {
    WriteFileAtomically(FromUtf8(iPath), iBytes);
  }

  TTestClock FClock;
  TTempFolder FBox;
  std::vector<TMailMessage> FAsked;
  TSmtpResult FAnswer = cLater;
  std::function<void()> FOnSend;
  std::unique_ptr<TMailOutbox> FOutbox;
};

TEST_F(TMailOutboxTest, KeepsAMessageForThisUserAlone) {
  Add();
  struct stat info {};
  ASSERT_EQ(stat((FBox.Path() + "/out").c_str(), &info), 0);
  EXPECT_EQ(info.st_mode & 0777, 0700u);
  ASSERT_EQ(Files().size(), 1u);
  ASSERT_EQ(stat(Files()[0].c_str(), &info), 0);
  EXPECT_EQ(info.st_mode & 0777, 0600u);
}

TEST_F(TMailOutboxTest, TriesAfterFiveSecondsThenTwiceAsLateUpToFifteenMinutes) {
  Add();
  EXPECT_EQ(After(4999), 0u);
  EXPECT_EQ(After(1), 1u);
  int64_t delay = 10000;
  for (int attempt = 0; attempt < 12; ++attempt) {
    SCOPED_TRACE(attempt);
    EXPECT_EQ(FOutbox->RunDue(), delay);
    EXPECT_EQ(After(delay - 1), 0u);
    EXPECT_EQ(After(1), 1u);
    delay = std::min(delay * 2, 15 * cMinute);
  }
  EXPECT_EQ(delay, 15 * cMinute);
}

TEST_F(TMailOutboxTest, TheSameMessageIsSentEachTime) {
  const TMailMessage message = Add();
  After(5000);
  After(10000);
  Restart();
  After(20000);
  ASSERT_EQ(FAsked.size(), 3u);
  for (const TMailMessage& asked : FAsked) {
    EXPECT_EQ(asked.MessageId, message.MessageId);
    EXPECT_EQ(asked.Text, message.Text);
    EXPECT_EQ(asked.Sender, message.Sender);
    EXPECT_EQ(asked.Recipient, message.Recipient);
  }
}

TEST_F(TMailOutboxTest, WhatIsSentIsGoneAndTheLogTellsSo) {
  const TMailMessage message = Add();
  After(5000);
  FAnswer = cSent;
  After(10000);
  EXPECT_THAT(Files(), IsEmpty());
  EXPECT_EQ(After(cHour), 0u);
  EXPECT_EQ(FOutbox->RunDue(), std::nullopt);
  EXPECT_THAT(FLog.Lines(),
              ElementsAre("info E-Mail-Postausgang: E-Mail an to@example.org zurückgestellt "
                          "(Message-ID " +
                              message.MessageId + "): kein Anschluss",
                          "info E-Mail-Postausgang: E-Mail an to@example.org beim 3. Versuch "
                          "verschickt (Message-ID " +
                              message.MessageId + ")"));
}

TEST_F(TMailOutboxTest, WhatIsRefusedForGoodIsNotTriedAgainAndTheLogTellsWhy) {
  const TMailMessage message = Add();
  FAnswer = cNever;
  EXPECT_EQ(After(5000), 1u);
  EXPECT_EQ(After(cHour), 0u);
  EXPECT_THAT(Files(), IsEmpty());
  EXPECT_TRUE(
      FLog.Contains("error E-Mail-Postausgang: E-Mail an to@example.org kann nicht "
                    "verschickt werden (Message-ID " +
                    message.MessageId + "): niemals"));
}

TEST_F(TMailOutboxTest, GivesUpAfterADayAndTheLogTellsWhy) {
  const TMailMessage message = Add();
  size_t attempts = 0;
  int64_t gone = 0;
  while (!Files().empty() && gone < 2 * 24 * cHour) {
    attempts += After(1000);
    gone += 1000;
  }
  EXPECT_GT(gone, 24 * cHour - 15 * cMinute - 1000);
  EXPECT_LE(gone, 24 * cHour);
  EXPECT_EQ(After(24 * cHour), 0u);
  EXPECT_THAT(FLog.Lines(),
              Contains("error E-Mail-Postausgang: E-Mail an to@example.org nach 24 Stunden und " +
                       std::to_string(attempts + 1) + " Versuchen aufgegeben (Message-ID " +
                       message.MessageId + "). Letzter Fehler: später"));
}

TEST_F(TMailOutboxTest, WhatIsOlderThanADayAtTheStartIsGivenUpWithoutAnAttempt) {
  Add();
  Restart();
  FAnswer = cSent;
  EXPECT_EQ(After(24 * cHour + 1), 0u);
  EXPECT_THAT(Files(), IsEmpty());
  EXPECT_THAT(FLog.Lines().back(), HasSubstr("nach 24 Stunden und 1 Versuchen aufgegeben"));
  EXPECT_THAT(FLog.Lines().back(), EndsWith("Letzter Fehler: kein Anschluss"));
}

TEST_F(TMailOutboxTest, AStartGoesOnWhereTheLastRunEnded) {
  Add();
  After(5000);
  After(10000);  // the next attempt is due in 20 s
  Restart();
  EXPECT_EQ(After(19999), 0u);
  EXPECT_EQ(After(1), 1u);
  EXPECT_EQ(FOutbox->RunDue(), 40000);
}

TEST_F(TMailOutboxTest, AClockThatIsSetBackDelaysNothing) {
  Add();
  EXPECT_EQ(After(-cHour), 1u);
  EXPECT_EQ(FOutbox->RunDue(), 10000);
  Restart();
  EXPECT_EQ(After(-cHour), 1u);
  FAnswer = cSent;
  EXPECT_EQ(After(20000), 1u);
  EXPECT_THAT(Files(), IsEmpty());
}

TEST_F(TMailOutboxTest, AClockThatIsSetBackLengthensTheDayByNothing) {
  Add();
  After(-10 * cHour);
  Restart();
  for (int hour = 0; hour < 24; ++hour) After(cHour);
  EXPECT_THAT(Files(), IsEmpty());
}

TEST_F(TMailOutboxTest, MessagesComeInTheOrderInWhichTheyAreDue) {
  const TMailMessage first = Add();
  FClock.Advance(1);
  const TMailMessage second = Add();
  EXPECT_EQ(FOutbox->RunDue(), 4999);
  EXPECT_EQ(After(cMinute), 2u);
  EXPECT_EQ(FAsked[0].MessageId, first.MessageId);
  EXPECT_EQ(FAsked[1].MessageId, second.MessageId);
}

TEST_F(TMailOutboxTest, WhatTheServerRaisesCountsAsAFailureForNow) {
  Add();
  FOnSend = [] { throw Exception(u"kaputt\nhier"); };
  EXPECT_EQ(After(5000), 1u);
  EXPECT_EQ(FOutbox->RunDue(), 10000);
  EXPECT_THAT(ReadFileBytes(FromUtf8(Files()[0])), HasSubstr("\nreason: kaputt hier\n"));
}

TEST_F(TMailOutboxTest, AnAttemptThatSomebodyElseCancelsIsMadeAgain) {
  Add();
  FAnswer = {soCancelled, u"Abgebrochen"};
  EXPECT_EQ(After(5000), 1u);
  EXPECT_EQ(FOutbox->RunDue(), 10000);
}

TEST_F(TMailOutboxTest, ADamagedFileIsPutAsideAndNotReadAgain) {
  Add();
  const std::string path = Files()[0];
  const std::string bytes = ReadFileBytes(FromUtf8(path));
  Overwrite(path, bytes.substr(0, bytes.size() / 2));
  Add();
  Restart();
  FAnswer = cSent;
  EXPECT_EQ(After(cMinute), 1u);
  EXPECT_THAT(Files(), IsEmpty());
  EXPECT_THAT(Files(".damaged"), ElementsAre(path + ".damaged"));
  EXPECT_EQ(ReadFileBytes(FromUtf8(path + ".damaged")), bytes.substr(0, bytes.size() / 2));
  EXPECT_TRUE(FLog.Contains("error E-Mail-Postausgang: Die Datei " + path +
                            " im Postausgang lässt sich nicht lesen und wird beiseitegelegt: Die "
                            "Datei ist beschädigt"));
  Restart();
  EXPECT_EQ(After(cMinute), 0u);
}

TEST_F(TMailOutboxTest, AFileThatIsDamagedWhileItWaitsIsPutAsideToo) {
  Add();
  Overwrite(Files()[0], "rubbish");
  EXPECT_EQ(After(5000), 0u);
  EXPECT_EQ(Files(".damaged").size(), 1u);
  EXPECT_EQ(FOutbox->RunDue(), std::nullopt);
}

TEST_F(TMailOutboxTest, AFileThatCanNotBePutAsideIsNotReadInALoop) {
  Add();
  Overwrite(Files()[0], "rubbish");
  TFaultyFileLayer layer;
  layer.FailAll("rename", EACCES);
  EXPECT_EQ(After(5000), 0u);
  EXPECT_EQ(After(5000), 0u);
  EXPECT_EQ(FOutbox->RunDue(), std::nullopt);
  EXPECT_EQ(FLog.Lines().size(), 2u);
}

TEST_F(TMailOutboxTest, AFileBeyondAllSizeIsPutAsideUnread) {
  Add();
  std::filesystem::resize_file(Files()[0], uintmax_t{1} << 40);
  EXPECT_EQ(After(5000), 0u);
  EXPECT_EQ(Files(".damaged").size(), 1u);
  EXPECT_THAT(FLog.Lines().back(), EndsWith("Die Datei ist zu groß"));
}

TEST_F(TMailOutboxTest, AFileThatSomebodyTakesAwayIsForgotten) {
  Add();
  std::filesystem::remove(Files()[0]);
  EXPECT_EQ(After(5000), 0u);
  EXPECT_EQ(FOutbox->RunDue(), std::nullopt);
}

TEST_F(TMailOutboxTest, OtherFilesInItsFolderAreLeftAlone) {
  Add();
  Overwrite(FBox.Path() + "/out/notes.txt", "notes");
  Overwrite(FBox.Path() + "/out/other.mail.tmp", "half of a file");
  Restart();
  After(5000);
  EXPECT_EQ(Files(".txt").size(), 1u);
  EXPECT_EQ(Files(".tmp").size(), 1u);
  EXPECT_EQ(FAsked.size(), 1u);
}

TEST_F(TMailOutboxTest, AFullDiskIsToldToWhoAddsAndNothingHalfRemains) {
  Add();
  TFaultyFileLayer layer;
  for (const char* name : {"open", "write", "flush", "close", "rename"}) {
    SCOPED_TRACE(name);
    layer.FailAll(name, ENOSPC);
    try {
      Add();
      ADD_FAILURE() << "nobody was told";
    } catch (const Exception& e) {
      EXPECT_THAT(ToUtf8(e.Message()), EndsWith("Der Datenträger ist voll"));
    }
    EXPECT_EQ(Files().size(), 1u);
  }
  layer.FailCall(-1, 0);
  EXPECT_EQ(After(5000), 1u);
}

TEST_F(TMailOutboxTest, WhatCouldNotBeKeptIsNotFoundLater) {
  Add();
  TFaultyFileLayer layer;
  for (int call = 0;; ++call) {
    SCOPED_TRACE(call);
    layer.FailCall(call, EIO);
    const size_t before = Files().size();
    bool kept = true;
    try {
      Add();
    } catch (const Exception&) {
      kept = false;
    }
    EXPECT_EQ(Files().size(), before + (kept ? 1 : 0));
    if (static_cast<int>(layer.Calls().size()) <= call) break;
  }
  EXPECT_GE(layer.Calls().size(), 8u);
}

TEST_F(TMailOutboxTest, AFullDiskWhileItWaitsCostsNeitherTheMessageNorThePauses) {
  Add();
  TFaultyFileLayer layer;
  layer.FailAll("write", ENOSPC);
  EXPECT_EQ(After(5000), 1u);
  EXPECT_EQ(Files().size(), 1u);
  EXPECT_EQ(After(9999), 0u);
  FAnswer = cSent;
  EXPECT_EQ(After(1), 1u);
  EXPECT_THAT(Files(), IsEmpty());
}

TEST_F(TMailOutboxTest, WhatWasSentIsNotSentAgainThoughItsFileCanNotBeTakenAway) {
  Add();
  FAnswer = cSent;
  TFaultyFileLayer layer;
  layer.FailAll("unlink", EACCES);
  EXPECT_EQ(After(5000), 1u);
  EXPECT_EQ(After(cHour), 0u);
  EXPECT_EQ(Files().size(), 1u);
  EXPECT_THAT(FLog.Lines().back(), EndsWith("lässt sich nicht löschen: Zugriff verweigert"));
}

TEST_F(TMailOutboxTest, TakesNoMoreThanItsBoundOfMessages) {
  const std::string path = FBox.Path() + "/out/";
  Add();
  for (size_t i = 1; i < TMailOutbox::cMaxMessages; ++i) {
    std::ofstream(path + std::to_string(i) + ".mail") << "x";
  }
  EXPECT_THROW(Add(), Exception);
  std::filesystem::remove(path + "1.mail");
  EXPECT_NO_THROW(Add());
}

TEST_F(TMailOutboxTest, TakesNoMoreThanItsBoundOfBytes) {
  Add();
  const std::string path = FBox.Path() + "/out/big.mail";
  std::ofstream(path) << "x";
  std::filesystem::resize_file(path, TMailOutbox::cMaxBytes - 4000);
  EXPECT_NO_THROW(Add());
  std::filesystem::resize_file(path, TMailOutbox::cMaxBytes - 1000);
  try {
    Add();
    ADD_FAILURE();
  } catch (const Exception& e) {
    EXPECT_EQ(e.Message(), u"Der Postausgang ist voll");
  }
}

TEST_F(TMailOutboxTest, AStopInTheMiddleKeepsTheMessageAsItWas) {
  Add();
  const std::string before = ReadFileBytes(FromUtf8(Files()[0]));
  Add();
  FOnSend = [this] { FOutbox->Stop(); };
  FAnswer = {soCancelled, u"Abgebrochen"};
  EXPECT_EQ(After(5000), 1u);
  EXPECT_EQ(Files().size(), 2u);
  EXPECT_EQ(After(cMinute), 0u);
  FOnSend = nullptr;
  FAnswer = cSent;
  Restart();
  EXPECT_EQ(After(0), 2u);
  EXPECT_THAT(Files(), IsEmpty());
}

TEST_F(TMailOutboxTest, AMessageThatGoesThroughWhileItStopsIsGone) {
  Add();
  FOnSend = [this] { FOutbox->Stop(); };
  FAnswer = cSent;
  EXPECT_EQ(After(5000), 1u);
  EXPECT_THAT(Files(), IsEmpty());
}

TEST_F(TMailOutboxTest, TheLogNeverTellsSubjectOrBody) {
  Add(u"vertraulich");
  After(5000);
  FAnswer = cNever;
  After(10000);
  for (const std::vector<std::string>& lines : {FLog.Lines(), FLog.DebugLines()}) {
    for (const std::string& line : lines) {
      EXPECT_THAT(line, Not(HasSubstr("geheim")));
      EXPECT_THAT(line, Not(HasSubstr("vertraulich")));
    }
  }
}

/// An outbox with its worker and real servers.
class TMailOutboxWorkerTest : public TMailWorld {
 protected:
  TString Folder() const { return FFolder.File(u"out"); }
  bool IsEmpty() const {
    for (const auto& entry : std::filesystem::directory_iterator(FFolder.Path() + "/out")) {
      if (entry.path().extension() == ".mail") return false;
    }
    return true;
  }
  bool Logged(const std::string& iPart) const {
    for (const std::string& line : FLog.Lines()) {
      if (line.find(iPart) != std::string::npos) return true;
    }
    return false;
  }
  bool LoggedDebug(const std::string& iPart) const {
    for (const std::string& line : FLog.DebugLines()) {
      if (line.find(iPart) != std::string::npos) return true;
    }
    return false;
  }

  TSharedClock FClock;
};

TEST_F(TMailOutboxWorkerTest, SendsOnceWhenTheServerTakesMailsAgain) {
  TMailServer busy({"--refuse", "DOT:451 4.3.0 Try later"});
  TMailServer ready;
  SetServer(busy.Port());
  TMailOutbox outbox(Folder());
  EXPECT_FALSE(outbox.IsWorking());
  outbox.Start();
  outbox.Start();  // no effect
  EXPECT_TRUE(outbox.IsWorking());
  const TMailMessage message = TMailMessage::Build(Mail(u"Über Nacht"));
  outbox.Add(message, u"x");
  FClock.Advance(5000);
  EXPECT_EQ(busy.WaitForMessage()["id"], message.MessageId);
  ASSERT_TRUE(Eventually([&] { return LoggedDebug("2. Versuch"); }));
  SetServer(ready.Port());
  FClock.Advance(10000);
  const auto seen = ready.WaitForMessage();
  EXPECT_EQ(seen["id"], message.MessageId);
  EXPECT_EQ(seen["subject"], "Über Nacht");
  EXPECT_TRUE(Eventually([&] { return IsEmpty(); }));
  EXPECT_TRUE(Eventually([&] { return Logged("beim 3. Versuch verschickt"); }));
  EXPECT_EQ(ready.All("message").size(), 1u);
  EXPECT_EQ(busy.All("message").size(), 1u);
}

TEST_F(TMailOutboxWorkerTest, FindsWhatAnEarlierRunLeft) {
  const TMailMessage message = TMailMessage::Build(Mail());
  TMailOutbox(Folder()).Add(message, u"x");
  FClock.Advance(cHour);
  TMailServer server;
  SetServer(server.Port());
  TMailOutbox outbox(Folder());
  outbox.Start();
  EXPECT_EQ(server.WaitForMessage()["id"], message.MessageId);
  EXPECT_TRUE(Eventually([&] { return IsEmpty(); }));
}

TEST_F(TMailOutboxWorkerTest, AStopEndsAnAttemptAtASilentServerWithinASecond) {
  TMailServer server({"--hang", "DOT"});
  SetServer(server.Port());
  {
    TMailOutbox outbox(Folder());
    outbox.Start();
    outbox.Add(TMailMessage::Build(Mail()), u"x");
    FClock.Advance(5000);
    server.WaitFor("hangs");
    EXPECT_LT(MsOf([&] { outbox.Stop(); }), 50);
    EXPECT_FALSE(outbox.IsWorking());
    const auto start = std::chrono::steady_clock::now();
    outbox.Start();  // for ever means for ever
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(1));
  }
  EXPECT_FALSE(IsEmpty());
}

TEST_F(TMailOutboxWorkerTest, AnIdleWorkerEndsAtOnce) {
  EXPECT_LT(MsOf([&] {
              TMailOutbox outbox(Folder());
              outbox.Start();
              outbox.Stop();
            }),
            1000);
  EXPECT_LT(MsOf([&] {
              TMailOutbox outbox(Folder());
              outbox.Add(TMailMessage::Build(Mail()), u"x");
              outbox.Start();
            }),
            1000);
}

TEST_F(TMailOutboxWorkerTest, AfterAStopItOnlyKeeps) {
  TMailOutbox outbox(Folder());
  outbox.Stop();
  outbox.Start();
  EXPECT_FALSE(outbox.IsWorking());
  outbox.Add(TMailMessage::Build(Mail()), u"x");
  EXPECT_FALSE(IsEmpty());
}

TEST_F(TMailOutboxWorkerTest, OnlyOneOutboxWorksOnAFolder) {
  TMailServer server;
  SetServer(server.Port());
  TMailOutbox one(Folder());
  TMailOutbox other(Folder());
  one.Start();
  other.Start();
  EXPECT_TRUE(one.IsWorking());
  EXPECT_FALSE(other.IsWorking());
  EXPECT_TRUE(
      FLog.Contains("info E-Mail-Postausgang: Um den Postausgang kümmert sich schon ein "
                    "anderer Aufruf des Programms"));
}

TEST_F(TMailOutboxWorkerTest, AFolderThatCanNotBeMadeIsToldOf) {
  FFolder.Write(u"out", "a file");
  TMailOutbox outbox(Folder());
  outbox.Start();
  EXPECT_FALSE(outbox.IsWorking());
  EXPECT_THAT(FLog.Lines(),
              ElementsAre(testing::StartsWith(
                  "error E-Mail-Postausgang: Der Postausgang kann nicht benutzt werden: ")));
  EXPECT_THROW(outbox.Add(TMailMessage::Build(Mail()), u"x"), Exception);
}

TEST_F(TMailOutboxWorkerTest, ManyThreadsMayAdd) {
  std::mutex mutex;
  std::map<std::string, int> sent;
  {
    TMailOutbox outbox(Folder(), [&](const TMailMessage& message, std::stop_token) {
      const std::lock_guard lock(mutex);
      ++sent[message.MessageId];
      return cSent;
    });
    outbox.Start();
    std::vector<std::thread> threads;
    for (int i = 0; i < 4; ++i) {
      threads.emplace_back([&] {
        for (int k = 0; k < 5; ++k) outbox.Add(TMailMessage::Build(Mail()), u"x");
      });
    }
    for (std::thread& thread : threads) thread.join();
    FClock.Advance(cMinute);
    EXPECT_TRUE(Eventually([&] { return IsEmpty(); }));
  }
  EXPECT_EQ(sent.size(), 20u);
  for (const auto& [id, count] : sent) EXPECT_EQ(count, 1) << id;
}

}  // namespace
}  // namespace kk
