#include "TEditorWorld.h"
#include "settings/TIniFileSectionWatchlist.h"

namespace kk {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class DisplayWithoutDisplaying : public TEditorWorld {
 protected:
  // No window is expected: one that comes fails the test.
  void Run() { EXPECT_TRUE(TEditor::DisplayWithoutDisplaying(nullptr, FLst)); }
};

TEST_F(DisplayWithoutDisplaying, OfAnEmptyListDoesNothing) {
  Run();
  EXPECT_EQ(Stored(u"RemindTimeRelativeIndex"), "-");
}

TEST_F(DisplayWithoutDisplaying, TakesTheDefaultKind) {
  TRemindItemForEdit& item = Add();
  Run();
  EXPECT_EQ(item.RemindTypes(), TRemindTypes{rtWindow}) << "where none is set";
  EXPECT_THAT(DetailsOf(item),
              ElementsAre("TRemindDetailsWindow Uhr|Text 2: Uhr|https://fake.test/2/Uhr"));
  Store(u"DefaultRemindType", u"0");
  Run();
  EXPECT_EQ(item.RemindTypes(), TRemindTypes{rtSound});
  EXPECT_THAT(DetailsOf(item),
              ElementsAre("TRemindDetailsSound " + ToUtf8(FFolder.File(u"remind.wav"))));
  Store(u"RemindType", u"4");
  Run();
  EXPECT_EQ(item.RemindTypes(), TRemindTypes{rtSound}) << "the kind used last plays no part";
}

TEST_F(DisplayWithoutDisplaying, CountsBackFromTheEndByDefault) {
  TRemindItemForEdit& first = Add();
  TRemindItemForEdit& second = Add(60);
  Run();
  EXPECT_EQ(first.RemindTime(), In(24 * 3600 - 60)) << "1 minute where none is set";
  EXPECT_EQ(second.RemindTime(), In(59 * 60));
  Store(u"RelativeTimeInMinutes", u"5");
  Run();
  EXPECT_EQ(first.RemindTime(), In(24 * 3600 - 30 * 60)) << "the key holds a place in the list";
}

TEST_F(DisplayWithoutDisplaying, CountsFromNowIfTheSettingsSaySo) {
  TRemindItemForEdit& item = Add();
  Store(u"DefaultReminderAfterTime", u"1");
  Run();
  EXPECT_EQ(item.RemindTime(), In(3600)) << "1 hour where none is set";
  Store(u"DefaultReminderHours", u"2");
  Store(u"DefaultReminderMinutes", u"3");
  Store(u"DefaultReminderSeconds", u"100");
  Run();
  EXPECT_EQ(item.RemindTime(), In(2 * 3600 + 3 * 60 + 100));
}

TEST_F(DisplayWithoutDisplaying, CountsFromNowWithoutAnEnd) {
  TRemindItemForEdit& item = Add(0);
  Run();
  EXPECT_EQ(item.RemindTime(), In(3600));
}

TEST_F(DisplayWithoutDisplaying, UseDefaultReminderTimesPlaysNoPart) {
  TRemindItemForEdit& item = Add();
  Store(u"RemindTimeRelativeIndex", u"9");
  for (const TString value : {u"0", u"1"}) {
    Store(u"UseDefaultReminderTimes", value);
    Run();
    EXPECT_EQ(item.RemindTime(), In(24 * 3600 - 60));
  }
}

TEST_F(DisplayWithoutDisplaying, TimesThatArePastBecomeNone) {
  TRemindItemForEdit& first = Add(5);
  TRemindItemForEdit& second = Add(60);
  Store(u"RelativeTimeInMinutes", u"3");
  Run();
  EXPECT_TRUE(first.RemindTime().IsZero());
  EXPECT_EQ(second.RemindTime(), In(50 * 60));
  Store(u"DefaultReminderAfterTime", u"1");
  Store(u"DefaultReminderSeconds", u"-2147483648");
  Run();
  EXPECT_TRUE(second.RemindTime().IsZero());
}

TEST_F(DisplayWithoutDisplaying, ATimeThatIsNowIsNotPast) {
  FClock.Set(In(0));
  TRemindItemForEdit& item = Add(1);
  Run();
  EXPECT_EQ(item.RemindTime(), In(0));
}

TEST_F(DisplayWithoutDisplaying, DoesNotNoticeAMissingSoundFile) {
  TRemindItemForEdit& item = Add();
  Store(u"DefaultRemindType", u"0");
  Store(u"SoundFile", u"/fehlt.wav");
  Run();
  EXPECT_THAT(DetailsOf(item), ElementsAre("TRemindDetailsSound /fehlt.wav"));
}

TEST_F(DisplayWithoutDisplaying, AnEmptySoundFileStaysEmpty) {
  TRemindItemForEdit& item = Add();
  Store(u"DefaultRemindType", u"0");
  Store(u"SoundFile", u"");
  Run();
  EXPECT_THAT(DetailsOf(item), ElementsAre("TRemindDetailsSound "));
}

TEST_F(DisplayWithoutDisplaying, TheSoundOfTheFirstReminderTicksTheBoxForAll) {
  Add().LstDetails().Add(std::make_unique<TRemindDetailsSound>(u"/a.wav"));
  Add();
  Run();
  EXPECT_EQ(FLst.GetItems(0).RemindTypes(), (TRemindTypes{rtSound, rtWindow}));
  EXPECT_EQ(FLst.GetItems(1).RemindTypes(), (TRemindTypes{rtSound, rtWindow}));
  EXPECT_EQ(DetailsOf(FLst.GetItems(1))[0], "TRemindDetailsSound /a.wav");
}

TEST_F(DisplayWithoutDisplaying, ASourceThatFailsLeavesTheRemindersAsTheyWere) {
  TRemindItemForEdit& old = Add();
  old.LstDetails().Add(std::make_unique<TRemindDetailsEMail>(u"A", u"B", u"C"));
  old.SetRemindTypes({rtEmail});
  old.SetRemindTime(In(7));
  TRemindItemForEdit& fresh = Add();
  FSource->SetReminderTextFailure(u"Quelle kaputt");
  Run();
  EXPECT_EQ(old.RemindTypes(), TRemindTypes{rtEmail});
  EXPECT_THAT(DetailsOf(old), ElementsAre("TRemindDetailsEMail A|B|C"));
  EXPECT_EQ(old.RemindTime(), In(7));
  EXPECT_TRUE(fresh.RemindTime().IsZero()) << "so the caller adds none";
  EXPECT_THAT(FLog.DebugLines(), ElementsAre(testing::HasSubstr("Quelle kaputt")));
}

TEST_F(DisplayWithoutDisplaying, MakesTheDefaultsTheStateUsedLast) {
  Add();
  Store(u"RemindType", u"4");
  Store(u"DefaultReminderHours", u"3");
  Store(u"RelativeTimeInMinutes", u"2");
  Run();
  EXPECT_EQ(TIniFileSectionWatchlist().GetRemindType(), 1);
  EXPECT_EQ(Stored(u"RemindTimeSpanOffsetInSecs"), "10800");
  EXPECT_EQ(Stored(u"RemindTimeRelativeIndex"), "2");
}

TEST_F(DisplayWithoutDisplaying, TakesAnAppointmentOutOfTheCalendarWithoutAWindow) {
  TRemindItemForEdit& item = Add();
  auto details = std::make_unique<TRemindDetailsOutlook>(u"Uhr", u"", u"");
  details->SetEntryId(u"abc");
  item.LstDetails().Add(std::move(details));
  item.SetRemindTypes({rtOutlook});
  FCalendar.RaisesOnDelete = u"Netz weg";
  Run();
  EXPECT_THAT(FCalendar.Calls, ElementsAre("delete abc"));
  EXPECT_EQ(item.RemindTypes(), TRemindTypes{rtWindow});
}

}  // namespace
}  // namespace kk
