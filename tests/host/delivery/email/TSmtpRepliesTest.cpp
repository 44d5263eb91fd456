#include "host/delivery/email/TSmtpReplies.h"

#include <gtest/gtest.h>

namespace kk {
namespace {

TSmtpReplies After(std::initializer_list<std::string_view> iLines) {
  TSmtpReplies replies;
  for (const std::string_view line : iLines) replies.Add(line);
  return replies;
}

TEST(TSmtpReplies, TheFirstAnswerBehindTheGoAheadIsTheOneToTheMessage) {
  EXPECT_TRUE(After({"354 go\r\n", "250 taken\r\n"}).IsAccepted());
  EXPECT_TRUE(After({"354 go\r\n", "250-ta\r\n", "250 ken\r\n"}).IsAccepted());
  EXPECT_TRUE(After({"354 go\r\n", "250 taken\r\n", "500 to QUIT\r\n"}).IsAccepted());
  EXPECT_FALSE(After({"354 go\r\n", "451 later\r\n", "250 ok\r\n"}).IsAccepted());
  EXPECT_TRUE(After({"354 go\r\n", "451 later\r\n"}).IsFinal());
}

TEST(TSmtpReplies, NothingElseIsTheAnswerToTheMessage) {
  EXPECT_FALSE(After({"220 hi\r\n", "250 ok\r\n", "250 ok\r\n"}).IsFinal());
  EXPECT_FALSE(After({"354 go\r\n"}).IsFinal());
  EXPECT_FALSE(After({"354 go\r\n", "250-unfinished\r\n"}).IsFinal());
  EXPECT_FALSE(After({"354 go\r\n", "no reply\r\n", "2\r\n"}).IsFinal());
  EXPECT_FALSE(After({}).IsAccepted());
}

TEST(TSmtpReplies, TellsTheLastRefusalInOneCleanLine) {
  const TSmtpReplies replies =
      After({"220 hi\r\n", "550-5.1.1 No\x1B[2J\r\n", "550 such user\r\n"});
  EXPECT_EQ(replies.RefusalCode(), 550);
  EXPECT_EQ(replies.Refusal(), u"550 5.1.1 No[2J such user");
  EXPECT_EQ(After({"550\r\n"}).Refusal(), u"550");
}

TEST(TSmtpReplies, WhatIsNoRefusalIsNotToldAsOne) {
  EXPECT_EQ(After({"220 hi\r\n", "399 a\r\n", "600 b\r\n"}).RefusalCode(), 0);
  EXPECT_EQ(After({"550 no\r\n", "221 bye\r\n"}).RefusalCode(), 550);
  EXPECT_EQ(After({"550 no\r\n", "221 bye\r\n"}).Refusal(), u"550 no");
  EXPECT_EQ(After({"550 no\r\n", "450 later\r\n"}).Refusal(), u"450 later");
}

TEST(TSmtpReplies, ShowsNoMoreThanAPart) {
  TSmtpReplies replies;
  for (int i = 0; i < 1000; ++i) replies.Add("550-" + std::string(1000, 'x') + "\r\n");
  replies.Add("550 end\r\n");
  EXPECT_EQ(replies.Refusal(), u"550 " + TString(196, u'x') + u"…");
}

}  // namespace
}  // namespace kk
