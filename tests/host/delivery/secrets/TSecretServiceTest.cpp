#include "host/delivery/secrets/TSecretService.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <chrono>
#include <csignal>
#include <cstdlib>
#include <thread>

#include "host/base/Exception.h"
#include "host/common/TKKIniFile.h"
#include "tests/support/TLogRecorder.h"
#include "tests/support/TSessionBus.h"

namespace kk {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

constexpr char cKeyring[] = "host/delivery/secrets/servers/secret_service.py";
constexpr TStringView cSection = u"Communication";
constexpr TStringView cKey = u"SmtpPassword";

using TSteady = std::chrono::steady_clock;

// What an operation may take: its limit, the grace behind it, and a machine under load.
constexpr auto cAtMost = std::chrono::milliseconds(TSecretService::cLimitMs + 900);

class TSecretServiceTest : public testing::Test {
 protected:
  TSecretServiceTest() : Before(SetIniFile(&File)) {}
  ~TSecretServiceTest() override { SetIniFile(Before); }

  TString InFile() const { return File.ReadString(cSection, cKey, {}); }
  std::string Read() { return ToUtf8(Secrets.Read(cSection, cKey)); }
  void Write(TStringView iValue) { Secrets.Write(cSection, cKey, iValue); }
  std::string Refusal(TStringView iValue) {
    try {
      Write(iValue);
    } catch (const Exception& e) {
      return ToUtf8(e.Message());
    }
    return "accepted";
  }

  TLogRecorder Log;
  TTempFolder Folder;
  TKKIniFile File{Folder.File(u"test.ini")};
  TKKIniFile* Before;
  TSecretService Secrets;
};

/// With a bus of its own, and a keyring where the test starts one.
class TKeyringTest : public TSecretServiceTest {
 protected:
  void StartKeyring(const std::vector<std::string>& iOptions = {}) {
    Keyring.emplace(TServerProcess::Python(cKeyring, iOptions), Bus.Environment());
    Keyring->WaitForLine("ready");
  }

  TSessionBus Bus;
  TTestEnvironment Environment{Bus.Environment()};
  std::optional<TServerProcess> Keyring;
};

class TNoBusTest : public TSecretServiceTest {
 protected:
  TTestEnvironment Environment{
      {{"DBUS_SESSION_BUS_ADDRESS", ""}, {"XDG_RUNTIME_DIR", Folder.Path()}}};
};

TEST_F(TKeyringTest, ASecretGoesIntoTheKeyringAndNotIntoTheFile) {
  StartKeyring();
  Write(u"Geh\u00E4im");
  EXPECT_EQ(Keyring->WaitForLine("stored"),
            "stored kaufkobolde Communication SmtpPassword Gehäim as Kaufkobolde: SmtpPassword");
  EXPECT_EQ(Read(), "Gehäim");
  EXPECT_THAT(Folder.Names(), IsEmpty());
  EXPECT_THAT(Log.Lines(), IsEmpty());
}

TEST_F(TKeyringTest, ALaterSecretTakesThePlaceOfTheOneBefore) {
  StartKeyring();
  Write(u"eins");
  Write(u"zwei");
  EXPECT_EQ(Read(), "zwei");
}

TEST_F(TKeyringTest, KeysAndSectionsAreKeptApart) {
  StartKeyring(
      {"--item", "Communication", "SmsToken", "t", "--item", "Other", "SmtpPassword", "o"});
  EXPECT_EQ(Read(), "");
  EXPECT_EQ(Secrets.Read(cSection, u"SmsToken"), u"t");
  EXPECT_EQ(Secrets.Read(u"Other", cKey), u"o");
}

TEST_F(TKeyringTest, AnEmptyValueTakesTheSecretAway) {
  StartKeyring({"--item", "Communication", "SmtpPassword", "alt"});
  Write(u"");
  EXPECT_EQ(Keyring->WaitForLine("deleted"), "deleted Communication SmtpPassword");
  EXPECT_EQ(Read(), "");
  Write(u"");
}

TEST_F(TKeyringTest, ASecretInTheFileMovesToTheKeyringAtTheNextWriteAlone) {
  File.WriteString(cSection, cKey, u"alt");
  StartKeyring();
  EXPECT_EQ(Read(), "alt");
  EXPECT_EQ(InFile(), u"alt");
  Write(u"neu");
  EXPECT_EQ(InFile(), u"");
  EXPECT_EQ(Read(), "neu");
}

TEST_F(TKeyringTest, WhatTheFileTookWhileTheKeyringWasLockedIsNewerThanTheKeyring) {
  StartKeyring({"--locked", "--item", "Communication", "SmtpPassword", "alt"});
  Write(u"neu");
  EXPECT_EQ(InFile(), u"neu");
  Keyring->Stop();
  StartKeyring({"--item", "Communication", "SmtpPassword", "alt"});
  EXPECT_EQ(Read(), "neu");
}

TEST_F(TKeyringTest, ALockedKeyringIsNotAskedToUnlock) {
  StartKeyring({"--locked", "--item", "Communication", "SmtpPassword", "alt"});
  EXPECT_EQ(Read(), "");
  EXPECT_THAT(Log.Lines(), ElementsAre("error Host: SmtpPassword ist nicht lesbar: Der "
                                       "Schlüsselbund ist gesperrt"));
  Log.Clear();
  Write(u"neu");
  EXPECT_EQ(InFile(), u"neu");
  EXPECT_THAT(Log.Lines(), ElementsAre("info Host: SmtpPassword kommt in die Einstellungsdatei: "
                                       "Der Schlüsselbund ist gesperrt"));
  EXPECT_THAT(Keyring->Output(), Not(HasSubstr("prompted")));
}

TEST_F(TKeyringTest, AKeyringThatWantsAPromptIsLeftAlone) {
  StartKeyring({"--prompts", "--item", "Communication", "SmsToken", "t"});
  Write(u"neu");
  EXPECT_EQ(InFile(), u"neu");
  EXPECT_THROW(Secrets.Write(cSection, u"SmsToken", {}), Exception);
  EXPECT_THAT(Keyring->Output(), Not(HasSubstr("prompted")));
}

TEST_F(TKeyringTest, WithoutADefaultCollectionTheFileTakesTheSecret) {
  StartKeyring({"--no-default"});
  Write(u"neu");
  EXPECT_EQ(InFile(), u"neu");
  EXPECT_THAT(Keyring->Output(), Not(HasSubstr("prompted")));
}

TEST_F(TKeyringTest, AKeyringThatRefusesLeavesTheSecretToTheFile) {
  StartKeyring({"--refuses"});
  Write(u"neu");
  EXPECT_EQ(InFile(), u"neu");
  EXPECT_THAT(Log.Lines(), ElementsAre("info Host: SmtpPassword kommt in die Einstellungsdatei: "
                                       "The keyring is full"));
  EXPECT_THAT(Log.Lines()[0], Not(HasSubstr("neu")));
}

TEST_F(TKeyringTest, ASecretThatMayStillLieInALockedKeyringIsToldWhenItIsTakenAway) {
  File.WriteString(cSection, cKey, u"neu");
  StartKeyring({"--locked", "--item", "Communication", "SmtpPassword", "alt"});
  EXPECT_EQ(Refusal(u""),
            "SmtpPassword kann noch im Schlüsselbund liegen: Der Schlüsselbund ist gesperrt");
  EXPECT_EQ(InFile(), u"");
}

TEST_F(TKeyringTest, WithoutAKeyringOnTheBusTheFileKeepsSecrets) {
  Write(u"neu");
  EXPECT_EQ(InFile(), u"neu");
  EXPECT_EQ(Read(), "neu");
  Write(u"");
  EXPECT_EQ(Read(), "");
  EXPECT_THAT(Log.Lines(), IsEmpty());
}

TEST_F(TKeyringTest, AFrozenKeyringHoldsNothingUpForLong) {
  StartKeyring({"--item", "Communication", "SmtpPassword", "alt"});
  Keyring->Signal(SIGSTOP);
  auto start = TSteady::now();
  EXPECT_EQ(Read(), "");
  EXPECT_LT(TSteady::now() - start, cAtMost);
  EXPECT_THAT(Log.Lines(), ElementsAre("error Host: SmtpPassword ist nicht lesbar: Der "
                                       "Schlüsselbund antwortet nicht"));
  start = TSteady::now();
  Write(u"neu");
  EXPECT_LT(TSteady::now() - start, cAtMost);
  EXPECT_EQ(InFile(), u"neu");
  Keyring->Signal(SIGCONT);
  EXPECT_EQ(Read(), "neu");
}

TEST_F(TKeyringTest, AFrozenBusHoldsNothingUpForLong) {
  Bus.Signal(SIGSTOP);
  const auto start = TSteady::now();
  EXPECT_EQ(Read(), "");
  EXPECT_LT(TSteady::now() - start, cAtMost);
  Bus.Signal(SIGCONT);
  StartKeyring({"--item", "Communication", "SmtpPassword", "alt"});
  EXPECT_EQ(Read(), "alt");
}

TEST_F(TKeyringTest, ABusThatGoesAwayDoesNotTakeTheProgramAlong) {
  StartKeyring({"--item", "Communication", "SmtpPassword", "alt"});
  EXPECT_EQ(Read(), "alt");
  Bus.Stop();
  EXPECT_EQ(Read(), "");
  Write(u"neu");
  EXPECT_EQ(Read(), "neu");
}

TEST_F(TKeyringTest, AKeyringThatNeverAnswersHoldsNothingUpForLong) {
  StartKeyring({"--silent"});
  const auto start = TSteady::now();
  EXPECT_EQ(Read(), "");
  EXPECT_GE(TSteady::now() - start, std::chrono::milliseconds(TSecretService::cLimitMs));
  EXPECT_LT(TSteady::now() - start, cAtMost);
}

TEST_F(TKeyringTest, StopEndsAnOperationUnderWayAndAllLaterOnes) {
  StartKeyring({"--silent"});
  std::string answer = "none";
  std::thread reader([&] { answer = Read(); });
  Keyring->WaitForLine("asked");
  const auto start = TSteady::now();
  Secrets.Stop();
  reader.join();
  EXPECT_EQ(answer, "");
  EXPECT_EQ(Read(), "");
  EXPECT_THAT(Log.Lines(), testing::Each("error Host: SmtpPassword ist nicht lesbar: Das Programm "
                                         "wird beendet"));
  Write(u"neu");
  EXPECT_EQ(Read(), "neu");
  EXPECT_LT(TSteady::now() - start, std::chrono::seconds(1));
}

TEST_F(TKeyringTest, SecretsAreReadFromManyThreads) {
  StartKeyring({"--item", "Communication", "SmtpPassword", "alt"});
  std::vector<std::string> answers(8);
  std::vector<std::thread> threads;
  for (std::string& answer : answers) threads.emplace_back([&] { answer = Read(); });
  for (std::thread& thread : threads) thread.join();
  EXPECT_THAT(answers, testing::Each("alt"));
}

TEST_F(TNoBusTest, WithoutABusTheFileKeepsSecretsAtOnce) {
  const auto start = TSteady::now();
  EXPECT_EQ(Read(), "");
  Write(u"neu");
  EXPECT_EQ(Read(), "neu");
  Write(u"");
  EXPECT_LT(TSteady::now() - start, std::chrono::milliseconds(500));
  EXPECT_EQ(InFile(), u"");
  EXPECT_THAT(Log.Lines(), IsEmpty());
}

TEST_F(TNoBusTest, NoBusIsStartedForASecret) {
  Folder.Write(u"dbus-launch", "#!/bin/sh\ntouch " + Folder.Path() + "/launched\n");
  ASSERT_EQ(chmod((Folder.Path() + "/dbus-launch").c_str(), 0700), 0);
  const TTestEnvironment screen{
      {{"PATH", Folder.Path() + ":" + std::getenv("PATH")}, {"DISPLAY", ":77"}}};
  unsetenv("DBUS_SESSION_BUS_ADDRESS");  // what was set before comes back with the fixture
  EXPECT_EQ(Read(), "");
  EXPECT_FALSE(Folder.Has(u"launched"));
}

TEST_F(TNoBusTest, ABusWhoseSocketNobodyListensToIsNone) {
  const TTestEnvironment gone{
      {{"DBUS_SESSION_BUS_ADDRESS", "unix:path=" + Folder.Path() + "/gone"}}};
  Write(u"neu");
  EXPECT_EQ(Read(), "neu");
  EXPECT_THAT(Log.Lines(), IsEmpty());
}

TEST_F(TNoBusTest, ASecretThatCanBeKeptNowhereRaises) {
  Folder.Write(u"file", "");
  TKKIniFile impossible(Folder.File(u"file/test.ini"));
  SetIniFile(&impossible);
  EXPECT_NE(Refusal(u"neu"), "accepted");
  SetIniFile(&File);
}

}  // namespace
}  // namespace kk
