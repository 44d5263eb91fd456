#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <thread>

#include "host/base/Exception.h"
#include "host/common/TFileHelper.h"
#include "host/common/TLogFile.h"
#include "tests/support/TTempFolder.h"

namespace kk {
namespace {

using testing::HasSubstr;
using testing::MatchesRegex;
using testing::Not;

constexpr TLogLevel cAllLevels[] = {TLogLevel::llInfo, TLogLevel::llError, TLogLevel::llDetails,
                                    TLogLevel::llException, TLogLevel::llDebug};

class TLogFileTest : public testing::Test {
 protected:
  std::string Text() { return FFolder.Read(u"s/kk.log"); }
  ptrdiff_t LineCount() {
    const std::string text = Text();
    return std::count(text.begin(), text.end(), '\n');
  }
  TTempFolder FFolder;
  TString FFile = FFolder.File(u"s/kk.log");
};

TEST_F(TLogFileTest, WritesTimeLevelSenderAndText) {
  TLogFile log(FFile, false);
  EXPECT_TRUE(log.IsOpen());
  for (const TLogLevel level : cAllLevels) log.Write(level, u"Form", u"Öffne");
  const std::string time = "[0-9]{4}-[0-9]{2}-[0-9]{2} [0-9]{2}:[0-9]{2}:[0-9]{2}\\.[0-9]{3} ";
  EXPECT_THAT(Text(),
              MatchesRegex(time + "\\[Info\\] Form: Öffne\n" + time + "\\[Fehler\\] Form: Öffne\n" +
                           time + "\\[Detail\\] Öffne\n" + time + "\\[Ausnahme\\] Form: Öffne\n"));
}

TEST_F(TLogFileTest, WritesDebugLinesOnlyIfItIsVerbose) {
  testing::internal::CaptureStderr();
  {
    TLogFile log(FFile, true);
    log.Write(TLogLevel::llDebug, u"Platz", u"geschluckt");
    log.Write(TLogLevel::llInfo, u"Form", u"los");
  }
  const std::string shown = testing::internal::GetCapturedStderr();
  EXPECT_THAT(Text(), HasSubstr("[Debug] Platz: geschluckt\n"));
  EXPECT_THAT(shown, HasSubstr("[Debug] Platz: geschluckt\n"));
  EXPECT_THAT(shown, HasSubstr("[Info] Form: los\n"));
}

TEST_F(TLogFileTest, IsSilentOnStderrIfItIsNotVerbose) {
  testing::internal::CaptureStderr();
  {
    TLogFile log(FFile, false);
    for (const TLogLevel level : cAllLevels) log.Write(level, u"Form", u"los");
  }
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
}

TEST_F(TLogFileTest, AnEntryIsOneLineWhateverItsText) {
  TLogFile log(FFile, false);
  log.Write(TLogLevel::llInfo, u"a\nb", u"x\r\ny\rz\n\u001B[2Jq\u0085\u0007{}%s");
  EXPECT_THAT(Text(), HasSubstr("[Info] a b: x y z [2Jq{}%s\n"));
  EXPECT_EQ(LineCount(), 1);
}

TEST_F(TLogFileTest, ContinuesAnOldFileAndKeepsOlderOnesAside) {
  { TLogFile(FFile, false).Write(TLogLevel::llInfo, u"a", u"first"); }
  TLogFile log(FFile, false);
  log.Write(TLogLevel::llInfo, u"a", u"second");
  EXPECT_THAT(Text(), HasSubstr("first"));
  const TString much(64 * 1024, u'x');
  for (int i = 0; i < 17 * 5; ++i) log.Write(TLogLevel::llInfo, u"a", much);
  EXPECT_LE(Text().size(), TLogFile::cMaxFileSize);
  EXPECT_TRUE(FFolder.Has(u"s/kk.3.log"));
  EXPECT_FALSE(FFolder.Has(u"s/kk.4.log"));
}

TEST_F(TLogFileTest, WithoutItsFileItTellsErrorsOnStderr) {
  FFolder.Write(u"s", "a file where the folder should be");
  testing::internal::CaptureStderr();
  {
    TLogFile log(FFile, false);
    EXPECT_FALSE(log.IsOpen());
    log.Write(TLogLevel::llInfo, u"Form", u"los");
    log.Write(TLogLevel::llError, u"Form", u"schlimm");
  }
  const std::string shown = testing::internal::GetCapturedStderr();
  EXPECT_THAT(shown, HasSubstr("[Ausnahme] Host: "));
  EXPECT_THAT(shown, HasSubstr("[Fehler] Form: schlimm\n"));
  EXPECT_THAT(shown, Not(HasSubstr("los")));
}

TEST_F(TLogFileTest, TakesLinesFromAnyThread) {
  TLogFile log(FFile, false);
  ILogSink* before = SetLogSink(&log);
  const auto write = [] {
    for (int i = 0; i < 200; ++i) LogInfo(u"Thread", u"Zeile %d", {i});
  };
  std::thread other(write);
  write();
  other.join();
  SetLogSink(before);
  EXPECT_EQ(LineCount(), 400);
}

TEST(DefaultLogFileName, LiesInTheFolderForTheState) {
  SetHostFolders({{}, {}, u"/x/state", {}, {}});
  EXPECT_EQ(DefaultLogFileName(), u"/x/state/kaufkobolde.log");
  SetHostFolders({});
}

}  // namespace
}  // namespace kk
