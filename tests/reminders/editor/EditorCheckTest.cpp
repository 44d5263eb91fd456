#include "TEditorWorld.h"

namespace kk {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr TStringView cNoFile = u"Bitte geben Sie eine gültige Sounddatei an.";
constexpr TStringView cNotConfirmed =
    u"E-Mail-Benachrichtigung nicht freigeschaltet!\r\n"
    u"Um eine Benachrichtigung per E-Mail erhalten zu können, müssen Sie diese Funktionalität "
    u"zuerst in den Einstellungen freischalten.";
constexpr TStringView cNoAddress =
    u"Es wurde keine E-Mail-Adresse angegeben.\r\nBitte geben Sie Ihre E-Mail-Adresse in den "
    u"Programmeinstellungen an oder wählen Sie eine andere Erinnerungsart.";
constexpr TStringView cNoNumber =
    u"Es wurde keine Mobilnummer hinterlegt.\r\nBitte richten Sie Ihre Mobilnummer in den "
    u"Einstellungen des Programms ein\r\noder wählen Sie eine andere Erinnerungsart.";

TString NotFound(TStringView iFile) {
  return u"Ungültige Sounddatei!\r\nDie Datei " + TString(iFile) +
         u" konnte nicht gefunden werden.";
}

TString InPast(TStringView iTime) {
  return u"Das eingestellte Erinnerungsdatum darf nicht in der Vergangenheit liegen!\r\n"
         u"Derzeitiges Erinnerungsdatum: " +
         TString(iTime);
}

TString Several(int iCount) {
  return u"Sie haben " + IntToStr(iCount) +
         u" Einträge markiert!\r\nAus Sicherheitsgründen ist es nicht zulässig, "
         u"SMS-Benachrichtungen für mehrere Einträge gleichzeitig einzurichten!";
}

class EditorCheck : public TEditorWorld {
 protected:
  static void Choose(TEditor& ioForm, int iHours, int iMinutes, int iSeconds) {
    ioForm.rdbtnTimeSpan.Click();
    ioForm.spnedtHours.EnterValue(iHours);
    ioForm.spnedtMinutes.EnterValue(iMinutes);
    ioForm.spnedtSeconds.EnterValue(iSeconds);
  }
};

TEST_F(EditorCheck, OKClosesWhatIsInOrder) {
  Add();
  EXPECT_TRUE(EditAndAccept());
  EXPECT_EQ(FHost.ShownCount(), 1) << "no message";
}

TEST_F(EditorCheck, CancelTestsNothingAndChangesNothing) {
  TRemindItemForEdit& item = Add(-5);
  EXPECT_FALSE(Edit([](TEditor& form) {
    form.cmbxRemindType.Select(ekSound);
    form.edtSoundFile.EnterText(u"/fehlt.wav");
    form.btnCancel.Click();
  }));
  EXPECT_TRUE(item.RemindTime().IsZero());
  EXPECT_THAT(DetailsOf(item), IsEmpty());
  EXPECT_TRUE(item.RemindTypes().IsEmpty());
  EXPECT_EQ(Stored(u"RemindType"), "-");
  EXPECT_EQ(Stored(u"SoundFile"), "-");
}

TEST_F(EditorCheck, ClosingTheWindowByItsFrameIsACancel) {
  TRemindItemForEdit& item = Add(-5);
  EXPECT_FALSE(Edit([](TEditor& form) { form.CloseByUser(); }));
  EXPECT_TRUE(item.RemindTime().IsZero());
}

TEST_F(EditorCheck, ForSoundAloneAFileIsMandatory) {
  Add();
  Edit([this](TEditor& form) {
    form.cmbxRemindType.Select(ekSound);
    form.edtSoundFile.EnterText(u"");
    ExpectRefusal(form, cNoFile);
    EXPECT_EQ(form.FocusedControl(), &form.edtSoundFile);
    form.edtSoundFile.EnterText(u"  \t ");
    ExpectRefusal(form, cNoFile);
    form.cmbxRemindType.TakeFocus();
    form.edtSoundFile.EnterText(u"/gibt/es/nicht.wav");
    ExpectRefusal(form, NotFound(u"/gibt/es/nicht.wav"));
    EXPECT_EQ(form.FocusedControl(), &form.edtSoundFile);
    form.edtSoundFile.EnterText(FFolder.File(u""));
    ExpectRefusal(form, NotFound(FFolder.File(u"")));
  });
}

TEST_F(EditorCheck, ForTheOtherKindsAFileIsMandatoryOnlyIfTheBoxIsTicked) {
  Store(u"SoundFile", u"/fehlt.wav");
  Add();
  SetUpEMail();
  StoreHost(u"SMS", u"+49170");
  for (const int kind : {ekWindow, ekEMail, ekOutlook, ekSMS}) {
    EXPECT_TRUE(EditAndAccept([kind](TEditor& form) { form.cmbxRemindType.Select(kind); }));
    Edit([this, kind](TEditor& form) {
      form.cmbxRemindType.Select(kind);
      form.chckbxSoundfile.Click();
      ExpectRefusal(form, NotFound(u"/fehlt.wav"));
    });
  }
}

TEST_F(EditorCheck, ASpanOfNothingIsPast) {
  Add();
  Edit([this](TEditor& form) {
    Choose(form, 0, 0, 0);
    ExpectRefusal(form, InPast(u"20.11.2026, 18:30:00"));
    form.spnedtSeconds.EnterValue(-1);
    ExpectRefusal(form, InPast(u"20.11.2026, 18:29:59"));
  });
}

TEST_F(EditorCheck, ATimeThatIsNowIsNotPast) {
  FClock.Set(In(0));
  Add();
  EXPECT_TRUE(EditAndAccept([](TEditor& form) { Choose(form, 0, 0, 0); }));
}

TEST_F(EditorCheck, WaitingLongerThanTheSpanIsPast) {
  TRemindItemForEdit& item = Add();
  EXPECT_TRUE(Edit([&](TEditor& form) {
    Choose(form, 0, 0, 30);
    FClock.Advance(31'000);
    ExpectRefusal(form, InPast(u"20.11.2026, 18:30:30"));
    form.spnedtSeconds.EnterValue(40);
    form.btnOK.Click();
  }));
  EXPECT_EQ(item.RemindTime(), In(40)) << "it counts from the opening, not from OK";
}

TEST_F(EditorCheck, TheFirstReminderThatIsTooLateStopsWithItsOwnTime) {
  Add(60);
  Add(10);
  Add(5);
  Edit([this](TEditor& form) {
    ASSERT_EQ(form.cmbxTimeRelative.ItemIndex(), 4);
    ExpectRefusal(form, InPast(u"20.11.2026, 18:25:00"));
    EXPECT_TRUE(FLst.GetItems(0).RemindTime().IsZero()) << "nothing is taken over yet";
    form.cmbxTimeRelative.Select(2);
    ExpectRefusal(form, InPast(u"20.11.2026, 18:30:00"));
    EXPECT_TRUE(FLst.GetItems(1).RemindTime().IsZero());
  });
}

TEST_F(EditorCheck, EMailNeedsAConfirmedAddress) {
  Add();
  EXPECT_TRUE(Edit([this](TEditor& form) {
    form.cmbxRemindType.Select(ekEMail);
    ExpectRefusal(form, cNotConfirmed);
    StoreHost(u"EMail", u"ich@beispiel.test");
    ExpectRefusal(form, cNotConfirmed);
    StoreHost(u"EMail", u"  ");
    StoreHost(u"EMailConfirmed", u"1");
    ExpectRefusal(form, cNoAddress);
    StoreHost(u"EMail", u"ich@beispiel.test");
    form.btnOK.Click();
  }));
}

TEST_F(EditorCheck, TheOtherKindsNeedNoAddress) {
  Add();
  StoreHost(u"SMS", u"+49170");
  for (const int kind : {ekSound, ekWindow, ekOutlook, ekSMS}) {
    EXPECT_TRUE(EditAndAccept([kind](TEditor& form) { form.cmbxRemindType.Select(kind); }));
  }
}

TEST_F(EditorCheck, SmsIsForOneReminderAlone) {
  for (int i = 0; i < 5; ++i) Add();
  Edit([this](TEditor& form) {
    form.cmbxRemindType.Select(ekSMS);
    ExpectRefusal(form, Several(5));
  });
  EXPECT_THAT(FSms.Sent, IsEmpty());
  SetUpEMail();
  for (const int kind : {ekSound, ekWindow, ekEMail, ekOutlook}) {
    EXPECT_TRUE(EditAndAccept([kind](TEditor& form) { form.cmbxRemindType.Select(kind); }));
  }
}

TEST_F(EditorCheck, SmsNeedsANumber) {
  Add();
  EXPECT_TRUE(Edit([this](TEditor& form) {
    form.cmbxRemindType.Select(ekSMS);
    ExpectRefusal(form, cNoNumber);
    StoreHost(u"SMS", u"+49170");
    form.btnOK.Click();
  }));
}

TEST_F(EditorCheck, TheFileIsLookedAtBeforeTheTimesAndTheTimesBeforeTheAddress) {
  Add();
  Edit([this](TEditor& form) {
    form.cmbxRemindType.Select(ekEMail);
    form.chckbxSoundfile.Click();
    form.edtSoundFile.EnterText(u"");
    Choose(form, 0, 0, 0);
    ExpectRefusal(form, cNoFile);
    form.chckbxSoundfile.Click();
    ExpectRefusal(form, InPast(u"20.11.2026, 18:30:00"));
    form.spnedtHours.EnterValue(1);
    ExpectRefusal(form, cNotConfirmed);
  });
}

TEST_F(EditorCheck, TheTimesAreLookedAtBeforeTheCountAndTheCountBeforeTheNumber) {
  Add();
  Add();
  Edit([this](TEditor& form) {
    form.cmbxRemindType.Select(ekSMS);
    Choose(form, 0, 0, 0);
    ExpectRefusal(form, InPast(u"20.11.2026, 18:30:00"));
    form.spnedtHours.EnterValue(1);
    ExpectRefusal(form, Several(2));
    FLst.Delete(1);
    ExpectRefusal(form, cNoNumber);
  });
}

}  // namespace
}  // namespace kk
