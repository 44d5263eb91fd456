#include "TEditorWorld.h"
#include "host/base/TStream.h"
#include "reminders/TRemindItemLoader.h"
#include "reminders/TRemindItemSaver.h"

namespace kk {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;

// The reminder of an article that ends in 24 hours, 15 minutes before that.
const char cTime[] = "2026-11-21T18:15:00";
const char cSender[] = "Watchlist-Reminder (Outlook): ";

// --- SMS ---

class EditorSms : public TEditorWorld {
 protected:
  EditorSms() { StoreHost(u"SMS", u"+49170"); }

  static void ChooseSms(TEditor& ioForm) { ioForm.cmbxRemindType.Select(ekSMS); }
  void ExpectFailure(TRemindItemForEdit& ioItem, const TString& iMessage) {
    EXPECT_FALSE(Edit([&](TEditor& form) {
      ChooseSms(form);
      ExpectRefusal(form, iMessage);
    }));
    EXPECT_THAT(DetailsOf(ioItem), IsEmpty());
    EXPECT_TRUE(ioItem.RemindTypes().IsEmpty());
    EXPECT_TRUE(FLog.Contains("error Watchlist-Reminder (SMS): " + ToUtf8(iMessage)));
  }
};

TEST_F(EditorSms, IsHandedToTheServiceWithItsTimeWhileTheEditorCloses) {
  TRemindItemForEdit& item = Add();
  EXPECT_TRUE(EditAndAccept(ChooseSms));
  EXPECT_THAT(FSms.Sent, ElementsAre(std::string("+49170|") + cTime +
                                     "|Kaufkobolde 7.0 - Erinnerung an Text 0: Uhr"));
  EXPECT_THAT(DetailsOf(item), ElementsAre("TRemindDetailsSMS Text 0: Uhr"));
  EXPECT_EQ(item.RemindTypes(), TRemindTypes{rtSMS});
}

TEST_F(EditorSms, ThatTheServiceDoesNotTakeKeepsTheEditorOpen) {
  FSms.Result = TSMSResult::srNoCredit;
  FSms.Error = u"kein Guthaben";
  TRemindItemForEdit& item = Add();
  ExpectFailure(item, u"SMS konnte nicht eingerichtet werden. Fehlermeldung: (4) kein Guthaben");
  EXPECT_EQ(ToUtf8(DateTimeToIso(item.RemindTime())), cTime) << "the time is set all the same";
}

TEST_F(EditorSms, ThatRaisesKeepsTheEditorOpen) {
  FSms.Raises = u"Netz weg";
  ExpectFailure(Add(), u"SMS konnte nicht eingerichtet werden. Fehlermeldung: (-1) Netz weg");
}

TEST_F(EditorSms, IsTriedAgainWithASecondOK) {
  FSms.Result = TSMSResult::srTimeout;
  Add();
  EXPECT_TRUE(Edit([this](TEditor& form) {
    ChooseSms(form);
    ExpectRefusal(form, u"SMS konnte nicht eingerichtet werden. Fehlermeldung: (7) ");
    FSms.Result = TSMSResult::srOk;
    form.btnOK.Click();
  }));
  EXPECT_EQ(FSms.Sent.size(), 2u);
}

// --- the wait for a service ---

// A service that is waited for in a modal window, in which the user does this.
class TSlowSms : public TFakeSms {
 public:
  bool Send(TStringView iMessage, TStringView iNumber, TDateTime iWhen, TSMSResult& oResult,
            TString& oErrorText) override {
    TfrmMessageDlg(u"Bitte warten", TMsgDlgType::mtInformation, {TMsgDlgBtn::mbOK}).ShowModal();
    return TFakeSms::Send(iMessage, iNumber, iWhen, oResult, oErrorText);
  }
};

TEST_F(EditorSms, WhileTheServiceIsWaitedForNothingCanBeDoneInTheEditor) {
  TSlowSms sms;
  TRemindItemForEdit& item = Add();
  TEditor* editor = nullptr;
  EXPECT_TRUE(EditAndAccept([&](TEditor& form) {
    ChooseSms(form);
    editor = &form;
    FHost.Expect<TfrmMessageDlg>([&](TfrmMessageDlg& wait) {
      EXPECT_FALSE(editor->btnOK.Click());
      EXPECT_FALSE(editor->btnCancel.Click());
      EXPECT_FALSE(editor->CloseByUser());
      EXPECT_FALSE(editor->cmbxRemindType.Select(ekWindow));
      EXPECT_FALSE(editor->cmbxTimeRelative.Select(0));
      wait.Button(TMsgDlgBtn::mbOK)->Click();
    });
  }));
  EXPECT_EQ(sms.Sent.size(), 1u);
  EXPECT_EQ(item.RemindTypes(), TRemindTypes{rtSMS});
  EXPECT_EQ(ToUtf8(DateTimeToIso(item.RemindTime())), cTime);
}

TEST_F(EditorSms, IsNotSentAgainWhenItsTimeChanges) {
  TRemindItemForEdit& item = Add();
  EXPECT_TRUE(EditAndAccept(ChooseSms));
  EXPECT_TRUE(EditAndAccept([](TEditor& form) {
    EXPECT_EQ(form.cmbxRemindType.ItemIndex(), ekSMS);
    form.cmbxTimeRelative.Select(0);
  }));
  EXPECT_EQ(FSms.Sent.size(), 1u);
  EXPECT_EQ(item.RemindTime(), In(24 * 3600 - 60));
  EXPECT_EQ(item.RemindTypes(), TRemindTypes{rtSMS});
}

TEST_F(EditorSms, IsNotRecalledForAnotherKind) {
  TRemindItemForEdit& item = Add();
  EXPECT_TRUE(EditAndAccept(ChooseSms));
  EXPECT_TRUE(EditAndAccept([](TEditor& form) { form.cmbxRemindType.Select(ekSound); }));
  EXPECT_EQ(FSms.Sent.size(), 1u);
  EXPECT_EQ(item.LstDetails().IndexOfType(rtSMS), -1);
  EXPECT_EQ(item.RemindTypes(), TRemindTypes{rtSound});
}

// --- the appointment by itself ---

class OutlookAppointment : public TEditorWorld {
 protected:
  TRemindDetailsOutlook FDetails{u"Uhr", u"Alte Uhr", u"https://fake.test"};
};

TEST_F(OutlookAppointment, IsEnteredWithItsFields) {
  EXPECT_TRUE(TEditor::AddOutlookAppointment(FDetails, In(3600)));
  EXPECT_THAT(FCalendar.Calls, ElementsAre("add Kaufkobolde 7.0|Alte Uhr|Erinnerung an Uhr|0|"
                                           "2026-11-20T19:30:00|1"));
  EXPECT_EQ(FDetails.EntryId(), u"entry 1");
  EXPECT_THAT(FLog.Lines(), ElementsAre(std::string("info ") + cSender +
                                        "Termin erfolgreich in Outlook eingetragen "
                                        "(20.11.2026, 19:30:00)"));
}

TEST_F(OutlookAppointment, ThatCanNotBeEnteredIsToldToTheUser) {
  FCalendar.RaisesOnAdd = u"  Kalender voll\r\n ";
  ExpectError(u"Fehler beim Eintragen des Termins in Outlook:\r\nKalender voll");
  EXPECT_FALSE(TEditor::AddOutlookAppointment(FDetails, In(3600)));
  EXPECT_EQ(FDetails.EntryId(), u"");
  ASSERT_EQ(FLog.Lines().size(), 1u);
  EXPECT_THAT(FLog.Lines()[0],
              testing::StartsWith(std::string("exception ") + cSender + "  Kalender voll"));
}

TEST_F(OutlookAppointment, WithoutACalendarIsToldToTheUser) {
  FCalendar.RaisesOnCreate = u"Kein Kalender";
  ExpectError(u"Fehler beim Eintragen des Termins in Outlook:\r\nKein Kalender");
  EXPECT_FALSE(TEditor::AddOutlookAppointment(FDetails, In(3600)));
  EXPECT_THAT(FLog.Lines(), ElementsAre(std::string("exception ") + cSender + "Kein Kalender"));
}

TEST_F(OutlookAppointment, IsDeletedByItsEntryId) {
  FDetails.SetEntryId(u"abc");
  TEditor::DeleteOutlookAppointment(FDetails);
  EXPECT_THAT(FCalendar.Calls, ElementsAre("delete abc"));
  EXPECT_THAT(FLog.Lines(), ElementsAre(std::string("info ") + cSender +
                                        "Termin erfolgreich gelöscht (EntryId: abc)"));
  EXPECT_EQ(FDetails.EntryId(), u"");
}

TEST_F(OutlookAppointment, ThatCanNotBeDeletedIsAbandoned) {
  FDetails.SetEntryId(u"abc");
  FCalendar.Deletes = false;
  TEditor::DeleteOutlookAppointment(FDetails);
  EXPECT_THAT(FLog.Lines(), ElementsAre(std::string("error ") + cSender +
                                        "Termin konnte nicht gelöscht werden (EntryId: abc)"));
  EXPECT_EQ(FDetails.EntryId(), u"");
}

TEST_F(OutlookAppointment, OfACalendarOutOfReachIsAbandonedToo) {
  for (TString* failure : {&FCalendar.RaisesOnDelete, &FCalendar.RaisesOnCreate}) {
    *failure = u"Netz weg";
    FDetails.SetEntryId(u"abc");
    FLog.Clear();
    TEditor::DeleteOutlookAppointment(FDetails);
    EXPECT_THAT(FLog.Lines(), ElementsAre(std::string("exception ") + cSender + "Netz weg"));
    EXPECT_EQ(FDetails.EntryId(), u"");
  }
}

// --- the appointment in the editor ---

class EditorOutlook : public TEditorWorld {
 protected:
  static void ChooseOutlook(TEditor& ioForm) { ioForm.cmbxRemindType.Select(ekOutlook); }
  static TRemindDetailsOutlook* OutlookOf(TRemindItemForEdit& ioItem) {
    return dynamic_cast<TRemindDetailsOutlook*>(ioItem.LstDetails().ItemByType(rtOutlook));
  }
  /// A reminder with the appointment "entry 1"; the calls are forgotten.
  TRemindItemForEdit& AddWithAppointment() {
    TRemindItemForEdit& item = Add();
    EXPECT_TRUE(EditAndAccept(ChooseOutlook));
    FCalendar.Calls.clear();
    FLog.Clear();
    return item;
  }
  static constexpr TStringView cFailed =
      u"Fehler beim Eintragen des Termins in Outlook:\r\nKalender voll";
};

const char cAdded[] = "add Kaufkobolde 7.0|Text 3: Uhr|Erinnerung an Uhr|0|2026-11-21T18:15:00|1";
const char cAddedLater[] =
    "add Kaufkobolde 7.0|Text 3: Uhr|Erinnerung an Uhr|0|2026-11-21T18:29:00|1";

TEST_F(EditorOutlook, ANewReminderEntersAnAppointment) {
  TRemindItemForEdit& item = Add();
  EXPECT_TRUE(EditAndAccept(ChooseOutlook));
  EXPECT_THAT(FCalendar.Calls, ElementsAre(cAdded));
  EXPECT_THAT(DetailsOf(item),
              ElementsAre("TRemindDetailsOutlook Uhr|Text 3: Uhr|https://fake.test/3/Uhr"));
  EXPECT_EQ(item.RemindTypes(), TRemindTypes{rtOutlook});
  EXPECT_EQ(OutlookOf(item)->EntryId(), u"entry 1");
}

TEST_F(EditorOutlook, AFailedEntryKeepsTheEditorOpenAndTheReminderWithoutTheKind) {
  TRemindItemForEdit& item = Add();
  FCalendar.RaisesOnAdd = u"Kalender voll";
  EXPECT_FALSE(Edit([&](TEditor& form) {
    ChooseOutlook(form);
    ExpectRefusal(form, cFailed);
  }));
  EXPECT_TRUE(item.RemindTypes().IsEmpty());
  EXPECT_THAT(DetailsOf(item), IsEmpty());
  EXPECT_EQ(ToUtf8(DateTimeToIso(item.RemindTime())), cTime);
}

TEST_F(EditorOutlook, AnUnchangedTimeTouchesNothingInTheCalendar) {
  TRemindItemForEdit& item = AddWithAppointment();
  EXPECT_TRUE(EditAndAccept([](TEditor& form) { form.chckbxSoundfile.Click(); }));
  EXPECT_THAT(FCalendar.Calls, IsEmpty());
  EXPECT_EQ(OutlookOf(item)->EntryId(), u"entry 1");
  EXPECT_EQ(item.RemindTypes(), (TRemindTypes{rtSound, rtOutlook}));
}

TEST_F(EditorOutlook, AChangedTimeMovesTheAppointment) {
  TRemindItemForEdit& item = AddWithAppointment();
  EXPECT_TRUE(EditAndAccept([](TEditor& form) { form.cmbxTimeRelative.Select(0); }));
  EXPECT_THAT(FCalendar.Calls, ElementsAre("delete entry 1", cAddedLater));
  EXPECT_EQ(OutlookOf(item)->EntryId(), u"entry 2");
  EXPECT_EQ(item.RemindTypes(), TRemindTypes{rtOutlook});
  EXPECT_EQ(item.LstDetails().GetCount(), 1) << "into the same details";
}

TEST_F(EditorOutlook, AMoveGoesOnWhenTheOldAppointmentCanNotBeDeleted) {
  TRemindItemForEdit& item = AddWithAppointment();
  FCalendar.Deletes = false;
  EXPECT_TRUE(EditAndAccept([](TEditor& form) { form.cmbxTimeRelative.Select(0); }));
  EXPECT_EQ(OutlookOf(item)->EntryId(), u"entry 2");
}

TEST_F(EditorOutlook, AFailedMoveLeavesTheDetailsWithoutEntryAndKind) {
  TRemindItemForEdit& item = AddWithAppointment();
  FCalendar.RaisesOnAdd = u"Kalender voll";
  EXPECT_FALSE(Edit([this](TEditor& form) {
    form.cmbxTimeRelative.Select(0);
    ExpectRefusal(form, cFailed);
  }));
  ASSERT_NE(OutlookOf(item), nullptr);
  EXPECT_EQ(OutlookOf(item)->EntryId(), u"");
  EXPECT_TRUE(item.RemindTypes().IsEmpty());
  EXPECT_EQ(item.RemindTime(), In(24 * 3600 - 60)) << "set although the step failed";
}

TEST_F(EditorOutlook, ASecondOKBehindAFailedMoveFindsTheTimeUnchangedAndEntersNothing) {
  TRemindItemForEdit& item = AddWithAppointment();
  FCalendar.RaisesOnAdd = u"Kalender voll";
  EXPECT_TRUE(Edit([this](TEditor& form) {
    form.cmbxTimeRelative.Select(0);
    ExpectRefusal(form, cFailed);
    FCalendar.RaisesOnAdd.clear();
    FCalendar.Calls.clear();
    form.btnOK.Click();
  }));
  EXPECT_THAT(FCalendar.Calls, IsEmpty());
  EXPECT_EQ(OutlookOf(item)->EntryId(), u"");
  EXPECT_TRUE(item.RemindTypes().IsEmpty());
}

TEST_F(EditorOutlook, AnotherKindDeletesTheAppointment) {
  TRemindItemForEdit& item = AddWithAppointment();
  EXPECT_TRUE(EditAndAccept([](TEditor& form) { form.cmbxRemindType.Select(ekWindow); }));
  EXPECT_THAT(FCalendar.Calls, ElementsAre("delete entry 1"));
  EXPECT_EQ(OutlookOf(item), nullptr);
  EXPECT_EQ(item.RemindTypes(), TRemindTypes{rtWindow});
}

TEST_F(EditorOutlook, AnotherKindGoesOnWithoutTheCalendar) {
  TRemindItemForEdit& item = AddWithAppointment();
  FCalendar.RaisesOnCreate = u"Kein Kalender";
  EXPECT_TRUE(EditAndAccept([](TEditor& form) { form.cmbxRemindType.Select(ekSound); }));
  EXPECT_EQ(OutlookOf(item), nullptr);
  EXPECT_EQ(item.RemindTypes(), TRemindTypes{rtSound});
}

TEST_F(EditorOutlook, ALaterDeleteFindsTheAppointmentAfterASaveAndLoad) {
  AddWithAppointment();
  TLstRemindItem saved(true);
  saved.Add(FLst.GetItems(0).Clone());
  TMemoryStream stream;
  TRemindItemSaver::SaveToStream(stream, saved);
  EXPECT_THAT(stream.Bytes(), testing::HasSubstr("<EnryID>entry 1</EnryID>"));
  TLstRemindItem loaded(true);
  TMemoryStream again(stream.Bytes());
  TRemindItemLoader::LoadFromStream(again, loaded, false);
  ASSERT_EQ(loaded.GetCount(), 1);
  auto* const details =
      dynamic_cast<TRemindDetailsOutlook*>(loaded.GetItems(0).LstDetails().ItemByType(rtOutlook));
  ASSERT_NE(details, nullptr);
  TEditor::DeleteOutlookAppointment(*details);
  EXPECT_THAT(FCalendar.Calls, ElementsAre("delete entry 1"));
}

}  // namespace
}  // namespace kk
