#include "reminders/RemindSms.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "TRemindWorld.h"
#include "host/common/TKKCommonSms.h"
#include "tests/support/TScriptedFormHost.h"

namespace kk {
namespace {

using testing::ElementsAre;

class TFakeSms : public ISmsSender {
 public:
  TFakeSms() : FBefore(SetSmsSender(this)) {}
  ~TFakeSms() override { SetSmsSender(FBefore); }

  bool Send(TStringView iMessage, TStringView iNumber, TDateTime iWhen, TSMSResult& oResult,
            TString& oErrorText) override {
    Message = iMessage;
    Number = iNumber;
    When = iWhen;
    if (!Raises.empty()) throw Exception(Raises);
    oResult = Result;
    oErrorText = Error;
    return Result == TSMSResult::srOk;
  }

  TString Message, Number, Error, Raises;
  TDateTime When;
  TSMSResult Result = TSMSResult::srOk;

 private:
  ISmsSender* FBefore;
};

class SendRemindSmsTest : public testing::Test, public TRemindWorld {
 protected:
  SendRemindSmsTest() { Set(u"SMS", u"+49170123"); }

  // One error box with an OK button and this text, and the same text in the log.
  void ExpectFailure(TStringView iText) {
    FUser.Expect<TfrmMessageDlg>([text = TString(iText)](TfrmMessageDlg& box) {
      EXPECT_EQ(box.Text(), text);
      EXPECT_EQ(box.Type(), TMsgDlgType::mtError);
      EXPECT_EQ(box.pnlButtons.Children().size(), 1u);
      box.Button(TMsgDlgBtn::mbOK)->Click();
    });
    EXPECT_FALSE(SendRemindSms(u"Uhr", FTime));
    EXPECT_THAT(Log.Lines(), ElementsAre("error Watchlist-Reminder (SMS): " + ToUtf8(iText)));
    EXPECT_EQ(FUser.ShownCount(), 1);
  }

  TTestMainLoop FLoop;
  TScriptedFormHost FUser;
  TFakeSms FSms;
  const TDateTime FTime = EncodeDateTime({2026, 11, 21, 8, 0, 0, 0});
};

TEST_F(SendRemindSmsTest, GivesTheServiceMessageNumberAndTheTimeOfTheReminder) {
  EXPECT_TRUE(SendRemindSms(u"Uhr für 5 €", FTime));
  EXPECT_EQ(FSms.Message, u"Kaufkobolde 7.0 - Erinnerung an Uhr für 5 €");
  EXPECT_EQ(FSms.Number, u"+49170123");
  EXPECT_EQ(FSms.When, FTime);
  EXPECT_THAT(Log.Lines(),
              ElementsAre("info Watchlist-Reminder (SMS): SMS erfolgreich für +49170123 (" +
                          ToUtf8(DateTimeToStr(FTime)) + ") eingerichtet."));
  EXPECT_EQ(FUser.ShownCount(), 0);
}

TEST_F(SendRemindSmsTest, ARefusalIsLoggedAndShownWithTheOrdinalOfTheResult) {
  FSms.Result = TSMSResult::srInvalidNumber;
  FSms.Error = u"Die Nummer ist ungültig";
  ExpectFailure(
      u"SMS konnte nicht eingerichtet werden. Fehlermeldung: (3) Die Nummer ist ungültig");
}

TEST_F(SendRemindSmsTest, AnExceptionIsLoggedAndShownWithMinusOneAndItsMessageInOneLine) {
  FSms.Raises = u"Leitung\r\nunterbrochen";
  ExpectFailure(u"SMS konnte nicht eingerichtet werden. Fehlermeldung: (-1) Leitung unterbrochen");
}

TEST_F(SendRemindSmsTest, WithoutAServiceItFails) {
  SetSmsSender(nullptr);
  ExpectFailure(
      u"SMS konnte nicht eingerichtet werden. Fehlermeldung: (1) Es ist kein Versand von SMS "
      u"eingerichtet");
}

TEST_F(SendRemindSmsTest, ATextOfTheServiceWithSeveralLinesIsOneLineOfTheLog) {
  FSms.Result = TSMSResult::srRejected;
  FSms.Error = u"eins\nzwei";
  ExpectFailure(u"SMS konnte nicht eingerichtet werden. Fehlermeldung: (5) eins zwei");
}

}  // namespace
}  // namespace kk
