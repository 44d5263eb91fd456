#include "apps/cli/TCliLog.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <thread>

#include "TFakeConsole.h"
#include "host/base/Exception.h"
#include "host/program/THostLock.h"
#include "tests/support/TLogRecorder.h"
#include "tests/support/TTempFolder.h"
#include "tests/support/TTestClock.h"

namespace kk {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

TEST(TCliLog, EveryErrorIsOneLineForTheUser) {
  TLogRecorder before;
  TFakeConsole console;
  TCliLog log(console);
  LogInfo(u"A", u"gut");
  LogDebug(u"A", u"egal");
  EXPECT_FALSE(log.HasErrors());
  EXPECT_THAT(console.Complained(), IsEmpty());
  LogError(u"A", u"schlecht:\r\nsehr \u001B[1mschlecht");
  LogException(u"B", Exception(u"schlimm"));
  EXPECT_TRUE(log.HasErrors());
  EXPECT_THAT(console.Complained(),
              ElementsAre("Fehler: schlecht: sehr schlecht", "Fehler: schlimm"));
}

TEST(TCliLog, HandsOnToTheLogBeforeAndGivesThePlaceBack) {
  TLogRecorder before;
  TFakeConsole console;
  {
    TCliLog log(console);
    LogInfo(u"A", u"eins");
  }
  LogError(u"A", u"zwei");
  EXPECT_THAT(before.Lines(), ElementsAre("info A: eins", "error A: zwei"));
  EXPECT_THAT(console.Complained(), IsEmpty());
}

TEST(TCliLog, FollowsTheDeliveryOfRemindersOnRequest) {
  TLogRecorder before;
  TTestClock clock;
  TFakeConsole console;
  TCliLog log(console);
  LogInfo(u"Watchlist-Reminder", u"Melde Erinnerung");
  EXPECT_THAT(console.Complained(), IsEmpty());
  log.Follow();
  LogInfo(u"Watchlist-Reminder (Sound)", u"Melde...");
  LogInfo(u"Form", u"Neue Erinnerung angelegt");
  LogInfo(u"E-Mail-Postausgang", u"verschickt");
  LogError(u"Watchlist-Reminder (Sound)", u"Datei nicht gefunden: x");
  const std::string now = ToUtf8(DateTimeToStr(clock.Now()));
  EXPECT_THAT(console.Complained(), ElementsAre(now + " Watchlist-Reminder (Sound): Melde...",
                                                now + " E-Mail-Postausgang: verschickt",
                                                now + " Fehler: Datei nicht gefunden: x"));
}

TEST(TCliLog, WhatACommandTellsInItsOwnWordsIsNotToldAgain) {
  TLogRecorder before;
  TFakeConsole console;
  TCliLog log(console);
  {
    TCliLog::TKeeping keeping;
    LogError(u"A", u"kein Kalender");
    LogError(u"A", u"kein Netz");
    EXPECT_THAT(console.Complained(), IsEmpty());
    keeping.Told(u"Fehler beim Eintragen: kein Kalender");
  }
  EXPECT_TRUE(log.HasErrors());
  EXPECT_THAT(console.Complained(), ElementsAre("Fehler: kein Netz"));
  EXPECT_THAT(before.Lines(), ElementsAre("error A: kein Kalender", "error A: kein Netz"));
  LogError(u"A", u"schlecht");
  EXPECT_THAT(console.Complained(), ElementsAre("Fehler: kein Netz", "Fehler: schlecht"));
}

TEST(TCliLog, OnlyErrorsOfTheSameThreadAreKeptBack) {
  TLogRecorder before;
  TFakeConsole console;
  TCliLog log(console);
  TCliLog::TKeeping keeping;
  std::thread([] { LogError(u"A", u"nebenan"); }).join();
  EXPECT_THAT(console.Complained(), ElementsAre("Fehler: nebenan"));
  EXPECT_EQ(keeping.Take(), u"");
  LogError(u"A", u"hier");
  EXPECT_EQ(keeping.Take(), u"hier");
  EXPECT_EQ(keeping.Take(), u"");
}

TEST(TCliLog, ForgetsErrorsOnRequest) {
  TLogRecorder before;
  TFakeConsole console;
  TCliLog log(console);
  LogError(u"A", u"schlecht");
  log.ForgetErrors();
  EXPECT_FALSE(log.HasErrors());
  LogError(u"A", u"schlecht");
  EXPECT_TRUE(log.HasErrors());
}

TEST(TCliLog, NeedsNoLogBefore) {
  ILogSink* const before = SetLogSink(nullptr);
  TFakeConsole console;
  {
    TCliLog log(console);
    LogError(u"A", u"schlecht");
    EXPECT_TRUE(log.HasErrors());
  }
  SetLogSink(before);
}

TEST(THostLock, MakesTheFolderAndKeepsASecondOneOut) {
  TTempFolder folder;
  const TString data = folder.File(u"neu/daten");
  {
    THostLock lock(data);
    try {
      THostLock second(data);
      ADD_FAILURE() << "two have it";
    } catch (const Exception& e) {
      EXPECT_EQ(e.Message(), u"Die Beobachtenliste in \"" + data +
                                 u"\" ist gerade in einem anderen Aufruf offen. Bitte warten, bis "
                                 u"er fertig ist.");
    }
  }
  THostLock third(data);
}

TEST(THostLock, AFolderThatCanNotBeMadeIsTold) {
  TTempFolder folder;
  folder.Write(u"datei", "x");
  EXPECT_THROW(THostLock(folder.File(u"datei/daten")), EInOutError);
}

TEST(THostLock, AFileThatCanNotBeMadeIsTold) {
  TTempFolder folder;
  std::filesystem::create_directory(folder.Path() + "/kaufkobolde.lock");
  EXPECT_THROW(THostLock(FromUtf8(folder.Path())), EInOutError);
}

}  // namespace
}  // namespace kk
