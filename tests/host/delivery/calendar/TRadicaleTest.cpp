#include "TRadicale.h"

#include <csignal>

#include "TCalendarTest.h"
#include "TIcalReader.h"

namespace kk {
namespace {

class TRadicaleTest : public TCalendarTest {
 protected:
  TRadicaleTest() {
    FWorld.Set(u"CalendarUrl", FRadicale.Address());
    FWorld.Set(u"CalendarUser", u"anna");
    FWorld.Set(u"CalendarPassword", u"geheim");
  }
  TRadicale FRadicale;
};

// Radicale behind a line on which so many answers are lost.
class TLossyLine {
 public:
  TLossyLine(const TRadicale& iRadicale, int iLost)
      : FProcess(
            TServerProcess::Python("host/delivery/calendar/servers/dropping_proxy.py",
                                   {std::to_string(iRadicale.Port()), std::to_string(iLost)})) {
    FAddress = "http://127.0.0.1:" + FProcess.WaitForLine("port ").substr(5) + "/anna/kal/";
  }
  const std::string& Address() const { return FAddress; }

 private:
  TServerProcess FProcess;
  std::string FAddress;
};

TEST_F(TRadicaleTest, KeepsWhatIsEnteredAndLetsItBeDeletedByItsId) {
  const TString entryId = Add(u"Kaufkobolde 7.0", u"Lampe\r\n5,00 €; \"neu\"", u"Erinnerung");
  ASSERT_EQ(FRadicale.Stored().size(), 1u);
  const TIcalReader reader(FRadicale.Stored()[0]);
  EXPECT_EQ(reader.Outline(), cOutline);
  EXPECT_EQ(reader.Summary(), "Kaufkobolde 7.0");
  EXPECT_EQ(reader.Description(), "Lampe\n5,00 €; \"neu\"");
  EXPECT_EQ(reader.Location(), "Erinnerung");
  EXPECT_THAT(reader.Value(ICAL_DTSTART_PROPERTY), testing::EndsWith("Z"));
  EXPECT_EQ(reader.AlarmValue(ICAL_TRIGGER_PROPERTY), "PT0S");
  EXPECT_EQ(ToUtf8(entryId), FRadicale.Address() + reader.Uid() + ".ics");
  const TString other = Add();
  EXPECT_TRUE(Delete(entryId));
  EXPECT_EQ(FRadicale.Stored().size(), 1u);
  EXPECT_FALSE(Delete(entryId));
  EXPECT_TRUE(Delete(other));
  EXPECT_TRUE(FRadicale.Stored().empty());
}

TEST_F(TRadicaleTest, RefusesAWrongPassword) {
  const TString entryId = Add();
  FWorld.Set(u"CalendarPassword", u"falsch");
  const std::string wrong = "Benutzer oder Kennwort für den Kalender sind falsch";
  EXPECT_EQ(AddFailure(), wrong);
  EXPECT_EQ(DeleteFailure(entryId), wrong);
  FWorld.Set(u"CalendarUser", u"");
  FWorld.Set(u"CalendarPassword", u"");
  EXPECT_EQ(AddFailure(), wrong);
  EXPECT_EQ(FRadicale.Stored().size(), 1u);
}

TEST_F(TRadicaleTest, HasNoCalendarUnderAnotherName) {
  FWorld.Set(u"CalendarUrl", FRadicale.Address("anna/nichts/"));
  EXPECT_EQ(AddFailure(), "Unter der eingestellten Adresse gibt es keinen Kalender");
  EXPECT_FALSE(Delete(FromUtf8(FRadicale.Address("anna/nichts/")) + cSomeFile));
  FWorld.Set(u"CalendarUrl", FRadicale.Address("otto/kal/"));
  EXPECT_EQ(AddFailure(), "Der Benutzer darf in diesem Kalender nichts ändern");
}

TEST_F(TRadicaleTest, AnswerThatIsLostOnTheWayMakesNoSecondAppointment) {
  const TLossyLine line(FRadicale, 1);
  FWorld.Set(u"CalendarUrl", line.Address());
  const TString entryId = Add();  // the second attempt finds what the first has brought
  EXPECT_EQ(FRadicale.Stored().size(), 1u);
  EXPECT_TRUE(Delete(entryId));
}

TEST_F(TRadicaleTest, LostAnswerToADeleteCountsAsDeleted) {
  const TString entryId = Add();
  const TLossyLine line(FRadicale, 1);
  FWorld.Set(u"CalendarUrl", line.Address());
  const TString behind = entryId.substr(FRadicale.Address().size());
  EXPECT_TRUE(Delete(FromUtf8(line.Address()) + behind));
  EXPECT_TRUE(FRadicale.Stored().empty());
}

TEST_F(TRadicaleTest, FrozenServerEndsAtTheLimitAndASecondTryMakesNoSecondAppointment) {
  TCalendarFactory impatient(300);
  SetOutlookFactory(&impatient);
  FRadicale.Process().Signal(SIGSTOP);
  EXPECT_EQ(AddFailure(), "Der Kalender hat nicht rechtzeitig geantwortet");
  EXPECT_EQ(DeleteFailure(FromUtf8(FRadicale.Address()) + cSomeFile),
            "Der Kalender hat nicht rechtzeitig geantwortet");
  FRadicale.Process().Signal(SIGCONT);
  bool entered = false;
  for (int tries = 0; !entered && tries < 100; ++tries) entered = AddFailure() == "(no failure)";
  EXPECT_TRUE(entered);
  EXPECT_EQ(FRadicale.Stored().size(), 1u);
  SetOutlookFactory(&FFactory);
}

TEST_F(TRadicaleTest, StoresNoPropertyThatAHostileTextWouldMake) {
  const TString nul(1, u'\0');
  const TString breakOut = u"a\r\nEND:VEVENT\r\nBEGIN:VEVENT\r\nATTACH:file:///etc/passwd\r\n";
  int count = 0;
  for (const TString& text :
       {breakOut, u"a" + nul + u"b" + nul, TString(u"\"';,:\\n\\"), TString(u"\r\n \r\n\tx"),
        TString(u"a\u0085b\u2028c\u001B[2J"),
        TString(u"a") + TString(1, u'\xD800') + u"\uFFFE\uFFFF", TString(1 << 20, u'ä'),
        TString(1 << 19, u';'), u"x" + TString(1 << 20, u'\n') + u"x"}) {
    const TString entryId = Add(text, text, text);
    ++count;
    ASSERT_EQ(FRadicale.Stored().size(), 1u) << count;
    const TIcalReader reader(FRadicale.Stored()[0]);
    EXPECT_EQ(reader.Outline(), cOutline) << count;
    EXPECT_TRUE(Delete(entryId)) << count;
  }
}

TEST_F(TRadicaleTest, ServerForWhichNobodyVouchesGetsNoPassword) {
  TRadicale stranger(true);
  FWorld.Set(u"CalendarUrl", stranger.Address());
  EXPECT_EQ(AddFailure(),
            "Der Kalender ist nicht erreichbar: Das Zertifikat des Servers ist ungültig");
  EXPECT_TRUE(stranger.Stored().empty());
  EXPECT_EQ(stranger.Process().Output().find("PUT request"), std::string::npos);
}

}  // namespace
}  // namespace kk
