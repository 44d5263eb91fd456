#include "TOptionsWorld.h"
#include "host/common/TIniFileSectionBase.h"
#include "host/common/TIniFileSectionCommunication.h"
#include "host/controls/TfrmKKCommonWait.h"
#include "host/controls/TfrmMSNPopUpBase.h"
#include "host/options/TframOptionsCalendar.h"
#include "host/options/TframOptionsEmail.h"
#include "host/options/TframOptionsGeneral.h"
#include "host/options/TframOptionsNotification.h"
#include "host/options/TframOptionsSms.h"
#include "tests/support/TFakeApplication.h"

namespace kk {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

TEST_F(TOptionsTest, GeneralEditsTheKeysOfItsSection) {
  TframOptionsGeneral page;
  Show(page);
  EXPECT_TRUE(page.chckbxDelayedStart.Checked());
  EXPECT_FALSE(page.chckbxCloseToTray.Checked());
  EXPECT_FALSE(page.chckbxStartInTray.Checked());
  page.SaveSettings();
  EXPECT_FALSE(File.HasKey(u"General", u"DelayedStart"));  // the default is no entry
  EXPECT_FALSE(File.HasKey(u"General", u"CloseToTray"));
  page.chckbxDelayedStart.Click();
  page.chckbxCloseToTray.Click();
  page.SaveSettings();
  EXPECT_EQ(Stored(u"DelayedStart", u"General"), "0");
  EXPECT_EQ(Stored(u"CloseToTray", u"General"), "1");
  EXPECT_EQ(Stored(u"StartInTray", u"General"), "-");
  page.chckbxCloseToTray.Click();
  page.chckbxStartInTray.Click();
  page.SaveSettings();
  EXPECT_FALSE(TIniFileSectionGeneral().GetCloseToTray());
  EXPECT_TRUE(TIniFileSectionGeneral().GetStartInTray());
  page.chckbxStartInTray.SetChecked(false);
  page.LoadSettings();
  EXPECT_TRUE(page.chckbxStartInTray.Checked());
  EXPECT_EQ(Complaint(page), "");
  EXPECT_EQ(Control, nullptr);
}

class TEmailPageTest : public TOptionsTest {
 protected:
  TEmailPageTest() {
    Set(u"EMail", u"otto@b.example");
    Set(u"SmtpUrl", u"smtps://mail.b.example:465");
    Set(u"SmtpUser", u"otto");
    Show(Page);
  }
  std::string Confirmed() const { return ToUtf8(Page.lblConfirmed.Caption()); }
  /// Lets a code be sent and answers it.
  TString SendCode() {
    Forms.ExpectMessage(u"Ein Code ist an otto@b.example unterwegs. Er gilt 24 Stunden.");
    Page.btnSendCode.Click();
    constexpr TStringView cBefore = u"confirm-email ";
    return Ways.Mail.Body.substr(Ways.Mail.Body.find(cBefore) + cBefore.size(), 8);
  }
  std::string Confirm(TStringView iCode) {
    Page.edtCode.EnterText(iCode);
    return Failure([&] { Page.btnConfirm.Click(); });
  }
  static TString Wrong(TString iCode) {
    iCode[0] = iCode[0] == u'0' ? u'1' : u'0';
    return iCode;
  }

  TframOptionsEmail Page;
};

TEST_F(TEmailPageTest, ShowsAndSavesWhatIsStored) {
  EXPECT_EQ(Page.EMail.Edit.Text(), u"otto@b.example");
  EXPECT_EQ(Page.Server.Edit.Text(), u"smtps://mail.b.example:465");
  EXPECT_EQ(Page.User.Edit.Text(), u"otto");
  EXPECT_EQ(Page.EMail.Edit.Name(), u"edtEMail");
  EXPECT_EQ(Page.EMail.Label.Name(), u"lblEMail");
  for (const TPanel* row : {&Page.EMail.Row, &Page.Password.Row, &Page.Trial.Row}) {
    EXPECT_EQ(row->Arrangement(), TArrangement::arRow) << ToUtf8(row->Name());
  }
  Page.From.Edit.EnterText(u"  laden@b.example ");
  Page.User.Edit.EnterText(u"");
  EXPECT_EQ(Complaint(Page), "");
  Page.SaveSettings();
  EXPECT_EQ(Stored(u"EMailFrom"), "laden@b.example");
  EXPECT_EQ(Page.From.Edit.Text(), u"laden@b.example");
  EXPECT_EQ(Stored(u"SmtpUser"), "-");
  EXPECT_THAT(Ways.Calls, IsEmpty());
}

TEST_F(TEmailPageTest, RefusesWhatTheKeysDoNotTakeAndSaysWhere) {
  Page.EMail.Edit.EnterText(u"otto");
  EXPECT_EQ(Complaint(Page), "Die E-Mail-Adresse muss eine wie name@example.org sein.");
  EXPECT_EQ(Control, &Page.EMail.Edit);
  EXPECT_THROW(Page.SaveSettings(), EConvertError);
  EXPECT_EQ(Stored(u"EMail"), "otto@b.example");
  Page.EMail.Edit.EnterText(u"");
  Page.From.Edit.EnterText(u"a b");
  EXPECT_EQ(Complaint(Page), "Der Absender muss eine Adresse wie name@example.org sein.");
  Page.From.Edit.EnterText(u"");
  Page.Server.Edit.EnterText(u"https://mail.example");
  EXPECT_THAT(Complaint(Page),
              HasSubstr("Der Postausgang muss mit smtps:// oder smtp:// beginnen"));
  EXPECT_EQ(Control, &Page.Server.Edit);
}

TEST_F(TEmailPageTest, ThePasswordIsNeverShownAndLeftAloneUnlessTheUserSaysSo) {
  Ways.Secrets[u"Communication/SmtpPassword"] = u"geheim";
  Page.LoadSettings();
  EXPECT_TRUE(Page.Password.Edit.Password());
  EXPECT_EQ(Page.Password.Edit.Text(), u"");
  EXPECT_EQ(ToUtf8(Page.Password.State.Caption()),
            "Gespeichert im Schlüsselbund. Leer heißt: bleibt, wie es ist.");
  Page.SaveSettings();
  EXPECT_THAT(Ways.Calls, IsEmpty());
  Page.Password.Edit.EnterText(u" neu ");
  EXPECT_EQ(ToUtf8(Page.Password.State.Caption()), "Wird beim Speichern übernommen.");
  Page.SaveSettings();
  EXPECT_THAT(Ways.Calls, ElementsAre("keep SmtpPassword  neu "));
  EXPECT_EQ(Page.Password.Edit.Text(), u"");
  EXPECT_FALSE(File.HasKey(u"Communication", u"SmtpPassword"));
}

TEST_F(TEmailPageTest, ThePasswordGoesWhenTheUserRemovesIt) {
  EXPECT_EQ(Page.Password.State.Caption(), u"Nicht gespeichert.");
  EXPECT_FALSE(Page.Password.Remove.Click());
  Ways.Secrets[u"Communication/SmtpPassword"] = u"geheim";
  Page.LoadSettings();
  Page.Password.Edit.EnterText(u"x");
  EXPECT_TRUE(Page.Password.Remove.Click());
  EXPECT_EQ(Page.Password.Edit.Text(), u"");
  EXPECT_EQ(ToUtf8(Page.Password.State.Caption()), "Wird beim Speichern entfernt.");
  EXPECT_FALSE(Page.Password.Remove.Enabled());
  Page.SaveSettings();
  EXPECT_THAT(Ways.Calls, ElementsAre("keep SmtpPassword "));
  EXPECT_EQ(Page.Password.State.Caption(), u"Nicht gespeichert.");
}

TEST_F(TEmailPageTest, SaysWhereThePasswordLiesWithoutAKeyring) {
  const TInstalled<ISecretStore> none(&SetSecretStore, nullptr);
  Page.Password.Edit.EnterText(u"geheim");
  Page.SaveSettings();
  EXPECT_EQ(Stored(u"SmtpPassword"), "geheim");
  EXPECT_THAT(ToUtf8(Page.Password.State.Caption()),
              HasSubstr("in der Einstellungsdatei, die nur Sie lesen können"));
}

TEST_F(TEmailPageTest, APasswordThatCanBeKeptNowhereIsTold) {
  Ways.SecretFailure = u"Kein Platz";
  Page.Password.Edit.EnterText(u"geheim");
  EXPECT_EQ(Failure([&] { Page.SaveSettings(); }), "Kein Platz");
  EXPECT_EQ(Page.Password.Edit.Text(), u"geheim");
}

TEST_F(TEmailPageTest, TheCodeConfirmsTheAddress) {
  EXPECT_EQ(Confirmed(), "Noch nicht bestätigt: Vorher gehen keine Erinnerungen dorthin.");
  const TString code = SendCode();
  EXPECT_EQ(Window.FocusedControl(), &Page.edtCode);
  Forms.ExpectMessage(u"Die Adresse ist bestätigt. Erinnerungen per E-Mail gehen jetzt dorthin.");
  Page.edtCode.EnterText(code);
  EXPECT_TRUE(Page.edtCode.PressKey(cKeyReturn));
  EXPECT_EQ(Stored(u"EMailConfirmed"), "1");
  EXPECT_EQ(Confirmed(), "Bestätigt: Erinnerungen gehen an diese Adresse.");
  EXPECT_EQ(Page.edtCode.Text(), u"");
  EXPECT_FALSE(Page.btnSendCode.CanUse());
  EXPECT_FALSE(Page.btnConfirm.CanUse());
  EXPECT_EQ(Changes, 2);  // with the code that was asked for
}

TEST_F(TEmailPageTest, OtherKeysInTheCodeAreTheFields) {
  EXPECT_FALSE(Page.edtCode.PressKey(u'1'));
}

TEST_F(TEmailPageTest, AnotherAddressIsNotConfirmed) {
  TIniFileSectionCommunication().SetEMailConfirmed();
  Page.LoadSettings();
  EXPECT_EQ(Confirmed(), "Bestätigt: Erinnerungen gehen an diese Adresse.");
  Page.EMail.Edit.EnterText(u"eva@b.example");
  EXPECT_EQ(Confirmed(), "Noch nicht bestätigt: Vorher gehen keine Erinnerungen dorthin.");
  EXPECT_TRUE(Page.btnSendCode.CanUse());
  EXPECT_FALSE(Page.btnConfirm.CanUse());  // the code, if any, was for the other one
  Page.SaveSettings();
  EXPECT_EQ(Stored(u"EMailConfirmed"), "-");
  EXPECT_TRUE(Page.btnConfirm.CanUse());
  Page.EMail.Edit.EnterText(u"");
  EXPECT_EQ(Confirmed(), "Ohne Adresse gibt es keine Erinnerungen per E-Mail.");
  EXPECT_FALSE(Page.btnSendCode.CanUse());
}

TEST_F(TEmailPageTest, WrongCodesAreToldWithTheTriesThatAreLeft) {
  EXPECT_EQ(Confirm(u"12345678"),
            "Für diese Adresse gibt es keinen Code. Lassen Sie zuerst einen schicken.");
  const TString code = SendCode();
  EXPECT_EQ(Confirm(Wrong(code)), "Der Code stimmt nicht. Sie haben noch 4 Versuche.");
  Confirm(Wrong(code));
  Confirm(Wrong(code));
  EXPECT_EQ(Confirm(Wrong(code)), "Der Code stimmt nicht. Sie haben noch einen Versuch.");
  EXPECT_EQ(Confirm(Wrong(code)),
            "Der Code stimmt nicht, oder es waren schon 5 falsche davor. Er gilt nicht mehr. "
            "Lassen Sie einen neuen schicken.");
  EXPECT_EQ(Stored(u"EMailConfirmed"), "-");
}

TEST_F(TEmailPageTest, ACodeGoesOutOfDate) {
  const TString code = SendCode();
  Clock.Advance(25 * TDateTime::cMsPerHour);
  EXPECT_EQ(Confirm(code),
            "Der Code ist älter als 24 Stunden und gilt nicht mehr. Lassen Sie einen neuen "
            "schicken.");
}

TEST_F(TEmailPageTest, ACodeThatDoesNotGoOutIsTold) {
  Ways.Failure = u"kein Netz";
  EXPECT_EQ(Failure([&] { Page.btnSendCode.Click(); }),
            "Der Code konnte nicht an otto@b.example geschickt werden: kein Netz");
}

TEST_F(TEmailPageTest, NothingIsSentWhileThePageIsWrong) {
  Page.EMail.Edit.EnterText(u"otto");
  for (TButton* button : {&Page.btnSendCode, &Page.Trial.Button}) {
    Window.SetFocusedControl(button);
    Forms.ExpectMessage(u"Die E-Mail-Adresse muss eine wie name@example.org sein.");
    button->Click();
    EXPECT_EQ(Window.FocusedControl(), &Page.EMail.Edit);
  }
  EXPECT_THAT(Ways.Calls, IsEmpty());
}

TEST_F(TEmailPageTest, TheTrialSavesThePageAndSends) {
  Page.EMail.Edit.EnterText(u"eva@b.example");
  Forms.ExpectMessage(u"Der Postausgang hat die E-Mail an eva@b.example angenommen.");
  Page.Trial.Button.Click();
  EXPECT_EQ(Stored(u"EMail"), "eva@b.example");
  EXPECT_EQ(Changes, 1);
  EXPECT_THAT(Ways.Calls, ElementsAre("mail eva@b.example: Kaufkobolde 7.0 - Test"));
  EXPECT_EQ(Ways.Mail.SenderAddress, u"eva@b.example");
  EXPECT_EQ(ToUtf8(Ways.Mail.Body),
            "Der Versand von E-Mails funktioniert.\r\n\r\nGesendet am 20.11.2026, 18:30:00 mit "
            "Kaufkobolde 7.0");
}

TEST_F(TEmailPageTest, ATrialThatFailsIsTold) {
  Ways.Failure = u"kein Netz";
  EXPECT_EQ(Failure([&] { Page.Trial.Button.Click(); }),
            "Die E-Mail wurde nicht verschickt: kein Netz");
  Page.EMail.Edit.EnterText(u"");
  EXPECT_EQ(Failure([&] { Page.Trial.Button.Click(); }),
            "Es ist noch keine E-Mail-Adresse eingestellt.");
}

class TSmsPageTest : public TOptionsTest {
 protected:
  TSmsPageTest() {
    Set(u"SMS", u"+4915112345678");
    Show(Page);
  }
  static constexpr char16_t cQuestion[] =
      u"Jetzt eine SMS an +4915112345678 schicken? Das kann Geld kosten.";
  TframOptionsSms Page;
};

TEST_F(TSmsPageTest, EditsNumberServiceAndToken) {
  EXPECT_EQ(Page.Number.Edit.Text(), u"+4915112345678");
  Page.Service.Edit.EnterText(u"https://sms.example/send");
  Page.Token.Edit.EnterText(u"t");
  EXPECT_EQ(Complaint(Page), "");
  Page.SaveSettings();
  EXPECT_EQ(Stored(u"SmsUrl"), "https://sms.example/send");
  EXPECT_THAT(Ways.Calls, ElementsAre("keep SmsToken t"));
  Page.Number.Edit.EnterText(u"zuhause");
  EXPECT_EQ(Complaint(Page), "Die Rufnummer muss eine wie +4915112345678 sein.");
  Page.Number.Edit.EnterText(u"");
  Page.Service.Edit.EnterText(u"sms.example");
  EXPECT_THAT(Complaint(Page), HasSubstr("Die Adresse des SMS-Dienstes muss mit https://"));
}

TEST_F(TSmsPageTest, ATrialCostsMoneyAndIsAskedFor) {
  Forms.ExpectQuestion(cQuestion, false);
  Page.Trial.Button.Click();
  EXPECT_THAT(Ways.Calls, IsEmpty());
  Forms.ExpectQuestion(cQuestion, true);
  Forms.ExpectMessage(u"Der SMS-Dienst hat die SMS an +4915112345678 angenommen.");
  Page.Trial.Button.Click();
  EXPECT_THAT(Ways.Calls,
              ElementsAre("sms +4915112345678: Kaufkobolde 7.0 - Test at 2026-11-20T18:30:00"));
}

TEST_F(TSmsPageTest, ATrialThatFailsIsTold) {
  Ways.Failure = u"kein Guthaben";
  Forms.ExpectQuestion(cQuestion, true);
  EXPECT_EQ(Failure([&] { Page.Trial.Button.Click(); }),
            "Die SMS wurde nicht verschickt: (4) kein Guthaben");
  Page.Number.Edit.EnterText(u"");
  EXPECT_EQ(Failure([&] { Page.Trial.Button.Click(); }),
            "Es ist noch keine Rufnummer eingestellt.");
  Page.Number.Edit.EnterText(u"zuhause");
  Forms.ExpectMessage(u"Die Rufnummer muss eine wie +4915112345678 sein.");
  Page.Trial.Button.Click();
}

class TCalendarPageTest : public TOptionsTest {
 protected:
  TCalendarPageTest() {
    Set(u"CalendarUrl", u"https://dav.example/otto/");
    Show(Page);
  }
  TframOptionsCalendar Page;
};

TEST_F(TCalendarPageTest, EditsAddressFolderAndLogin) {
  EXPECT_EQ(Page.Url.Edit.Text(), u"https://dav.example/otto/");
  Page.Folder.Edit.EnterText(u"/home/otto/../otto/termine");
  Page.User.Edit.EnterText(u"otto");
  Page.Password.Edit.EnterText(u"p");
  EXPECT_EQ(Complaint(Page), "");
  Page.SaveSettings();
  EXPECT_EQ(Stored(u"CalendarFolder"), "/home/otto/termine");
  EXPECT_EQ(Stored(u"CalendarUser"), "otto");
  EXPECT_THAT(Ways.Calls, ElementsAre("keep CalendarPassword p"));
  Page.Url.Edit.EnterText(u"dav.example");
  Forms.ExpectMessage(
      u"Die Adresse des Kalenders muss mit https:// oder http:// beginnen, ohne Benutzer und "
      u"Kennwort darin.");
  Page.Trial.Button.Click();
  EXPECT_EQ(Ways.Calls.size(), 1u);
}

TEST_F(TCalendarPageTest, ATrialEntersAnAppointmentAndDeletesIt) {
  Forms.ExpectMessage(
      u"Ein Termin wurde eingetragen und wieder gelöscht. Der Kalender funktioniert.");
  Page.Trial.Button.Click();
  EXPECT_THAT(Ways.Calls,
              ElementsAre("enter Kaufkobolde 7.0 at 2026-11-20T18:45:00 01", "delete id-1"));
}

TEST_F(TCalendarPageTest, ATrialThatFailsIsTold) {
  Ways.Deletes = false;
  EXPECT_EQ(Failure([&] { Page.Trial.Button.Click(); }),
            "Der Termin ließ sich nicht wieder löschen: Er ist nicht mehr da. Bitte sehen Sie im "
            "Kalender nach.");
  Ways.DeleteFailure = u"kein Netz";
  EXPECT_THAT(Failure([&] { Page.Trial.Button.Click(); }), HasSubstr("löschen: kein Netz. Bitte"));
  Ways.Failure = u"abgelehnt";
  EXPECT_EQ(Failure([&] { Page.Trial.Button.Click(); }), "abgelehnt");
}

/// A host that takes pop-ups over, if it can.
class TPopUpHost : public TInterfaced<IApplication> {
 public:
  void SectionClosed() override {}
  bool ShowNotificationWindow(TForm* iForm) override {
    if (Takes) Form.reset(iForm);
    return Takes;
  }
  bool Takes = true;
  std::unique_ptr<TForm> Form;
};

class TNotificationPageTest : public TOptionsTest {
 protected:
  TIntf<TPopUpHost> Host = MakeIntf<TPopUpHost>();
  TframOptionsNotification Page{TIntf<IApplication>(Host)};
};

TEST_F(TNotificationPageTest, EditsThePositionAndKeepsANumberThatMeansTheSame) {
  Set(u"NotifierPosition", u"7");
  Show(Page);
  EXPECT_EQ(Page.cmbxPosition.ItemIndex(), 2);
  EXPECT_FALSE(Page.cmbxPosition.Editable());
  Page.SaveSettings();
  EXPECT_EQ(Stored(u"NotifierPosition"), "7");
  Page.cmbxPosition.Select(1);
  Page.SaveSettings();
  EXPECT_EQ(Stored(u"NotifierPosition"), "1");
  Page.cmbxPosition.Select(0);
  Page.SaveSettings();
  EXPECT_EQ(Stored(u"NotifierPosition"), "-");
  Set(u"NotifierPosition", u"-1");
  Page.LoadSettings();
  EXPECT_EQ(Page.cmbxPosition.ItemIndex(), 2);
}

TEST_F(TNotificationPageTest, TheTrialShowsWhatIsChosen) {
  Show(Page);
  Page.btnTestWindow.Click();
  const TGuid first = Ways.Shown.Id;
  Page.cmbxPosition.Select(1);
  Page.btnTestWindow.Click();
  EXPECT_NE(Ways.Shown.Id, first) << "it is another one";
  EXPECT_EQ(Ways.Shown.Title, u"Erinnerung");
  EXPECT_THAT(Ways.Calls,
              ElementsAre("show 0 Kaufkobolde 7.0 - Test", "show 1 Kaufkobolde 7.0 - Test"));
  EXPECT_EQ(Stored(u"NotifierPosition"), "1");
  EXPECT_FALSE(Host->Form);
  Page.cmbxPosition.Select(2);
  Page.btnTestWindow.Click();
  ASSERT_TRUE(Host->Form);
  EXPECT_NE(dynamic_cast<TfrmMSNPopUpBase*>(Host->Form.get()), nullptr);
  EXPECT_EQ(Host->Form->Caption(), u"Erinnerung");
  EXPECT_EQ(Ways.Calls.size(), 2u);
}

TEST_F(TNotificationPageTest, AHostThatShowsNoPopUpIsTold) {
  Set(u"NotifierPosition", u"2");
  Show(Page);
  Host->Takes = false;
  EXPECT_EQ(Failure([&] { Page.btnTestWindow.Click(); }), "Das Fenster ließ sich nicht zeigen.");
}

TEST_F(TNotificationPageTest, WithoutAnApplicationTheNotifierShowsEverything) {
  Set(u"NotifierPosition", u"2");
  TframOptionsNotification page{TIntf<IApplication>()};
  Show(page);
  page.btnTestWindow.Click();
  EXPECT_THAT(Ways.Calls, ElementsAre("show 2 Kaufkobolde 7.0 - Test"));
}

TEST_F(TNotificationPageTest, TheSoundIsTheWatchLists) {
  Show(Page);
  const TString file = Folder.File(u"ton.wav");
  File.WriteString(u"Watchlist", u"SoundFile", file);
  EXPECT_EQ(Failure([&] { Page.btnTestSound.Click(); }),
            "Die Tondatei gibt es nicht: " + ToUtf8(file));
  Folder.Write(u"ton.wav", "x");
  Page.btnTestSound.Click();
  EXPECT_THAT(Ways.Calls, ElementsAre("play " + ToUtf8(file)));
  Ways.PlayError = EACCES;
  EXPECT_EQ(Failure([&] { Page.btnTestSound.Click(); }),
            "Der Ton " + ToUtf8(file) + " wurde nicht abgespielt: Zugriff verweigert");
}

}  // namespace
}  // namespace kk
