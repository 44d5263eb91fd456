#include "host/delivery/email/TMailMessage.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <regex>

#include "host/base/Exception.h"
#include "host/delivery/email/TMailFile.h"
#include "tests/support/TTestClock.h"

namespace kk {
namespace {

using testing::HasSubstr;

TEmail Mail() {
  return {u"Betreff", u"Guten Tag", u"to@example.org", u"from@mail.example.org", u"Kaufkobolde"};
}

TString RefusalOf(const TEmail& iEmail) {
  try {
    TMailMessage::Build(iEmail);
  } catch (const Exception& e) {
    return e.Message();
  }
  return {};
}

TEST(TMailMessage, HasEveryHeaderOnceAndItsBody) {
  const TTestClock clock;
  const TMailMessage message = TMailMessage::Build(Mail());
  EXPECT_EQ(message.Sender, "from@mail.example.org");
  EXPECT_EQ(message.Recipient, "to@example.org");
  EXPECT_EQ(message.Text.find("From: Kaufkobolde <from@mail.example.org>\r\n"
                              "To: to@example.org\r\n"
                              "Subject: Betreff\r\n"
                              "Date: Fri, 20 Nov 2026 18:30:00 "),
            0u);
  EXPECT_THAT(message.Text, HasSubstr("\r\nMessage-ID: " + message.MessageId +
                                      "\r\nMIME-Version: 1.0\r\n"
                                      "Content-Type: text/plain; charset=utf-8\r\n"
                                      "Content-Transfer-Encoding: quoted-printable\r\n"
                                      "Auto-Submitted: auto-generated\r\n\r\nGuten Tag\r\n"));
  EXPECT_TRUE(message.IsWhole());
}

TEST(TMailMessage, HasAnIdOfItsOwnInTheDomainOfTheSender) {
  const std::regex form("<[0-9a-f]{32}@mail\\.example\\.org>");
  const std::string one = TMailMessage::Build(Mail()).MessageId;
  const std::string other = TMailMessage::Build(Mail()).MessageId;
  EXPECT_TRUE(std::regex_match(one, form)) << one;
  EXPECT_NE(one, other);
}

TEST(TMailMessage, TheNameOfTheSenderIsEncodedFoldedOrAbsent) {
  TEmail mail = Mail();
  mail.SenderName = u"Müller, \"X\" <a@b>";
  EXPECT_THAT(TMailMessage::Build(mail).Text,
              HasSubstr("From: =?UTF-8?B?TcO8bGxlciwgIlgiIDxhQGI+?= <from@mail.example.org>\r\n"));
  mail.SenderName = TString(60, u'n');
  EXPECT_THAT(TMailMessage::Build(mail).Text,
              HasSubstr("From: " + std::string(60, 'n') + "\r\n <from@mail.example.org>\r\n"));
  mail.SenderName = u" \r\n";
  EXPECT_THAT(TMailMessage::Build(mail).Text, HasSubstr("From: from@mail.example.org\r\n"));
}

TEST(TMailMessage, IsNotBuiltForWhatIsNotOneAddress) {
  TEmail mail = Mail();
  mail.Recipient = u"a@b.de, c@d.de";
  EXPECT_EQ(RefusalOf(mail),
            u"Die Adresse des Empfängers kann nicht verwendet werden: \"a@b.de, c@d.de\" ist nicht "
            u"eine einzelne, gültige E-Mail-Adresse");
  mail = Mail();
  mail.SenderAddress.clear();
  EXPECT_EQ(RefusalOf(mail),
            u"Die Adresse des Absenders kann nicht verwendet werden: Es ist keine E-Mail-Adresse "
            u"angegeben");
}

TEST(TMailMessage, BoundsSubjectNameAndBody) {
  TEmail mail = Mail();
  mail.Subject = TString(1 << 20, u'ü');
  mail.SenderName = TString(1 << 20, u'ü');
  const std::string text = TMailMessage::Build(mail).Text;
  EXPECT_LT(text.size(), 4000u);
  mail.Body = TString(TMailMessage::cMaxBody, u'€');
  EXPECT_TRUE(TMailMessage::Build(mail).IsWhole());
  mail.Body += u'€';
  EXPECT_EQ(RefusalOf(mail), u"Der Text der E-Mail ist zu lang");
}

TEST(TMailMessage, IsNotWholeInAnyOtherForm) {
  const TMailMessage good = TMailMessage::Build(Mail());
  const auto isWhole = [&](const std::function<void(TMailMessage&)>& iChange) {
    TMailMessage message = good;
    iChange(message);
    return message.IsWhole();
  };
  EXPECT_TRUE(isWhole([](TMailMessage&) {}));
  EXPECT_TRUE(isWhole([](TMailMessage& m) { m.Text += "tab\there\r\n"; }));
  EXPECT_TRUE(isWhole([](TMailMessage& m) { m.Text += std::string(998, 'x') + "\r\n"; }));
  EXPECT_FALSE(isWhole([](TMailMessage& m) { m.Text += std::string(999, 'x') + "\r\n"; }));
  EXPECT_FALSE(isWhole([](TMailMessage& m) { m.Sender = "x"; }));
  EXPECT_FALSE(isWhole([](TMailMessage& m) { m.Sender += " "; }));
  EXPECT_FALSE(isWhole([](TMailMessage& m) { m.Recipient += ",a@b"; }));
  EXPECT_FALSE(isWhole([](TMailMessage& m) { m.MessageId = "<other@x>"; }));
  EXPECT_FALSE(isWhole([](TMailMessage& m) { m.MessageId.clear(); }));
  EXPECT_FALSE(isWhole([](TMailMessage& m) { m.Text += "no end"; }));
  EXPECT_FALSE(isWhole([](TMailMessage& m) { m.Text += "bare\nline\r\n"; }));
  EXPECT_FALSE(isWhole([](TMailMessage& m) { m.Text += "bare\rline\r\n"; }));
  EXPECT_FALSE(isWhole([](TMailMessage& m) { m.Text += "end\r"; }));
  EXPECT_FALSE(isWhole([](TMailMessage& m) { m.Text += "\x1B\r\n"; }));
  EXPECT_FALSE(isWhole([](TMailMessage& m) { m.Text += "ä\r\n"; }));
  EXPECT_FALSE(isWhole([](TMailMessage& m) { m.Text.clear(); }));
}

TEST(TMailFile, ReadsBackWhatItWrote) {
  TMailFile file{TMailMessage::Build(Mail()), 12, 34, 5, u"weil\r\nes €"};
  const TMailFile read = TMailFile::Read(file.Write());
  EXPECT_EQ(read.Message.Sender, file.Message.Sender);
  EXPECT_EQ(read.Message.Recipient, file.Message.Recipient);
  EXPECT_EQ(read.Message.MessageId, file.Message.MessageId);
  EXPECT_EQ(read.Message.Text, file.Message.Text);
  EXPECT_EQ(read.FirstMs, 12);
  EXPECT_EQ(read.NextMs, 34);
  EXPECT_EQ(read.Attempts, 5);
  EXPECT_EQ(read.Reason, u"weiles €");
}

TEST(TMailFile, RefusesEveryBeginningOfAFile) {
  const std::string bytes = TMailFile{TMailMessage::Build(Mail()), 12, 34, 5, u"x"}.Write();
  for (size_t size = 0; size < bytes.size(); ++size) {
    EXPECT_THROW(TMailFile::Read(bytes.substr(0, size)), Exception) << size;
  }
  EXPECT_THROW(TMailFile::Read(bytes + "x"), Exception);
}

TEST(TMailFile, RefusesOtherValues) {
  const std::string bytes = TMailFile{TMailMessage::Build(Mail()), 12, 34, 5, u"x"}.Write();
  const auto with = [&](const std::string& iOld, const std::string& iNew) {
    std::string changed = bytes;
    changed.replace(changed.find(iOld), iOld.size(), iNew);
    return changed;
  };
  EXPECT_NO_THROW(TMailFile::Read(with("attempts: 5", "attempts: 7")));
  for (const std::string attempts : {"0", "-1", "x", "5 ", "", "99999999999", "9e9"}) {
    EXPECT_THROW(TMailFile::Read(with("attempts: 5", "attempts: " + attempts)), Exception)
        << attempts;
  }
  EXPECT_THROW(TMailFile::Read(with("kaufkobolde-mail 1", "kaufkobolde-mail 2")), Exception);
  EXPECT_THROW(TMailFile::Read(with("first: 12", "first: 99999999999999999999")), Exception);
  EXPECT_THROW(TMailFile::Read(with("recipient: to@", "recipient: to@x,b@")), Exception);
}

}  // namespace
}  // namespace kk
