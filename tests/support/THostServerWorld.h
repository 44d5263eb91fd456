#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <string_view>

#include "host/program/THostClient.h"
#include "host/program/THostServer.h"
#include "tests/support/TLogRecorder.h"
#include "tests/support/TTempFolder.h"
#include "tests/support/TTestMainLoop.h"
#include "tests/support/TurnUntil.h"

namespace kk {

/// The process that stays, as far as its callers see it.
class THostServerWorld {
 public:
  std::shared_ptr<THostPeer> NextCaller() {
    std::shared_ptr<THostPeer> peer;
    EXPECT_TRUE(TurnUntil(Loop, [&] { return (peer = Server->TakeCaller()) != nullptr; }));
    return peer;
  }
  /// The same, and his turn has come.
  std::shared_ptr<THostPeer> BeginNext() {
    auto peer = NextCaller();
    EXPECT_TRUE(peer->Begin());
    return peer;
  }
  THostSocket Connect() const { return THostSocket::Connect(FromUtf8(Data.Path())); }
  static void SendText(const THostSocket& iSocket, std::string_view iText) {
    while (!iText.empty()) {
      size_t sent = 0;
      if (iSocket.Send(iText, sent) == THostSocket::TEnd::Closed) return;
      iText.remove_prefix(sent);
    }
  }
  static std::string CallLine() {
    return THostClient::First(THostMessage::TKind::Call, {u"list"}).ToLine();
  }

  TLogRecorder Log;
  TTestMainLoop Loop;
  TTempFolder Data;
  int Calls = 0;  ///< how often the loop was told of callers
  std::unique_ptr<THostServer> Server =
      std::make_unique<THostServer>(FromUtf8(Data.Path()), Loop, [this] { ++Calls; });
};

}  // namespace kk
