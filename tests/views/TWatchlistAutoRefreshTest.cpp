#include "views/TWatchlistAutoRefresh.h"

#include "TShownSection.h"

namespace kk {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr char cAtStart[] = "info Form: Autom. Aktualisieren bei Programmstart ausgeführt...";
constexpr char cOnTick[] =
    "info Form: Interval für autom. Aktualisieren abgelaufen. Aktualisiere Einträge...";

class TWatchlistAutoRefreshTest : public TShownSection {
 protected:
  TWatchlistAutoRefreshTest() {
    Recorded.reset();
    Form.reset();
    Item(Category(u"Bücher"), Auction, u"Faust");
  }
  // The program starts, in a host that stays.
  void Start(bool iStays = true) {
    Form = std::make_unique<TfrmKKWatchlist>();
    Form->Initialize(MakeIntf<TFakeApplication>(iStays));
    Loop.Advance(300);
  }
  // So many minutes pass, for the clock and for the timer.
  void Pass(int iMinutes) {
    Clock.Advance(iMinutes * TDateTime::cMsPerMinute);
    Loop.Advance(static_cast<int>(iMinutes * TDateTime::cMsPerMinute));
  }
  // Whether a refresh has begun; it ends.
  bool Refreshes() {
    const bool refreshes = !Auction->Requests().empty();
    while (!Auction->Requests().empty()) Auction->Finish(true);
    return refreshes;
  }
  // What the automatic has written to the log since the last question.
  TLines Told() {
    TLines lines;
    for (const std::string& line : Log.Lines()) {
      if (line.starts_with("info Form: ")) lines.push_back(line);
    }
    Log.Clear();
    return lines;
  }

  TIniFileSectionWatchlist Settings;
};

TEST_F(TWatchlistAutoRefreshTest, NothingIsRefreshedUnlessTheUserWantsIt) {
  Start();
  Pass(25 * 60);
  EXPECT_FALSE(Refreshes());
  EXPECT_THAT(Told(), IsEmpty());
  EXPECT_TRUE(Settings.GetUpdateLastDate().IsZero());
}

TEST_F(TWatchlistAutoRefreshTest, StartRefreshesWhateverTheInterval) {
  Settings.SetUpdateOnStartup(true);
  Settings.SetUpdateLastDate(Now());
  Clock.Advance(1000);
  Start();
  EXPECT_TRUE(Refreshes());
  EXPECT_THAT(Told(), ElementsAre(cAtStart));
  EXPECT_EQ(Settings.GetUpdateLastDate(), Now());
}

TEST_F(TWatchlistAutoRefreshTest, FirstTickOfAnIntervalThatNeverRanRefreshes) {
  Settings.SetUpdateOnInterval(true);
  Start();
  EXPECT_FALSE(Refreshes()) << "not at the start";
  Pass(4);
  EXPECT_FALSE(Refreshes());
  Pass(1);
  EXPECT_TRUE(Refreshes());
  EXPECT_THAT(Told(), ElementsAre(cOnTick));
}

TEST_F(TWatchlistAutoRefreshTest, TickRefreshesFromTheVeryEndOfTheInterval) {
  Settings.SetUpdateOnInterval(true);
  Settings.SetUpdateIntervalInHrs(2);
  Settings.SetUpdateLastDate(Now());
  Start();
  Pass(115);
  EXPECT_FALSE(Refreshes());
  Pass(5);
  EXPECT_TRUE(Refreshes()) << "now equal to that moment passes";
  Pass(115);
  EXPECT_FALSE(Refreshes());
}

TEST_F(TWatchlistAutoRefreshTest, WithoutTheIntervalTicksNeverRefresh) {
  Settings.SetUpdateOnStartup(true);
  Start();
  EXPECT_TRUE(Refreshes());
  Pass(100 * 60);
  EXPECT_FALSE(Refreshes());
}

TEST_F(TWatchlistAutoRefreshTest, RefreshAtTheStartBeginsTheIntervalAnew) {
  Settings.SetUpdateOnStartup(true);
  Settings.SetUpdateOnInterval(true);
  Settings.SetUpdateIntervalInHrs(1);
  Start();
  EXPECT_TRUE(Refreshes());
  Pass(5);
  EXPECT_FALSE(Refreshes());
  Pass(55);
  EXPECT_TRUE(Refreshes());
}

TEST_F(TWatchlistAutoRefreshTest, HostThatComesAndGoesDoesNotRefresh) {
  Settings.SetUpdateOnStartup(true);
  Settings.SetUpdateOnInterval(true);
  Start(false);
  Pass(10);
  EXPECT_FALSE(Refreshes());
  EXPECT_TRUE(Settings.GetUpdateLastDate().IsZero()) << "the interval is another host's";
}

TEST_F(TWatchlistAutoRefreshTest, DecisionThatFailsIsSwallowedAndNothingIsRefreshed) {
  Settings.SetUpdateOnStartup(true);
  Form = std::make_unique<TfrmKKWatchlist>();
  Form->Initialize(MakeIntf<TFakeApplication>(true));
  TKKIniFile* const before = SetIniFile(nullptr);
  Loop.Advance(300);
  SetIniFile(before);
  EXPECT_FALSE(Refreshes());
  EXPECT_NE(Panes().TabControl(), nullptr);
}

}  // namespace
}  // namespace kk
