#include "TMailWorld.h"
#include "host/delivery/email/TSmtpClient.h"

namespace kk {
namespace {

using enum TSmtpOutcome;

class TSmtpTransferTest : public TMailWorld {
 protected:
  TSmtpResult Send(const TMailServer& iServer) {
    SetServer(iServer.Port());
    return TSmtpClient().Send(TMailMessage::Build(Mail()), {});
  }
};

// The yes to the farewell is none to a message that never went out.
TEST_F(TSmtpTransferTest, AServerThatAsksForTheMessageTooEarlyHasNotTakenIt) {
  for (const std::string stage : {"MAIL", "RCPT"}) {
    TMailServer server({"--refuse", stage + ":354 go on"});
    EXPECT_EQ(Send(server).Outcome, soForNow) << stage;
    EXPECT_THAT(server.All("command"), testing::Contains("QUIT"));
    EXPECT_TRUE(server.All("message").empty());
  }
}

}  // namespace
}  // namespace kk
