#include "reminders/TRemindDelivery.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "TRemindWorld.h"

namespace kk {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

// A log that lets the test act when a certain line is written.
class TActingLog : public ILogSink {
 public:
  TActingLog(std::string iLine, TDuring iDo)
      : FLine(std::move(iLine)), FDo(std::move(iDo)), FBefore(SetLogSink(this)) {}
  ~TActingLog() override { SetLogSink(FBefore); }

  void Write(TLogLevel iLevel, TStringView iSender, TStringView iText) override {
    FBefore->Write(iLevel, iSender, iText);
    if (ToUtf8(iSender) + ": " + ToUtf8(iText) == FLine) FDo();
  }

 private:
  std::string FLine;
  TDuring FDo;
  ILogSink* FBefore;
};

// The delivery on the test's own thread, which is the main thread as well.
class TDelivering : public TRemindDelivery {
 public:
  explicit TDelivering(const TIntf<IApplication>& iApplication,
                       TNotifyProcessRemindItem iOnProcessItem = {})
      : TRemindDelivery(iApplication, iOnProcessItem) {}
  using TRemindDelivery::ProcessElapsedItem;
  using TRemindDelivery::ProcessElapsedItems;
  using TRemindDelivery::RequestTermination;
};

class TRemindDeliveryTest : public testing::Test, public TRemindWorld {
 protected:
  template <class... Details>
  void Deliver(std::unique_ptr<Details>... iDetails) {
    FItem = Reminder(std::move(iDetails)...);
    FDelivery.ProcessElapsedItem(*FItem);
  }
  // The log without the line that every reminder begins with.
  TLines LogOfTheStep() {
    TLines lines = Log.Lines();
    EXPECT_EQ(lines.at(0), "info Watchlist-Reminder: Melde Erinnerung");
    lines.erase(lines.begin());
    return lines;
  }
  void Processed(TObject* iSender, TRemindItem& iItem) {
    EXPECT_EQ(iSender, &FDelivery);
    EXPECT_EQ(iItem.Id(), FItem->Id());
    Witness.Note("view");
    Act(FDuringView);
  }

  TTestMainLoop FLoop;
  TDuring FDuringView;
  std::unique_ptr<TRemindItem> FItem;
  TDelivering FDelivery{Host, TNotifyProcessRemindItem::Of<&TRemindDeliveryTest::Processed>(this)};
};

TEST_F(TRemindDeliveryTest, TellsTheSectionAndThenTakesTheDetailsInTheirOrder) {
  Deliver(EMail(), Sound(), Window());
  EXPECT_THAT(Witness.Notes(),
              ElementsAre("view", "mail ich@example.org", "sound a.wav", "notifier Uhr"));
}

TEST_F(TRemindDeliveryTest, SoundPlaysFirstIfItStandsFirst) {
  Deliver(Sound(), Window());
  EXPECT_THAT(Witness.Notes(), ElementsAre("view", "sound a.wav", "notifier Uhr"));
}

TEST_F(TRemindDeliveryTest, LogsEachReminderBeforeAnythingElse) {
  FDuringView = [this] {
    EXPECT_THAT(Log.Lines(), ElementsAre("info Watchlist-Reminder: Melde Erinnerung"));
  };
  Deliver(Sound());
  EXPECT_THAT(Witness.Notes(), ElementsAre("view", "sound a.wav"));
}

TEST_F(TRemindDeliveryTest, FollowsTheDetailsAndNotTheKinds) {
  FItem = Reminder(Sound());
  FItem->SetRemindTypes({rtEmail, rtWindow});
  FDelivery.ProcessElapsedItem(*FItem);
  EXPECT_THAT(Witness.Notes(), ElementsAre("view", "sound a.wav"));
}

TEST_F(TRemindDeliveryTest, ASoundThatWasLeftAmongTheDetailsStillPlays) {
  FItem = Reminder(Sound(), Window());
  FItem->SetRemindTypes({rtWindow});
  FDelivery.ProcessElapsedItem(*FItem);
  EXPECT_THAT(Witness.Notes(), ElementsAre("view", "sound a.wav", "notifier Uhr"));
}

TEST_F(TRemindDeliveryTest, WithoutAListenerDeliveryTakesPlace) {
  TDelivering delivery(Host);
  const auto item = Reminder(Sound());
  delivery.ProcessElapsedItem(*item);
  EXPECT_THAT(Witness.Notes(), ElementsAre("sound a.wav"));
}

TEST_F(TRemindDeliveryTest, AFailureOfTheListenerIsDroppedAndDeliveryTakesPlace) {
  FDuringView = [] { throw Exception(u"kaputt"); };
  Deliver(Sound());
  EXPECT_THAT(Witness.Notes(), ElementsAre("view", "sound a.wav"));
  EXPECT_THAT(LogOfTheStep(), ElementsAre("info Watchlist-Reminder (Sound): Melde..."));
}

TEST_F(TRemindDeliveryTest, DetailsOfAnUnknownClassAreNamedInTheLogAndTheNextIsDelivered) {
  Deliver(std::make_unique<TRemindDetailsPigeon>(), Sound());
  EXPECT_THAT(LogOfTheStep(), ElementsAre("error Watchlist-Reminder: Unbekannte Erinnerungsart: "
                                          "TRemindDetailsPigeon",
                                          "info Watchlist-Reminder (Sound): Melde..."));
}

TEST_F(TRemindDeliveryTest, AnExceptionInOneStepEndsThatStepOnlyAndIsNotLogged) {
  // The body of the mail can't be made; the log's line is the last thing before that.
  const TActingLog log("Watchlist-Reminder (E-Mail): Melde...", [] { throw Exception(u"kaputt"); });
  Deliver(EMail(), Sound());
  EXPECT_THAT(Witness.Notes(), ElementsAre("view", "sound a.wav"));
  EXPECT_THAT(LogOfTheStep(), ElementsAre("info Watchlist-Reminder (E-Mail): Melde...",
                                          "info Watchlist-Reminder (Sound): Melde..."));
  EXPECT_THAT(Log.DebugLines(), ElementsAre("debug TThreadRemind.ProcessElapsedItem: kaputt"));
}

TEST_F(TRemindDeliveryTest, TerminationBetweenTwoDetailsStopsBeforeTheSecond) {
  SoundOutput.During = [this] { FDelivery.RequestTermination(); };
  Deliver(Sound(), Window());
  EXPECT_THAT(Witness.Notes(), ElementsAre("view", "sound a.wav"));
}

TEST_F(TRemindDeliveryTest, TerminationBeforeTheFirstDetailLeavesAllUndelivered) {
  FDuringView = [this] { FDelivery.RequestTermination(); };
  Deliver(Sound(), Window());
  EXPECT_THAT(Witness.Notes(), ElementsAre("view"));
}

TEST_F(TRemindDeliveryTest, DetailsThatComeMeanwhileAreNotCounted) {
  SoundOutput.During = [this] { FItem->LstDetails().Add(EMail()); };
  Deliver(Sound());
  EXPECT_THAT(Witness.Notes(), ElementsAre("view", "sound a.wav"));
}

TEST_F(TRemindDeliveryTest, AListIsDeliveredAndDeletedFromItsFront) {
  TDelivering delivery(Host);
  TLstRemindItem list(true);
  list.Add(Reminder(Sound()));
  list.Add(Reminder(Window(u"zweite")));
  delivery.ProcessElapsedItems(list);
  EXPECT_EQ(list.GetCount(), 0);
  EXPECT_THAT(Witness.Notes(), ElementsAre("sound a.wav", "notifier zweite"));
}

TEST_F(TRemindDeliveryTest, AListStopsAtATerminationAndKeepsTheRest) {
  SoundOutput.During = [this] { FDelivery.RequestTermination(); };
  TLstRemindItem list(true);
  FItem = Reminder();
  auto first = Reminder(Sound());
  first->SetId(FItem->Id());
  list.Add(std::move(first));
  list.Add(Reminder(Window()));
  FDelivery.ProcessElapsedItems(list);
  EXPECT_EQ(list.GetCount(), 1);
  EXPECT_THAT(Witness.Notes(), ElementsAre("view", "sound a.wav"));
}

TEST_F(TRemindDeliveryTest, AFailureInsideAListDeletesTheReminderAndGoesOn) {
  TDelivering delivery(Host);
  TLstRemindItem list(true);
  list.Add(Reminder(Sound()));
  list.Add(Reminder(Window()));
  int times = 0;
  const TActingLog log("Watchlist-Reminder: Melde Erinnerung", [&] {
    if (++times == 1) throw Exception(u"kaputt");
  });
  delivery.ProcessElapsedItems(list);
  EXPECT_EQ(list.GetCount(), 0);
  EXPECT_THAT(Witness.Notes(), ElementsAre("notifier Uhr"));
}

// Sound.

TEST_F(TRemindDeliveryTest, ASoundThatPlaysWritesOneLine) {
  Deliver(Sound());
  EXPECT_THAT(LogOfTheStep(), ElementsAre("info Watchlist-Reminder (Sound): Melde..."));
}

TEST_F(TRemindDeliveryTest, ADeletedSoundFileIsOneErrorAndTheWindowIsStillShown) {
  Deliver(MissingSound(), Window());
  EXPECT_THAT(Witness.Notes(), ElementsAre("view", "notifier Uhr"));
  EXPECT_THAT(LogOfTheStep(),
              ElementsAre("info Watchlist-Reminder (Sound): Melde...",
                          "error Watchlist-Reminder (Sound): Datei nicht gefunden: /nowhere/b.wav",
                          "info Watchlist-Reminder (Window): Melde..."));
}

TEST_F(TRemindDeliveryTest, ASoundThatCantBePlayedIsReportedWithTheMachinesError) {
  SoundOutput.Error = EACCES;
  Deliver(Sound(), Window());
  EXPECT_THAT(LogOfTheStep(),
              ElementsAre("info Watchlist-Reminder (Sound): Melde...",
                          "exception Watchlist-Reminder (Sound): Zugriff verweigert",
                          "info Watchlist-Reminder (Window): Melde..."));
}

TEST_F(TRemindDeliveryTest, AnExceptionOfTheSoundOutputIsReportedInOneLine) {
  SoundOutput.During = [] { throw Exception(u"Server\r\nfehlt"); };
  Deliver(Sound(), Window());
  EXPECT_THAT(LogOfTheStep(), ElementsAre("info Watchlist-Reminder (Sound): Melde...",
                                          "exception Watchlist-Reminder (Sound): Server fehlt",
                                          "info Watchlist-Reminder (Window): Melde..."));
  EXPECT_THAT(Witness.Notes(), ElementsAre("view", "sound a.wav", "notifier Uhr"));
}

// Window.

TEST_F(TRemindDeliveryTest, PositionsZeroAndOneGoToTheNotifierWithoutTheText) {
  for (const char16_t* position : {u"0", u"1"}) {
    Set(u"NotifierPosition", position);
    Deliver(Window());
    EXPECT_EQ(static_cast<int>(Notifier.Last.Position), position[0] - u'0');
    EXPECT_EQ(Notifier.Last.Id, FItem->Id());
    EXPECT_EQ(Notifier.Last.Title, u"Erinnerung");
    EXPECT_EQ(Notifier.Last.Link, u"https://shop/1");
    EXPECT_EQ(Notifier.Last.LinkText, u"Jetzt besuchen");
    EXPECT_EQ(Notifier.Last.Text, u"") << "looks like a slip and is required";
    EXPECT_EQ(Notifier.Last.Caption, u"Uhr");
    EXPECT_FALSE(Notifier.Last.OnClick);
  }
}

TEST_F(TRemindDeliveryTest, OfTwoWindowsTheFirstIsShownTwice) {
  Deliver(Window(u"erste"), Window(u"zweite"));
  EXPECT_THAT(Witness.Notes(), ElementsAre("view", "notifier erste", "notifier erste"))
      << "looks like a slip and is required";
}

TEST_F(TRemindDeliveryTest, AnyOtherPositionIsThePopUpWindow) {
  for (const char16_t* position : {u"2", u"7", u"-1", u"3"}) {
    Set(u"NotifierPosition", position);
    Deliver(Window());
    EXPECT_EQ(Witness.Notes().back(), "window Uhr|endet bald|https://shop/1") << ToUtf8(position);
  }
}

TEST_F(TRemindDeliveryTest, AWindowThatTheHostTakesOverIsTheHosts) {
  Set(u"NotifierPosition", u"2");
  Deliver(Window());
  ASSERT_NE(Host->Form, nullptr);
  EXPECT_EQ(Host->Form->Owner(), nullptr);
  EXPECT_EQ(dynamic_cast<TfrmNotification&>(*Host->Form).lblCaption.Caption(), u"Uhr");
  EXPECT_THAT(LogOfTheStep(), ElementsAre("info Watchlist-Reminder (Window): Melde..."));
}

// Notes when the control that it stands in goes.
class TGoing : public IControlObserver {
 public:
  void ControlChanged(TControl& /*iControl*/) override {}
  void ControlGone(TControl& /*iControl*/) override { Gone = true; }
  bool Gone = false;
};

class TRefusingHost : public TInterfaced<IApplication> {
 public:
  void SectionClosed() override {}
  bool ShowNotificationWindow(TForm* iForm) override {
    iForm->SetObserver(&Going);
    if (Raises) throw Exception(u"kein\nBildschirm");
    return false;
  }
  TGoing Going;
  bool Raises = false;
};

TEST_F(TRemindDeliveryTest, AWindowThatTheHostRefusesIsFreedHere) {
  Set(u"NotifierPosition", u"2");
  const auto host = MakeIntf<TRefusingHost>();
  TDelivering delivery(host);
  const auto item = Reminder(Window());
  delivery.ProcessElapsedItem(*item);
  EXPECT_TRUE(host->Going.Gone);
  EXPECT_THAT(LogOfTheStep(), ElementsAre("info Watchlist-Reminder (Window): Melde..."));
}

TEST_F(TRemindDeliveryTest, AHostThatFailsIsLoggedInOneLineAndTheWindowIsFreedHere) {
  Set(u"NotifierPosition", u"2");
  const auto host = MakeIntf<TRefusingHost>();
  host->Raises = true;
  TDelivering delivery(host);
  const auto item = Reminder(Window(), Sound());
  delivery.ProcessElapsedItem(*item);
  EXPECT_TRUE(host->Going.Gone);
  EXPECT_THAT(LogOfTheStep(),
              ElementsAre("info Watchlist-Reminder (Window): Melde...",
                          "error Watchlist-Reminder (Window): Fenster konnte nicht angezeigt "
                          "werden. Fehlermeldung: kein Bildschirm",
                          "info Watchlist-Reminder (Sound): Melde..."));
}

TEST_F(TRemindDeliveryTest, ANotifierThatFailsIsLogged) {
  Notifier.During = [] { throw Exception(u"D-Bus\r\nschweigt"); };
  Deliver(Window());
  EXPECT_THAT(LogOfTheStep(),
              ElementsAre("info Watchlist-Reminder (Window): Melde...",
                          "error Watchlist-Reminder (Window): Fenster konnte nicht angezeigt "
                          "werden. Fehlermeldung: D-Bus schweigt"));
}

TEST_F(TRemindDeliveryTest, WithoutAnApplicationNoWindowIsShown) {
  TDelivering delivery({});
  const auto item = Reminder(Window());
  delivery.ProcessElapsedItem(*item);
  EXPECT_THAT(LogOfTheStep(),
              ElementsAre("info Watchlist-Reminder (Window): Melde...",
                          "error Watchlist-Reminder (Window): Kein Zugriff auf IApplication"));
  EXPECT_THAT(Witness.Notes(), IsEmpty());
}

TEST_F(TRemindDeliveryTest, WithoutACurrentItemNoWindowIsShown) {
  // A delivery inside of a delivery leaves no current item behind.
  FDuringView = [this] {
    FDuringView = nullptr;
    auto inner = Reminder();
    inner->SetId(FItem->Id());
    FDelivery.ProcessElapsedItem(*inner);
  };
  Deliver(Window());
  EXPECT_EQ(Log.Lines().back(), "error Watchlist-Reminder (Window): Kein gültiges Item vorhanden");
}

TEST_F(TRemindDeliveryTest, WithoutAWindowDetailNoWindowIsShown) {
  const TActingLog log("Watchlist-Reminder (Window): Melde...",
                       [this] { FItem->LstDetails().Clear(); });
  Deliver(Window());
  EXPECT_THAT(LogOfTheStep(),
              ElementsAre("info Watchlist-Reminder (Window): Melde...",
                          "error Watchlist-Reminder (Window): Keine Detaildaten vorhanden"));
}

// E-mail.

TEST_F(TRemindDeliveryTest, AMailGoesToTheAddressOfThisMoment) {
  Set(u"EMailFrom", u"kobold@example.org");
  Deliver(EMail());
  EXPECT_EQ(Mail.Last.Subject, u"Kaufkobolde 7.0 - Erinnerung an Uhr");
  EXPECT_EQ(Mail.Last.Body,
            u"Sie wollten an Uhr erinnert werden.\r\nendet bald\r\n\r\nhttps://shop/1\r\n\r\n"
            u"Gesendet am " +
                DateTimeToStr(Clock.Now()) +
                u" mit Kaufkobolde 7.0\r\n\r\nAlle Angaben ohne Gewähr");
  EXPECT_EQ(Mail.Last.Recipient, u"ich@example.org");
  EXPECT_EQ(Mail.Last.SenderAddress, u"kobold@example.org");
  EXPECT_EQ(Mail.Last.SenderName, u"Kaufkobolde");
  EXPECT_THAT(LogOfTheStep(), ElementsAre("info Watchlist-Reminder (E-Mail): Melde...",
                                          "info Watchlist-Reminder (E-Mail): E-Mail erfolgreich an "
                                          "ich@example.org verschickt."));
  Set(u"EMail", u"neu@example.org");
  Deliver(EMail());
  EXPECT_EQ(Mail.Last.Recipient, u"neu@example.org");
}

TEST_F(TRemindDeliveryTest, TheRecipientIsTheAddressUntrimmed) {
  Set(u"EMail", u" ich@example.org ");
  Deliver(EMail());
  EXPECT_EQ(Mail.Last.Recipient, u" ich@example.org ");
  EXPECT_EQ(Log.Lines().back(),
            "info Watchlist-Reminder (E-Mail): E-Mail erfolgreich an  ich@example.org  "
            "verschickt.");
}

TEST_F(TRemindDeliveryTest, AnUnconfirmedAddressGetsNoMailAndIsNamed) {
  Set(u"EMailConfirmed", u"0");
  Deliver(EMail(), Sound());
  EXPECT_THAT(Witness.Notes(), ElementsAre("view", "sound a.wav"));
  EXPECT_THAT(LogOfTheStep(),
              ElementsAre("info Watchlist-Reminder (E-Mail): Melde...",
                          "error Watchlist-Reminder (E-Mail): E-Mail konnte nicht verschickt "
                          "werden. Empfängeradresse (ich@example.org) nicht freigeschaltet.",
                          "info Watchlist-Reminder (Sound): Melde..."));
}

TEST_F(TRemindDeliveryTest, AnUnconfirmedAddressIsReportedBeforeAnEmptyOne) {
  Set(u"EMail", u"  ");
  Set(u"EMailConfirmed", u"0");
  Deliver(EMail());
  EXPECT_THAT(LogOfTheStep(),
              ElementsAre("info Watchlist-Reminder (E-Mail): Melde...",
                          "error Watchlist-Reminder (E-Mail): E-Mail konnte nicht verschickt "
                          "werden. Empfängeradresse (  ) nicht freigeschaltet."));
}

TEST_F(TRemindDeliveryTest, AnEmptyAddressGetsNoMail) {
  Set(u"EMail", u"  ");
  Deliver(EMail());
  EXPECT_THAT(Witness.Notes(), ElementsAre("view"));
  EXPECT_THAT(LogOfTheStep(),
              ElementsAre("info Watchlist-Reminder (E-Mail): Melde...",
                          "error Watchlist-Reminder (E-Mail): E-Mail konnte nicht verschickt "
                          "werden. Keine gültige Empfängeradresse angegeben."));
}

TEST_F(TRemindDeliveryTest, AMailThatIsRefusedIsLoggedWithTheReasonAndNotSentAgain) {
  Mail.Error = u"550 unbekannt\r\nder Empfänger fehlt";
  Deliver(EMail());
  EXPECT_THAT(Witness.Notes(), ElementsAre("view", "mail ich@example.org"));
  EXPECT_THAT(LogOfTheStep(),
              ElementsAre("info Watchlist-Reminder (E-Mail): Melde...",
                          "error Watchlist-Reminder (E-Mail): E-Mail konnte nicht verschickt "
                          "werden. Fehlermeldung: 550 unbekannt der Empfänger fehlt"));
}

TEST_F(TRemindDeliveryTest, AnExceptionOfTheMailIsLoggedInOneLine) {
  Mail.During = [] { throw Exception(u"Verbindung\nweg"); };
  Deliver(EMail(), Sound());
  EXPECT_THAT(LogOfTheStep(),
              ElementsAre("info Watchlist-Reminder (E-Mail): Melde...",
                          "error Watchlist-Reminder (E-Mail): E-Mail konnte nicht verschickt "
                          "werden. Fehlermeldung: Verbindung weg",
                          "info Watchlist-Reminder (Sound): Melde..."));
}

// SMS and calendar.

TEST_F(TRemindDeliveryTest, SmsAndCalendarRemindByThemselves) {
  Deliver(std::make_unique<TRemindDetailsSMS>(u"Uhr"),
          std::make_unique<TRemindDetailsOutlook>(u"Uhr", u"endet", u"https://shop/1"));
  EXPECT_THAT(Witness.Notes(), ElementsAre("view"));
  EXPECT_THAT(LogOfTheStep(), ElementsAre("info Watchlist-Reminder (SMS): Meldung extern...",
                                          "info Watchlist-Reminder (Outlook): Meldung extern..."));
}

}  // namespace
}  // namespace kk
