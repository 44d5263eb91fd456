#include "host/program/THostMessage.h"

#include <gtest/gtest.h>

#include "tests/support/TLogRecorder.h"

namespace kk {
namespace {

TEST(THostMessage, ReadsBackWhatItWrites) {
  THostMessage call;
  call.Kind = THostMessage::TKind::Call;
  call.Words = {u"note", u"Lampe", u"eins\nzwei", u"\u00e4\U0001F600"};
  call.Folder = u"/tmp";
  call.IsInteractive = true;
  const std::string line = call.ToLine();
  EXPECT_EQ(line.find('\n'), line.size() - 1);
  const auto read = THostMessage::FromLine(line.substr(0, line.size() - 1));
  ASSERT_TRUE(read);
  EXPECT_EQ(read->Kind, THostMessage::TKind::Call);
  EXPECT_EQ(read->Words, call.Words);
  EXPECT_EQ(read->Folder, u"/tmp");
  EXPECT_TRUE(read->IsInteractive);
  EXPECT_EQ(read->Version, THostMessage::cVersion);
}

TEST(THostMessage, EveryKindReadsBack) {
  TLogRecorder log;
  for (int kind = 0; kind <= static_cast<int>(THostMessage::TKind::Exit); ++kind) {
    THostMessage message;
    message.Kind = static_cast<THostMessage::TKind>(kind);
    message.Text = u"Text";
    message.ExitCode = 2;
    const std::string line = message.ToLine();
    const auto read = THostMessage::FromLine(line);
    ASSERT_TRUE(read) << line;
    EXPECT_EQ(read->Kind, message.Kind);
    EXPECT_EQ(read->Text, u"Text");
  }
  EXPECT_FALSE(THostMessage::FromLine("{\"kind\":7}"));
  EXPECT_FALSE(THostMessage::FromLine(""));
}

}  // namespace
}  // namespace kk
