#include "views/explorerbar/TExplorerBarGroupReminderDetails.h"

#include "TExplorerBarWorld.h"
#include "reminders/TRemindDetailsWindow.h"
#include "tests/support/TBrokenResult.h"

namespace kk {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

const std::string cAdd = "> Erinnerung einrichten... [EXPLORERBANDBARICO_ADD]";
const std::string cEdit = "> Erinnerung bearbeiten... [EXPLORERBANDBARICO_EDIT]";
const std::string cDelete = "> Erinnerung löschen [EXPLORERBANDBARICO_DELETE]";

class TReminderGroupTest : public TExplorerBarTest {
 protected:
  static constexpr int64_t cHour = TDateTime::cMsPerHour;

  void Show(const TIntf<ISearchResult>& iResult) { Bar->SetCurrentSearchResult(iResult); }
  // With so many records, all of them windows.
  static void Remind(const TIntf<ISearchResult>& iResult, TRemindTypes iTypes, int iRecords = 1) {
    auto reminder = std::make_unique<TRemindItem>(iResult->GetId());
    reminder->SetRemindTypes(iTypes);
    for (int i = 0; i < iRecords; ++i) {
      reminder->LstDetails().Add(std::make_unique<TRemindDetailsWindow>(u"T", u"T", u"L"));
    }
    reminder->SetRemindTime(EncodeDateTime({2026, 12, 3, 4, 5, 6, 0}));
    Handler()->LstRemind().Add(std::move(reminder));
  }
  bool CanAdd() const { return Shows(ReminderGroup(), cAdd); }

  TIntf<ISearchResult> Faust = FakeResult(u"Faust", Now().PlusMs(cHour));
};

TEST_F(TReminderGroupTest, WithoutAResultAllIsHidden) {
  Show(Faust);
  Show({});
  EXPECT_THAT(Lines(ReminderGroup()), IsEmpty());
  EXPECT_FALSE(Bar->GetCurrentSearchResult());
}

TEST_F(TReminderGroupTest, AResultWithoutAReminderOffersOne) {
  Show(Faust);
  EXPECT_THAT(Lines(ReminderGroup()), ElementsAre(cAdd));
}

TEST_F(TReminderGroupTest, ShowsTheReminderOfTheResult) {
  Remind(Faust, {rtWindow});
  Show(Faust);
  EXPECT_THAT(Lines(ReminderGroup()), ElementsAre(cEdit, cDelete, "---", "Meldung: Meldungsfenster",
                                                  "Datum: 03.12.2026", "Uhrzeit: 04:05:06"));
  Show(FakeResult(u"Emilia", Now().PlusMs(cHour)));
  EXPECT_THAT(Lines(ReminderGroup()), ElementsAre(cAdd)) << "that is another one's";
}

TEST_F(TReminderGroupTest, TheHighestKindNamesTheReminder) {
  const std::pair<TRemindTypes, std::string> cases[] = {
      {{rtSound}, "Meldung: Sound"},
      {{rtWindow, rtSound}, "Meldung: Meldungsfenster"},
      {{rtSMS, rtSound}, "Meldung: SMS"},
      {{rtOutlook, rtWindow}, "Meldung: Outlook"},
      {{rtEmail, rtSMS, rtSound}, "Meldung: E-Mail"},
      {{}, "Meldung: "},
  };
  for (const auto& [types, line] : cases) {
    const TIntf<ISearchResult> result = FakeResult(u"Ring");
    Remind(result, types);
    Show(result);
    EXPECT_TRUE(Shows(ReminderGroup(), line)) << line;
  }
}

TEST_F(TReminderGroupTest, SoundShowsBesideAnotherKindOnly) {
  const auto showsSound = [this](TRemindTypes iTypes, int iRecords) {
    const TIntf<ISearchResult> result = FakeResult(u"Ring");
    Remind(result, iTypes, iRecords);
    Show(result);
    return Shows(ReminderGroup(), " + Sound");
  };
  EXPECT_TRUE(showsSound({rtWindow, rtSound}, 2));
  EXPECT_FALSE(showsSound({rtSound}, 1));
  EXPECT_FALSE(showsSound({rtWindow, rtEmail}, 2));
  EXPECT_FALSE(showsSound({rtWindow, rtSound}, 1)) << "there is no second record";
  EXPECT_TRUE(showsSound({rtSound}, 2)) << "the records count";
}

TEST_F(TReminderGroupTest, WhatNeverEndsCantBeRemindedOf) {
  Show(FakeResult(u"Festpreis"));
  EXPECT_THAT(Lines(ReminderGroup()), IsEmpty());
}

TEST_F(TReminderGroupTest, AReminderCanBeSetUpOnlyBeforeTheEnd) {
  Show(FakeResult(u"Uhr", Now().PlusMs(1)));
  EXPECT_TRUE(CanAdd());
  Show(FakeResult(u"Uhr", Now()));
  EXPECT_FALSE(CanAdd());
  Show(FakeResult(u"Uhr", Now().PlusMs(-1)));
  EXPECT_FALSE(CanAdd());
}

TEST_F(TReminderGroupTest, TheHostsCorrectedClockTellsWhetherItHasEnded) {
  Clock.SetExactOffset(2 * cHour);
  Show(Faust);
  EXPECT_FALSE(CanAdd());
  Clock.SetExactOffset(0);
  Bar->RefreshCurrentSearchResult();
  EXPECT_TRUE(CanAdd());
}

TEST_F(TReminderGroupTest, AReminderCanBeChangedBehindTheEnd) {
  const TIntf<ISearchResult> ended = FakeResult(u"Uhr", Now().PlusMs(-cHour));
  Remind(ended, {rtWindow});
  Show(ended);
  EXPECT_TRUE(Shows(ReminderGroup(), cEdit));
  EXPECT_TRUE(Shows(ReminderGroup(), cDelete));
  EXPECT_FALSE(CanAdd());
}

TEST_F(TReminderGroupTest, FollowsTheListOfReminders) {
  Show(Faust);
  Remind(Faust, {rtWindow});
  EXPECT_TRUE(CanAdd()) << "nobody has said so yet";
  Bar->RefreshCurrentSearchResult();
  EXPECT_TRUE(Shows(ReminderGroup(), "Meldung: Meldungsfenster"));
  Handler()->LstRemind().DeleteBySearchResultId(Faust->GetId());
  Bar->RefreshCurrentSearchResult();
  EXPECT_THAT(Lines(ReminderGroup()), ElementsAre(cAdd));
}

TEST_F(TReminderGroupTest, WhatTheResultRaisesPassesThroughAndTheBracketCloses) {
  const auto broken = MakeIntf<TBrokenResult>(u"Uhr");
  broken->Fails = true;
  Show(Faust);
  EXPECT_THROW(Show(broken), Exception);
  EXPECT_EQ(Bar->GetCurrentSearchResult(), TIntf<ISearchResult>(broken));
  Skin.Take();
  Show({});
  EXPECT_EQ(Skin.Take().count("TExplorerBarGroupReminderDetails"), 1U) << "the skin hears again";
  EXPECT_THAT(Lines(ReminderGroup()), IsEmpty());
}

}  // namespace
}  // namespace kk
