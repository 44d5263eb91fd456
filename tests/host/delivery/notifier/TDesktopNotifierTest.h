#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <memory>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "host/common/OpenURL.h"
#include "host/common/TQueueMainLoop.h"
#include "host/delivery/notifier/TDesktopNotifier.h"
#include "tests/support/TLogRecorder.h"
#include "tests/support/TServerProcess.h"
#include "tests/support/TSessionBus.h"

namespace kk {

class TRecordingOpener : public IUrlOpener {
 public:
  bool Open(const std::string& iUrl) override {
    Opened.push_back(iUrl);
    return true;
  }
  std::vector<std::string> Opened;
};

class TClicks : public TObject {
 public:
  void DoClick(TObject* Sender, const TGuid& iId) {
    EXPECT_EQ(Sender, nullptr);
    Ids.push_back(iId);
  }
  std::vector<TGuid> Ids;
};

class TDesktopNotifierTest : public testing::Test {
 protected:
  using TSteady = std::chrono::steady_clock;

  TDesktopNotifierTest()
      : FLoopBefore(SetMainLoop(&FLoop)), FOpenerBefore(SetUrlOpener(&FOpener)) {}
  ~TDesktopNotifierTest() override {
    FNotifier.reset();
    SetUrlOpener(FOpenerBefore);
    SetMainLoop(FLoopBefore);
  }

  void StartService(const std::vector<std::string>& iArguments = {}) {
    StartService(FBus, iArguments);
  }
  void StartService(const TSessionBus& iBus, const std::vector<std::string>& iArguments) {
    FService = std::make_unique<TServerProcess>(
        TServerProcess::Python("host/delivery/notifier/servers/notifications.py", iArguments),
        iBus.Environment());
    FService->WaitForLine("ready");
  }

  void MakeNotifier(std::chrono::milliseconds iLimit = std::chrono::milliseconds(2000),
                    std::chrono::milliseconds iMaxWait = std::chrono::milliseconds(10000)) {
    MakeNotifier({.Address = FBus.Address(), .Limit = iLimit, .MaxWait = iMaxWait});
  }
  void MakeNotifier(const TDesktopNotifierOptions& iOptions) {
    FNotifier = std::make_unique<TDesktopNotifier>(
        [this](const TNotification& iNotification) {
          EXPECT_TRUE(FLoop.IsMainThread());
          FFallen.push_back(ToUtf8(iNotification.Caption));
        },
        iOptions);
  }

  static TNotification Lamp() {
    TNotification notification;
    notification.Id = GuidLiteral("{FC3B5C09-B3C7-43DF-BBFE-DFE2158FFCE2}");
    notification.Title = u"Erinnerung";
    notification.Link = u"https://example.test/lampe?a=1&b=2";
    notification.LinkText = u"Jetzt besuchen";
    notification.Caption = u"Lampe";
    return notification;
  }
  static TNotification Named(TStringView iCaption) {
    TNotification notification = Lamp();
    notification.Id = NewGuid();
    notification.Caption = iCaption;
    return notification;
  }

  void Show(const TNotification& iNotification) {
    const auto begin = TSteady::now();
    FNotifier->Display(iNotification);
    Measure(begin);
  }

  static std::string SocketOf(const TSessionBus& iBus) {
    const std::string address = iBus.Address();
    const size_t begin = address.find('=') + 1;
    return address.substr(begin, address.find(',') - begin);
  }

  // Returns when the service has answered, which a service started with "--act" lets one see.
  void ShowAndWait(const TNotification& iNotification) {
    const size_t before = FOpener.Opened.size();
    Show(iNotification);
    EXPECT_TRUE(RunUntil([&] { return FOpener.Opened.size() > before; }));
    NextCall();
  }

  // What the service was asked to show; the lines before it are passed over.
  nlohmann::json NextCall() {
    const std::string line = FService->WaitForLine("notify ");
    return line.empty() ? nlohmann::json() : nlohmann::json::parse(line.substr(7));
  }

  // Runs the main loop until it holds, or some seconds have passed.
  template <class Condition>
  bool RunUntil(Condition&& iCondition) {
    const auto last = TSteady::now() + std::chrono::seconds(20);
    while (!iCondition() && TSteady::now() < last) {
      FLoop.WaitForMessage(20);
      Turn();
    }
    return iCondition();
  }
  bool WaitForFallback(size_t iCount) {
    return RunUntil([&] { return FFallen.size() >= iCount; });
  }
  void Turn() {
    const auto begin = TSteady::now();
    FLoop.ProcessMessages();
    Measure(begin);
  }
  void Measure(TSteady::time_point iBegin) {
    FLongestTurn = std::max<TSteady::duration>(FLongestTurn, TSteady::now() - iBegin);
  }

  TSessionBus FBus;
  TLogRecorder FLog;
  TQueueMainLoop FLoop;
  TMainLoop* FLoopBefore;
  TRecordingOpener FOpener;
  IUrlOpener* FOpenerBefore;
  TClicks FClicks;
  std::unique_ptr<TServerProcess> FService;
  std::unique_ptr<TDesktopNotifier> FNotifier;
  std::vector<std::string> FFallen;
  TSteady::duration FLongestTurn{};
};

}  // namespace kk
