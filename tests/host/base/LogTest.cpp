#include "host/base/Log.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <stdexcept>
#include <thread>

#include "host/base/Exception.h"
#include "host/base/Guard.h"
#include "tests/support/TLogRecorder.h"

namespace kk {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

TEST(Log, WritesEachKindOfLine) {
  const TLogRecorder log;
  LogInfo(u"Form", u"Start");
  LogInfo(u"Form", u"%d Einträge", {3});
  LogError(u"Watchlist", u"Fehler");
  LogError(u"Watchlist", u"Fehler in %s", {u"items"});
  LogDetails(u"Id = %s", {u"{1}"});
  LogException(u"Plugin", Exception(u"kaputt"));
  LogException(u"Plugin", std::runtime_error("gr\xC3\xBC\xC3\x9F"));
  LogDebug(u"Ort", u"nebenbei");
  EXPECT_THAT(log.Lines(),
              ElementsAre("info Form: Start", "info Form: 3 Einträge", "error Watchlist: Fehler",
                          "error Watchlist: Fehler in items", "details Id = {1}",
                          "exception Plugin: kaputt", "exception Plugin: grüß"));
  EXPECT_THAT(log.DebugLines(), ElementsAre("debug Ort: nebenbei"));
}

TEST(Log, ATextWithoutArgumentsIsNoFormat) {
  const TLogRecorder log;
  LogInfo(u"Form", u"100%s");
  EXPECT_THAT(log.Lines(), ElementsAre("info Form: 100%s"));
}

TEST(Log, TakesLinesFromAnyThread) {
  const TLogRecorder log;
  std::thread([] { LogInfo(u"Thread", u"da"); }).join();
  EXPECT_TRUE(log.Contains("info Thread: da"));
}

TEST(Log, GoesNowhereWithoutASink) {
  TLogRecorder log;
  ILogSink* before = SetLogSink(nullptr);
  EXPECT_EQ(before, &log);
  LogError(u"Form", u"verloren");
  SetLogSink(before);
  EXPECT_THAT(log.Lines(), IsEmpty());
}

TEST(Guarded, AnswersWhetherTheFunctionWentThrough) {
  const TLogRecorder log;
  bool ran = false;
  EXPECT_TRUE(Guarded(u"Test", [&] { ran = true; }));
  EXPECT_TRUE(ran);
  EXPECT_THAT(log.DebugLines(), IsEmpty());
}

TEST(Guarded, LogsWhatItSwallowsUnderThePlaceAtDebugLevel) {
  const TLogRecorder log;
  EXPECT_FALSE(Guarded(u"Test", [] { throw EConvertError(u"falsch"); }));
  EXPECT_FALSE(Guarded(u"Test", [] { throw std::logic_error("auch falsch"); }));
  EXPECT_THAT(log.Lines(), IsEmpty());
  EXPECT_THAT(log.DebugLines(), ElementsAre("debug Test: falsch", "debug Test: auch falsch"));
}

TEST(Guarded, LetsWhatIsNoExceptionPass) {
  EXPECT_THROW(Guarded(u"Test", [] { throw 1; }), int);
}

TEST(Exception, HasItsMessageInBothForms) {
  const ERangeError error(u"zu groß");
  EXPECT_EQ(error.Message(), u"zu groß");
  EXPECT_STREQ(error.what(), "zu groß");
  EXPECT_EQ(MessageOf(error), u"zu groß");
  EXPECT_EQ(MessageOf(std::runtime_error("plain")), u"plain");
}

TEST(Exception, EachKindIsOne) {
  EXPECT_THROW(throw EListError(u""), Exception);
  EXPECT_THROW(throw EConvertError(u""), Exception);
  EXPECT_THROW(throw ERangeError(u""), Exception);
  EXPECT_THROW(throw EInvalidCast(u""), Exception);
  EXPECT_THROW(throw EInOutError(u""), Exception);
  EXPECT_THROW(throw Exception(u""), std::exception);
}

TEST(CheckedIndex, RaisesOutsideOfTheList) {
  EXPECT_EQ(CheckedIndex(1, 2), 1u);
  EXPECT_THROW(CheckedIndex(-1, 2), EListError);
  try {
    CheckedIndex(2, 2);
    FAIL();
  } catch (const EListError& e) {
    EXPECT_EQ(e.Message(), u"Listenindex überschreitet das Maximum (2)");
  }
}

}  // namespace
}  // namespace kk
