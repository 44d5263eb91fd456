#include "host/delivery/TEmailConfirmation.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cerrno>
#include <set>

#include "host/base/Exception.h"
#include "host/common/TFileHelper.h"
#include "host/common/TIniFileSectionCommunication.h"
#include "host/common/TKKIniFile.h"
#include "tests/support/TTempFolder.h"
#include "tests/support/TTestClock.h"

namespace kk {
namespace {

using testing::HasSubstr;
using testing::MatchesRegex;
using testing::Not;
using TOutcome = TEmailConfirmation::TOutcome;
using enum TEmailConfirmation::TOutcome;

constexpr int64_t cDay = TDateTime::cMsPerDay;

class TEmailConfirmationTest : public testing::Test {
 protected:
  TEmailConfirmationTest() : Before(SetIniFile(&File)) { Section().SetEMail(u"a@b.example"); }
  ~TEmailConfirmationTest() override { SetIniFile(Before); }

  static TIniFileSectionCommunication Section() { return {}; }
  static bool IsConfirmed() {
    TString address;
    return Section().GetEMail(address);
  }
  /// Answers the code that was mailed.
  TString Request() {
    TEmailConfirmation::Request([this](const TEmail& iEmail, TString&) {
      Mail = iEmail;
      return true;
    });
    const size_t start = Mail.Body.find(u"    ") + 4;
    return Mail.Body.substr(start, Mail.Body.find(u'\r', start) - start);
  }
  TOutcome Check(TStringView iCode) { return TEmailConfirmation::Check(iCode, TriesLeft); }
  static TString Wrong(TString iCode) {
    iCode[0] = iCode[0] == u'0' ? u'1' : u'0';
    return iCode;
  }

  TTempFolder Folder;
  TKKIniFile File{Folder.File(u"test.ini")};
  TKKIniFile* Before;
  TTestClock Clock;
  TEmail Mail;
  int TriesLeft = -1;
};

TEST_F(TEmailConfirmationTest, TheMailHoldsTheCodeAndWhatToDo) {
  const TString code = Request();
  EXPECT_THAT(ToUtf8(code), MatchesRegex("[0-9]{8}"));
  EXPECT_EQ(Mail.Subject, u"Kaufkobolde 7.0 - Bestätigung Ihrer E-Mail-Adresse");
  EXPECT_EQ(Mail.Recipient, u"a@b.example");
  EXPECT_EQ(Mail.SenderAddress, u"a@b.example");
  EXPECT_EQ(Mail.SenderName, u"Kaufkobolde");
  EXPECT_THAT(ToUtf8(Mail.Body),
              HasSubstr("kaufkobolde-cli settings confirm-email " + ToUtf8(code) + "\r\n"));
  EXPECT_THAT(ToUtf8(Mail.Body), HasSubstr("gilt 24 Stunden"));
}

TEST_F(TEmailConfirmationTest, TheSenderIsTheOneOfTheSettings) {
  File.WriteString(u"Communication", u"EMailFrom", u"absender@b.example");
  Request();
  EXPECT_EQ(Mail.SenderAddress, u"absender@b.example");
}

TEST_F(TEmailConfirmationTest, TheRightCodeConfirmsTheAddressOnce) {
  const TString code = Request();
  EXPECT_FALSE(IsConfirmed());
  EXPECT_EQ(Check(code), eoConfirmed);
  EXPECT_TRUE(IsConfirmed());
  EXPECT_EQ(Section().GetEMailCode(), u"");
  EXPECT_EQ(Check(code), eoNone);
}

TEST_F(TEmailConfirmationTest, BlanksAndHyphensInTheCodeDoNotCount) {
  const TString code = Request();
  EXPECT_EQ(Check(u" " + code.substr(0, 4) + u" - " + code.substr(4) + u"\n"), eoConfirmed);
}

TEST_F(TEmailConfirmationTest, TheFileHoldsASaltedHashAndNotTheCode) {
  const TString code = Request();
  const std::string first = ToUtf8(Section().GetEMailCode());
  EXPECT_THAT(Folder.Read(u"test.ini"), Not(HasSubstr(ToUtf8(code))));
  EXPECT_THAT(first, MatchesRegex("\\$y\\$[^;]+;[0-9]+;0"));
  Request();
  EXPECT_NE(ToUtf8(Section().GetEMailCode()).substr(0, 30), first.substr(0, 30));
}

TEST_F(TEmailConfirmationTest, CodesDifferFromEachOther) {
  std::set<TString> codes;
  for (int i = 0; i < 5; ++i) codes.insert(Request());
  EXPECT_EQ(codes.size(), 5u);
}

TEST_F(TEmailConfirmationTest, AfterFiveWrongTriesTheRightCodeIsTooLate) {
  const TString code = Request();
  for (int left = 4; left > 0; --left) {
    EXPECT_EQ(Check(Wrong(code)), eoWrong);
    EXPECT_EQ(TriesLeft, left);
  }
  EXPECT_EQ(Check(Wrong(code)), eoTooMany);
  EXPECT_EQ(Check(code), eoTooMany);
  EXPECT_FALSE(IsConfirmed());
  EXPECT_EQ(Check(Request()), eoConfirmed);
}

TEST_F(TEmailConfirmationTest, TheFifthTryMayStillBeTheRightOne) {
  const TString code = Request();
  for (int i = 0; i < 4; ++i) Check(Wrong(code));
  EXPECT_EQ(Check(code), eoConfirmed);
}

TEST_F(TEmailConfirmationTest, EmptyAndEndlessCodesAreWrong) {
  const TString code = Request();
  EXPECT_EQ(Check(u""), eoWrong);
  EXPECT_EQ(Check(TString(100000, u'1')), eoWrong);
  EXPECT_EQ(Check(code + u"1"), eoWrong);
}

TEST_F(TEmailConfirmationTest, ACodeIsGoodForADay) {
  const TString code = Request();
  Clock.Advance(cDay + 1);
  EXPECT_EQ(Check(code), eoExpired);
  Clock.Advance(-1);
  EXPECT_EQ(Check(code), eoConfirmed);
}

TEST_F(TEmailConfirmationTest, ACodeFromFarInTheFutureIsExpired) {
  const TString code = Request();
  Clock.Advance(-cDay - 1);
  EXPECT_EQ(Check(code), eoExpired);
  Clock.Advance(1);
  EXPECT_EQ(Check(code), eoConfirmed);
}

TEST_F(TEmailConfirmationTest, ACodeIsGoodForItsAddressAlone) {
  const TString code = Request();
  Section().SetEMail(u"c@d.example");
  EXPECT_EQ(Check(code), eoNone);
  Section().SetEMail(u"a@b.example");
  const TString second = Request();
  File.WriteString(u"Communication", u"EMail", u"c@d.example");
  EXPECT_EQ(Check(second), eoWrong);
}

TEST_F(TEmailConfirmationTest, AnotherAddressIsNotConfirmedAndTheSameStays) {
  Check(Request());
  Section().SetEMail(u"a@b.example");
  EXPECT_TRUE(IsConfirmed());
  Section().SetEMail(u"A@b.example");
  EXPECT_FALSE(IsConfirmed());
}

TEST_F(TEmailConfirmationTest, ALaterCodeTakesThePlaceOfTheOneBefore) {
  const TString first = Request();
  const TString second = Request();
  EXPECT_EQ(Check(first), eoWrong);
  EXPECT_EQ(Check(second), eoConfirmed);
}

TEST_F(TEmailConfirmationTest, AMailThatDoesNotGoOutLeavesTheCodeBefore) {
  const TString code = Request();
  try {
    TEmailConfirmation::Request([](const TEmail&, TString& oError) {
      oError = u"Der Server schweigt";
      return false;
    });
    ADD_FAILURE() << "sent";
  } catch (const Exception& e) {
    EXPECT_EQ(e.Message(),
              u"Der Code konnte nicht an a@b.example geschickt werden: Der Server schweigt");
  }
  EXPECT_EQ(Check(code), eoConfirmed);
}

TEST_F(TEmailConfirmationTest, WithoutAnAddressNothingIsMailed) {
  Section().SetEMail(u"");
  EXPECT_THROW(Request(), Exception);
  EXPECT_EQ(Mail.Recipient, u"");
}

TEST_F(TEmailConfirmationTest, WithoutACodeThereIsNothingToCheck) {
  EXPECT_EQ(Check(u"12345678"), eoNone);
}

TEST_F(TEmailConfirmationTest, WhatTheFileHoldsInsteadOfACodeConfirmsNothing) {
  const TString moment = IntToStr(LocalToUtcMs(Now()));
  for (const TString& text :
       std::vector<TString>{u"unfug", u";1;0", u"$y$;x;0", u"$y$j9T$a$b;" + moment + u";-1",
                            u"a;-1;0", u"a;9223372036854775808;0", u"a;" + moment + u";0;0"}) {
    Section().SetEMailCode(text);
    EXPECT_EQ(Check(u"12345678"), eoNone) << ToUtf8(text);
  }
  for (const TString& hash : std::vector<TString>{u"*0", u"*1", u"a", u"$y$", u"$9$x$y"}) {
    Section().SetEMailCode(hash + u";" + moment + u";0");
    EXPECT_EQ(Check(u"12345678"), eoWrong) << ToUtf8(hash);
  }
}

TEST_F(TEmailConfirmationTest, ATryThatCannotBeCountedIsNone) {
  const TString code = Request();
  const TString stored = Section().GetEMailCode();
  class TReadOnly : public IFileLayer {
   public:
    int Open(const char*, int, unsigned) override {
      errno = EROFS;
      return -1;
    }
    long Write(int, const void*, size_t) override { return -1; }
    int Flush(int) override { return -1; }
    int Close(int) override { return -1; }
    int Rename(const char*, const char*) override { return -1; }
    int Unlink(const char*) override { return -1; }
  } readOnly;
  IFileLayer* const before = SetFileLayer(&readOnly);
  EXPECT_THROW(Check(code), Exception);
  SetFileLayer(before);
  EXPECT_FALSE(IsConfirmed());
  EXPECT_EQ(Section().GetEMailCode(), stored);
}

}  // namespace
}  // namespace kk
