#include "apps/cli/TCliConfirm.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "TFakeConsole.h"
#include "host/base/Exception.h"
#include "host/base/TInstalled.h"
#include "host/common/TIniFileSectionCommunication.h"
#include "host/common/TKKCommonEmail.h"
#include "host/common/TKKIniFile.h"
#include "tests/support/TTempFolder.h"
#include "tests/support/TTestClock.h"

namespace kk {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

class TFakeMail : public IEmailSender {
 public:
  bool Send(const TEmail&, TString&) override {
    ADD_FAILURE() << "a code is of no use later";
    return false;
  }
  bool SendNow(const TEmail& iEmail, TString& oError) override {
    Mails.push_back(iEmail);
    oError = Failure;
    return Failure.empty();
  }
  /// Of the last mail.
  TString Code() const {
    constexpr TStringView cBefore = u"confirm-email ";
    const size_t start = Mails.back().Body.find(cBefore) + cBefore.size();
    return Mails.back().Body.substr(start, 8);
  }
  TString Failure;
  std::vector<TEmail> Mails;
};

class TCliConfirmTest : public testing::Test {
 protected:
  TCliConfirmTest() { Section().SetEMail(u"a@b.example"); }

  static TIniFileSectionCommunication Section() { return {}; }
  std::string Refusal(const std::function<void()>& iCall) {
    try {
      iCall();
    } catch (const Exception& e) {
      return ToUtf8(e.Message());
    }
    return "accepted";
  }
  std::string Check(TStringView iCode) {
    return Refusal([&] { Confirm.Check(iCode); });
  }
  std::string Request() {
    return Refusal([&] { Confirm.Request(); });
  }

  TTempFolder Folder;
  TKKIniFile File{Folder.File(u"test.ini")};
  TInstalled<TKKIniFile> FileInstalled{&SetIniFile, &File};
  TFakeMail Mail;
  TInstalled<IEmailSender> MailInstalled{&SetEmailSender, &Mail};
  TTestClock Clock;
  TFakeConsole Console;
  TCliConfirm Confirm{Console};
};

constexpr char cRequest[] = "\"kaufkobolde-cli settings confirm-email\" schickt einen";

TEST_F(TCliConfirmTest, ACodeIsMailedAndItsUseTold) {
  EXPECT_EQ(Request(), "accepted");
  EXPECT_EQ(Mail.Mails.at(0).Recipient, u"a@b.example");
  EXPECT_THAT(
      Console.Printed(),
      ElementsAre("Ein Code ist an a@b.example unterwegs. Er gilt 24 Stunden. Geben Sie ihn "
                  "so ein:",
                  "  kaufkobolde-cli settings confirm-email CODE"));
}

TEST_F(TCliConfirmTest, TheCodeConfirmsTheAddress) {
  Request();
  EXPECT_EQ(Check(Mail.Code()), "accepted");
  EXPECT_EQ(Console.Printed().back(),
            "a@b.example ist bestätigt. Erinnerungen per E-Mail gehen jetzt dorthin.");
  TString address;
  EXPECT_TRUE(Section().GetEMail(address));
}

TEST_F(TCliConfirmTest, AConfirmedAddressNeedsNoCode) {
  Section().SetEMailConfirmed();
  EXPECT_EQ(Request(), "accepted");
  EXPECT_EQ(Check(u"12345678"), "accepted");
  EXPECT_THAT(Mail.Mails, IsEmpty());
  EXPECT_THAT(Console.Printed(), testing::Each("a@b.example ist schon bestätigt."));
}

TEST_F(TCliConfirmTest, WithoutAnAddressTheWayToOneIsTold) {
  Section().SetEMail(u"");
  const std::string text =
      "Es ist noch keine E-Mail-Adresse eingestellt. Das geht mit \"kaufkobolde-cli settings set "
      "Communication EMail ADRESSE\".";
  EXPECT_EQ(Request(), text);
  EXPECT_EQ(Check(u"12345678"), text);
}

TEST_F(TCliConfirmTest, AMailThatDoesNotGoOutIsTold) {
  Mail.Failure = u"Der Server schweigt";
  EXPECT_EQ(Request(),
            "Der Code konnte nicht an a@b.example geschickt werden: Der Server schweigt");
  EXPECT_THAT(Console.Printed(), IsEmpty());
}

TEST_F(TCliConfirmTest, EachWrongCodeTellsHowManyTriesAreLeft) {
  Request();
  EXPECT_EQ(Check(u"x"), "Der Code stimmt nicht. Sie haben noch 4 Versuche.");
  EXPECT_EQ(Check(u"x"), "Der Code stimmt nicht. Sie haben noch 3 Versuche.");
  EXPECT_EQ(Check(u"x"), "Der Code stimmt nicht. Sie haben noch 2 Versuche.");
  EXPECT_EQ(Check(u"x"), "Der Code stimmt nicht. Sie haben noch einen Versuch.");
  const std::string last =
      "Der Code stimmt nicht, oder es waren schon 5 falsche davor. Er gilt nicht mehr. " +
      std::string(cRequest) + " neuen.";
  EXPECT_EQ(Check(u"x"), last);
  EXPECT_EQ(Check(Mail.Code()), last);
}

TEST_F(TCliConfirmTest, WithoutACodeAndWithAnOldOneTheNextStepIsTold) {
  EXPECT_EQ(Check(u"12345678"),
            "Für a@b.example gibt es noch keinen Code. " + std::string(cRequest) + ".");
  Request();
  Clock.Advance(25 * TDateTime::cMsPerHour);
  EXPECT_EQ(Check(Mail.Code()), "Der Code ist älter als 24 Stunden und gilt nicht mehr. " +
                                    std::string(cRequest) + " neuen.");
}

}  // namespace
}  // namespace kk
