#include "apps/desktop/skin/TQtMainLoop.h"

#include <QTimer>

#include "tests/support/LoopTimersContract.h"
#include "tests/support/TScriptedFormHost.h"
#include "tests/support/qt/OffscreenQt.h"

namespace kk {
namespace {

using testing::ElementsAre;

/// Turned by Qt alone, as the program's is.
struct TQtLoopWorld {
  TQtLoopWorld() { NeedQt(); }
  std::unique_ptr<TPostingMainLoop> NewLoop() { return std::make_unique<TQtMainLoop>(); }
  void Turn(TPostingMainLoop&) { QCoreApplication::processEvents(QEventLoop::AllEvents, 20); }
};

INSTANTIATE_TYPED_TEST_SUITE_P(Qt, TPostingContract, TQtLoopWorld);
INSTANTIATE_TYPED_TEST_SUITE_P(Qt, TLoopTimersContract, TQtLoopWorld);

class TQtMainLoopTest : public TMainLoopTest<TQtLoopWorld> {
 protected:
  TScriptedFormHost FForms;
};

TEST_F(TQtMainLoopTest, WhoPostsHimselfAgainAndAgainKeepsNobodyFromReturning) {
  TMainLoop::TFunction again = [&] {
    Note(1);
    FLoop->Post(again);
  };
  FLoop->Post(again);
  FLoop->ProcessMessages();
  const size_t once = FNotes.size();
  EXPECT_GE(once, 1u);
  bool timerFired = false;
  QTimer::singleShot(1, [&] { timerFired = true; });
  EXPECT_TRUE(CrankUntil([&] { return timerFired; }));
  EXPECT_GT(FNotes.size(), once);
  FLoop.reset();
}

TEST_F(TQtMainLoopTest, AFailureIsShownAndLoggedAndEndsNothing) {
  FForms.ExpectMessage(u"kaputt").ExpectMessage(
      u"Es ist ein unerwarteter Fehler aufgetreten: bad thing");
  FLoop->Post([] { throw Exception(u"kaputt"); });
  FLoop->Post(Noting(1));
  FLoop->StartTimer(1, [this] {
    if (FNotes.size() > 1) return;
    Note(2);
    throw std::runtime_error("bad thing");
  });
  ASSERT_TRUE(CrankUntilNotes(2));
  EXPECT_THAT(FNotes, ElementsAre(1, 2));
  EXPECT_THAT(FLog.Lines(), ElementsAre("exception Host: kaputt", "exception Host: bad thing"));
}

}  // namespace
}  // namespace kk
