#include "apps/cli/TCliLog.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>

#include "TFakeConsole.h"
#include "apps/cli/TCliLock.h"
#include "host/base/Exception.h"
#include "tests/support/TLogRecorder.h"
#include "tests/support/TTempFolder.h"

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

TEST(TCliLock, MakesTheFolderAndKeepsASecondOneOut) {
  TTempFolder folder;
  const TString data = folder.File(u"neu/daten");
  {
    TCliLock lock(data);
    try {
      TCliLock second(data);
      ADD_FAILURE() << "two have it";
    } catch (const Exception& e) {
      EXPECT_EQ(e.Message(), u"Die Beobachtenliste in \"" + data +
                                 u"\" ist gerade in einem anderen Aufruf offen. Bitte warten, bis "
                                 u"er fertig ist.");
    }
  }
  TCliLock third(data);
}

TEST(TCliLock, AFolderThatCanNotBeMadeIsTold) {
  TTempFolder folder;
  folder.Write(u"datei", "x");
  EXPECT_THROW(TCliLock(folder.File(u"datei/daten")), EInOutError);
}

TEST(TCliLock, AFileThatCanNotBeMadeIsTold) {
  TTempFolder folder;
  std::filesystem::create_directory(folder.Path() + "/kaufkobolde.lock");
  EXPECT_THROW(TCliLock(FromUtf8(folder.Path())), EInOutError);
}

}  // namespace
}  // namespace kk
