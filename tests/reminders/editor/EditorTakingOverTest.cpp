#include <cerrno>
#include <filesystem>
#include <limits>

#include "TEditorWorld.h"
#include "host/base/TStream.h"
#include "reminders/TRemindItemLoader.h"
#include "reminders/TRemindItemSaver.h"
#include "settings/TIniFileSectionWatchlist.h"
#include "tests/support/TFaultyFileLayer.h"

namespace kk {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;

class EditorTakingOver : public TEditorWorld {
 protected:
  bool Accept(int iKind, bool iTickSound = false) {
    return EditAndAccept([=](TEditor& form) {
      form.cmbxRemindType.Select(iKind);
      if (iTickSound) form.chckbxSoundfile.Click();
    });
  }
  std::string SoundLine() const {
    return "TRemindDetailsSound " + ToUtf8(FFolder.File(u"remind.wav"));
  }
};

const char cWindowLine[] = "TRemindDetailsWindow Uhr|Text 2: Uhr|https://fake.test/2/Uhr";
const char cEMailLine[] = "TRemindDetailsEMail Uhr|Text 1: Uhr|https://fake.test/1/Uhr";

// --- the time ---

TEST_F(EditorTakingOver, TheTimeHasWholeSeconds) {
  TRemindItemForEdit& item = Add();
  item.SetEndDate(In(3600).PlusMs(999));
  EXPECT_TRUE(EditAndAccept());
  EXPECT_EQ(item.RemindTime(), In(2700));
  EXPECT_TRUE(EditAndAccept([](TEditor& form) { form.rdbtnTimeSpan.Click(); }));
  EXPECT_EQ(item.RemindTime(), In(3600));
}

TEST_F(EditorTakingOver, ASpanGivesAllTheSameTimeTheRelativeChoiceEachItsOwn) {
  TRemindItemForEdit& first = Add(60);
  TRemindItemForEdit& second = Add(120);
  EXPECT_TRUE(EditAndAccept());
  EXPECT_EQ(first.RemindTime(), In(45 * 60));
  EXPECT_EQ(second.RemindTime(), In(105 * 60));
  EXPECT_TRUE(EditAndAccept([](TEditor& form) { form.rdbtnTimeSpan.Click(); }));
  EXPECT_EQ(first.RemindTime(), In(3600));
  EXPECT_EQ(second.RemindTime(), In(3600));
}

TEST_F(EditorTakingOver, ASpanBeyondAllBoundsIsATimeThatTheFileHolds) {
  TRemindItemForEdit& item = Add(0);
  EXPECT_TRUE(EditAndAccept(
      [](TEditor& form) { form.spnedtHours.EnterValue(std::numeric_limits<int>::max()); }));
  EXPECT_EQ(item.RemindTime(), EncodeDateTime({9999, 12, 31, 23, 59, 59, 0}));
}

// --- the settings ---

TEST_F(EditorTakingOver, TheKindIsStoredUnlessItIsSms) {
  Add();
  SetUpEMail();
  StoreHost(u"SMS", u"+49170");
  const std::pair<int, std::string> stored[] = {
      {ekSound, "0"}, {ekEMail, "4"}, {ekOutlook, "3"}, {ekSMS, "3"}};
  for (const auto& [kind, value] : stored) {
    EXPECT_TRUE(Accept(kind));
    EXPECT_EQ(Stored(u"RemindType"), value);
  }
  EXPECT_TRUE(Accept(ekWindow));
  EXPECT_EQ(TIniFileSectionWatchlist().GetRemindType(), 1);
}

TEST_F(EditorTakingOver, TheSpanAndTheRelativeTimeAreStored) {
  Add();
  EXPECT_TRUE(EditAndAccept([](TEditor& form) {
    form.cmbxTimeRelative.Select(7);
    form.rdbtnTimeSpan.Click();
    form.spnedtHours.EnterValue(2);
    form.spnedtMinutes.EnterValue(3);
    form.spnedtSeconds.EnterValue(4);
  }));
  EXPECT_EQ(Stored(u"RemindTimeSpanOffsetInSecs"), "7384");
  EXPECT_EQ(Stored(u"RemindTimeRelativeIndex"), "7");
}

TEST_F(EditorTakingOver, ASpanTooLargeForTheSettingsIsStoredAsTheLargest) {
  Add();
  EXPECT_TRUE(EditAndAccept([](TEditor& form) {
    form.rdbtnTimeSpan.Click();
    form.spnedtHours.EnterValue(1'000'000);
    form.rdbtnTimeRelative.Click();
  }));
  EXPECT_EQ(Stored(u"RemindTimeSpanOffsetInSecs"), "2147483647");
  EXPECT_TRUE(EditAndAccept([](TEditor& form) {
    form.rdbtnTimeSpan.Click();
    form.spnedtHours.EnterValue(-1'000'000);
    form.rdbtnTimeRelative.Click();
  }));
  EXPECT_EQ(Stored(u"RemindTimeSpanOffsetInSecs"), "-2147483648");
}

TEST_F(EditorTakingOver, TheSettingsAreStoredAlsoIfAStepFailed) {
  Add();
  FCalendar.RaisesOnAdd = u"voll";
  Edit([this](TEditor& form) {
    form.cmbxRemindType.Select(ekOutlook);
    form.cmbxTimeRelative.Select(6);
    ExpectRefusal(form, u"Fehler beim Eintragen des Termins in Outlook:\r\nvoll");
  });
  EXPECT_EQ(Stored(u"RemindType"), "3");
  EXPECT_EQ(Stored(u"RemindTimeRelativeIndex"), "6");
}

TEST_F(EditorTakingOver, SettingsThatCanNotBeWrittenStopNoReminder) {
  TRemindItemForEdit& item = Add();
  TFaultyFileLayer disk;
  disk.FailAll("write", ENOSPC);
  EXPECT_TRUE(Accept(ekSound));
  EXPECT_THAT(DetailsOf(item), ElementsAre(SoundLine()));
  EXPECT_EQ(item.RemindTime(), In(23 * 3600 + 45 * 60));
}

// --- the sound ---

TEST_F(EditorTakingOver, SoundAloneGivesTheDetailAndTheKind) {
  TRemindItemForEdit& item = Add();
  EXPECT_TRUE(Accept(ekSound));
  EXPECT_EQ(item.RemindTypes(), TRemindTypes{rtSound});
  EXPECT_THAT(DetailsOf(item), ElementsAre(SoundLine()));
}

TEST_F(EditorTakingOver, SoundCanBeAddedToEachOfTheOtherKinds) {
  SetUpEMail();
  StoreHost(u"SMS", u"+49170");
  const std::pair<int, TRemindType> kinds[] = {
      {ekWindow, rtWindow}, {ekEMail, rtEmail}, {ekOutlook, rtOutlook}, {ekSMS, rtSMS}};
  for (const auto& [kind, type] : kinds) {
    FLst.Clear();
    TRemindItemForEdit& item = Add();
    EXPECT_TRUE(Accept(kind, true));
    EXPECT_EQ(item.RemindTypes(), (TRemindTypes{rtSound, type}));
    EXPECT_EQ(item.LstDetails().IndexOfType(rtSound), 0);
    EXPECT_EQ(item.LstDetails().IndexOfType(type), 1);
  }
}

TEST_F(EditorTakingOver, APresentSoundGetsTheNewFile) {
  TRemindItemForEdit& item = Add();
  item.LstDetails().Add(std::make_unique<TRemindDetailsSound>(u"/alt.wav"));
  FFolder.Write(u"neu.wav", "sound");
  EXPECT_TRUE(EditAndAccept(
      [this](TEditor& form) { form.edtSoundFile.EnterText(FFolder.File(u"neu.wav")); }));
  EXPECT_THAT(DetailsOf(item),
              ElementsAre("TRemindDetailsSound " + ToUtf8(FFolder.File(u"neu.wav")), cWindowLine));
  EXPECT_EQ(item.RemindTypes(), (TRemindTypes{rtSound, rtWindow}));
  EXPECT_EQ(Stored(u"SoundFile"), ToUtf8(FFolder.File(u"neu.wav")));
}

TEST_F(EditorTakingOver, AFileNamedFromTheCurrentFolderIsKeptWithItsFullPath) {
  TRemindItemForEdit& item = Add();
  FFolder.Write(u"neu.wav", "sound");
  const TString file = FFolder.File(u"neu.wav");
  const auto path = std::filesystem::proximate(ToUtf8(file));
  ASSERT_TRUE(path.is_relative());
  EXPECT_TRUE(EditAndAccept([&](TEditor& form) {
    form.cmbxRemindType.Select(ekSound);
    form.edtSoundFile.EnterText(FromUtf8(path.string()));
  }));
  const auto* const sound =
      dynamic_cast<TRemindDetailsSound*>(item.LstDetails().ItemByType(rtSound));
  ASSERT_NE(sound, nullptr);
  EXPECT_TRUE(std::filesystem::path(ToUtf8(sound->SoundFile())).is_absolute());
  EXPECT_TRUE(std::filesystem::equivalent(ToUtf8(sound->SoundFile()), ToUtf8(file)));
  EXPECT_EQ(Stored(u"SoundFile"), ToUtf8(sound->SoundFile()));
}

TEST_F(EditorTakingOver, TheFileIsStoredOnlyIfTheSettingsSaySo) {
  Add();
  Store(u"StoreLastSelectedSoundFile", u"0");
  FFolder.Write(u"neu.wav", "sound");
  EXPECT_TRUE(EditAndAccept([this](TEditor& form) {
    form.cmbxRemindType.Select(ekSound);
    form.edtSoundFile.EnterText(FFolder.File(u"neu.wav"));
  }));
  EXPECT_EQ(Stored(u"SoundFile"), "-");
}

TEST_F(EditorTakingOver, AFileThatIsNotUsedIsNotStored) {
  Add();
  EXPECT_TRUE(EditAndAccept([](TEditor& form) {
    form.chckbxSoundfile.Click();
    form.edtSoundFile.EnterText(u"/nie.wav");
    form.chckbxSoundfile.Click();
  }));
  EXPECT_EQ(Stored(u"SoundFile"), "-");
}

TEST_F(EditorTakingOver, TheSoundOfABoxThatIsNotTickedAnyMoreStaysBehindWithoutItsKind) {
  TRemindItemForEdit& item = Add();
  EXPECT_TRUE(Accept(ekWindow, true));
  EXPECT_TRUE(Accept(ekWindow, true)) << "the second click takes the tick away";
  EXPECT_EQ(item.RemindTypes(), TRemindTypes{rtWindow});
  EXPECT_THAT(DetailsOf(item), ElementsAre(SoundLine(), cWindowLine));
  Edit([](TEditor& form) { EXPECT_TRUE(form.chckbxSoundfile.Checked()) << "and is back"; });
}

// --- window and e-mail ---

TEST_F(EditorTakingOver, AWindowGetsTheTextsOfItsSource) {
  TRemindItemForEdit& item = Add();
  EXPECT_TRUE(Accept(ekWindow));
  EXPECT_THAT(DetailsOf(item), ElementsAre(cWindowLine));
  EXPECT_EQ(item.RemindTypes(), TRemindTypes{rtWindow});
}

TEST_F(EditorTakingOver, AnEMailGetsTheTextsOfItsSource) {
  TRemindItemForEdit& item = Add();
  SetUpEMail();
  EXPECT_TRUE(Accept(ekEMail));
  EXPECT_THAT(DetailsOf(item), ElementsAre(cEMailLine));
  EXPECT_EQ(item.RemindTypes(), TRemindTypes{rtEmail});
}

TEST_F(EditorTakingOver, AnotherKindTakesTheDetailsAndTheKindAway) {
  TRemindItemForEdit& item = Add();
  SetUpEMail();
  EXPECT_TRUE(Accept(ekWindow));
  EXPECT_TRUE(Accept(ekEMail));
  EXPECT_THAT(DetailsOf(item), ElementsAre(cEMailLine));
  EXPECT_EQ(item.RemindTypes(), TRemindTypes{rtEmail});
  EXPECT_TRUE(Accept(ekSound));
  EXPECT_THAT(DetailsOf(item), ElementsAre(SoundLine()));
  EXPECT_EQ(item.RemindTypes(), TRemindTypes{rtSound});
}

TEST_F(EditorTakingOver, TheSameKindKeepsItsTexts) {
  TRemindItemForEdit& item = Add();
  item.LstDetails().Add(std::make_unique<TRemindDetailsWindow>(u"A", u"B", u"C"));
  item.SetRemindTypes({rtWindow});
  EXPECT_TRUE(Accept(ekWindow));
  EXPECT_THAT(DetailsOf(item), ElementsAre("TRemindDetailsWindow A|B|C"));
  EXPECT_THAT(FSource->ViewCalls(), IsEmpty());
}

TEST_F(EditorTakingOver, EachKindIsAskedForByItsOwnNumber) {
  Add();
  SetUpEMail();
  StoreHost(u"SMS", u"+49170");
  for (const int kind : {ekSMS, ekEMail, ekWindow, ekOutlook}) Accept(kind);
  EXPECT_THAT(FSource->ViewCalls(), ElementsAre("GetReminderText 0 Uhr", "GetReminderText 1 Uhr",
                                                "GetReminderText 2 Uhr", "GetReminderText 3 Uhr"));
}

// --- no texts to be had ---

class EditorWithoutTexts : public EditorTakingOver {
 protected:
  /// Each kind is accepted, and leaves the reminder without details.
  void ExpectNoDetails(TRemindItemForEdit& ioItem) {
    SetUpEMail();
    StoreHost(u"SMS", u"+49170");
    for (const int kind : {ekWindow, ekEMail, ekSMS, ekOutlook}) {
      EXPECT_TRUE(Accept(kind)) << kind;
      EXPECT_THAT(DetailsOf(ioItem), IsEmpty());
      EXPECT_TRUE(ioItem.RemindTypes().IsEmpty());
      EXPECT_EQ(ioItem.RemindTime(), In(23 * 3600 + 45 * 60));
    }
    EXPECT_THAT(FSms.Sent, IsEmpty());
    EXPECT_THAT(FCalendar.Calls, IsEmpty());
  }
};

TEST_F(EditorWithoutTexts, AnArticleThatIsNotInTheTree) {
  ExpectNoDetails(AddReminder(NewGuid(), 24 * 60));
}

TEST_F(EditorWithoutTexts, ASourceWithoutAView) {
  FSource = MakeIntf<TFakeSource>(u"Blind", NewGuid(),
                                  TFakeAbilities{.Update = true, .Visualization = false});
  ExpectNoDetails(Add());
}

TEST_F(EditorWithoutTexts, AnArticleWithoutItsResult) {
  auto item = std::make_unique<TWatchlistItem>();
  item->SetSearchResultId(NewGuid());
  ExpectNoDetails(AddReminder(Group().LstItem().Add(std::move(item)).SearchResultId(), 24 * 60));
}

TEST_F(EditorWithoutTexts, ASourceThatHasNoTexts) {
  FSource->SetReminderTexts(false);
  ExpectNoDetails(Add());
}

TEST_F(EditorWithoutTexts, SuchAReminderDoesNotSurviveASaveAndLoad) {
  FSource->SetReminderTexts(false);
  Add();
  EXPECT_TRUE(Accept(ekWindow));
  TLstRemindItem saved(true);
  saved.Add(FLst.GetItems(0).Clone());
  TMemoryStream stream;
  TRemindItemSaver::SaveToStream(stream, saved);
  TLstRemindItem loaded(true);
  TMemoryStream again(stream.Bytes());
  TRemindItemLoader::LoadFromStream(again, loaded, false);
  EXPECT_EQ(loaded.GetCount(), 0);
}

// --- several reminders, and failures ---

TEST_F(EditorTakingOver, AllRemindersAreSetUp) {
  Add();
  Add();
  EXPECT_TRUE(Accept(ekWindow));
  EXPECT_THAT(DetailsOf(FLst.GetItems(0)), ElementsAre(cWindowLine));
  EXPECT_THAT(DetailsOf(FLst.GetItems(1)),
              ElementsAre("TRemindDetailsWindow Uhr 2|Text 2: Uhr 2|https://fake.test/2/Uhr 2"));
}

TEST_F(EditorTakingOver, TheFirstFailureEndsTheLoopAndTheRestStaysAsItWas) {
  for (int i = 0; i < 3; ++i) Add();
  for (TRemindItemForEdit* item : FLst) item->SetRemindTime(In(7));
  FCalendar.RaisesOnAdd = u"voll";
  FCalendar.RaisesFrom = 2;
  Edit([this](TEditor& form) {
    form.cmbxRemindType.Select(ekOutlook);
    form.chckbxSoundfile.Click();
    ExpectRefusal(form, u"Fehler beim Eintragen des Termins in Outlook:\r\nvoll");
  });
  const TDateTime time = In(23 * 3600 + 45 * 60);
  EXPECT_EQ(FLst.GetItems(0).RemindTypes(), (TRemindTypes{rtSound, rtOutlook}));
  EXPECT_EQ(FLst.GetItems(0).RemindTime(), time);
  EXPECT_EQ(FLst.GetItems(1).RemindTypes(), TRemindTypes{rtSound});
  EXPECT_EQ(FLst.GetItems(1).RemindTime(), time) << "also where a step failed";
  EXPECT_TRUE(FLst.GetItems(2).RemindTypes().IsEmpty());
  EXPECT_EQ(FLst.GetItems(2).RemindTime(), In(7));
}

TEST_F(EditorTakingOver, ASecondOKGoesOnFromTheNewState) {
  Add();
  Add();
  FCalendar.RaisesOnAdd = u"voll";
  FCalendar.RaisesFrom = 2;
  EXPECT_TRUE(Edit([this](TEditor& form) {
    form.cmbxRemindType.Select(ekOutlook);
    ExpectRefusal(form, u"Fehler beim Eintragen des Termins in Outlook:\r\nvoll");
    FCalendar.RaisesOnAdd.clear();
    form.btnOK.Click();
  }));
  EXPECT_EQ(FCalendar.Calls.size(), 3u) << "the first appointment stands, the second is entered";
  EXPECT_EQ(FLst.GetItems(1).RemindTypes(), TRemindTypes{rtOutlook});
}

TEST_F(EditorTakingOver, ASourceThatFailsIsToldAndTheEditorStaysOpen) {
  TRemindItemForEdit& item = Add();
  SetUpEMail();
  StoreHost(u"SMS", u"+49170");
  FSource->SetReminderTextFailure(u"  Quelle kaputt ");
  EXPECT_TRUE(Edit([&](TEditor& form) {
    for (const int kind : {ekWindow, ekEMail, ekSMS, ekOutlook}) {
      form.cmbxRemindType.Select(kind);
      ExpectRefusal(form, u"Quelle kaputt");
      EXPECT_TRUE(FLog.Contains("exception Watchlist-Reminder:   Quelle kaputt "));
      FLog.Clear();
      EXPECT_TRUE(item.RemindTypes().IsEmpty());
      EXPECT_TRUE(item.RemindTime().IsZero());
    }
    form.cmbxRemindType.Select(ekSound);
    form.btnOK.Click();
  })) << "another kind is still there for the user";
  EXPECT_THAT(DetailsOf(item), ElementsAre(SoundLine()));
  EXPECT_THAT(FSms.Sent, IsEmpty());
  EXPECT_THAT(FCalendar.Calls, IsEmpty());
}

TEST_F(EditorTakingOver, TheStepsComeInTheirOrderAndStopAtTheFirstFailure) {
  // Nothing makes such a reminder; it shows the order by what a failed message leaves standing.
  TRemindItemForEdit& item = Add();
  StoreHost(u"SMS", u"+49170");
  item.LstDetails().Add(std::make_unique<TRemindDetailsWindow>());
  item.LstDetails().Add(std::make_unique<TRemindDetailsEMail>());
  item.LstDetails().Add(std::make_unique<TRemindDetailsOutlook>());
  item.SetRemindTypes({rtWindow, rtEmail, rtOutlook});
  FSms.Result = TSMSResult::srRejected;
  FSms.Error = u"nein";
  Edit([this](TEditor& form) {
    form.cmbxRemindType.Select(ekSMS);
    ExpectRefusal(form, u"SMS konnte nicht eingerichtet werden. Fehlermeldung: (5) nein");
  });
  EXPECT_EQ(item.RemindTypes(), TRemindTypes{rtOutlook});
  EXPECT_THAT(FCalendar.Calls, IsEmpty());
}

}  // namespace
}  // namespace kk
