#pragma once

#include <atomic>
#include <chrono>
#include <filesystem>
#include <functional>
#include <mutex>
#include <vector>

#include "host/base/Log.h"
#include "host/base/TClock.h"
#include "host/common/TKKIniFile.h"
#include "host/common/TQueueMainLoop.h"
#include "host/controls/IFormHost.h"
#include "host/controls/TfrmKKCommonNotifier.h"
#include "reminders/TRemindHandler.h"
#include "reminders/TThreadRemind.h"

namespace kk {

using TSteady = std::chrono::steady_clock;

/// How late each reminder came.
struct TDelivery {
  TGuid Id;
  int64_t LateMs = 0;
  TSteady::time_point At;
};

/// What the products run for reminders, without the rest of them: the main loop, the live list and
/// its real thread, on a folder and settings of its own. Notifications are not shown but written
/// down. Main thread.
class TReliabilityWorld : private INotifier, private IFormHost, private ILogSink, private IClock {
 public:
  TReliabilityWorld();
  ~TReliabilityWorld();

  TRemindHandler& Handler() { return FHandler; }
  const std::vector<TDelivery>& Deliveries() const { return FDeliveries; }
  const std::filesystem::path& Folder() const { return FFolder; }
  void Set(TStringView iKey, TStringView iValue);

  /// Starts the thread that delivers.
  void Start();
  /// A reminder with the window's details, or with the given ones.
  TGuid Add(TDateTime iTime, std::unique_ptr<TRemindDetailsBase> iDetails = nullptr);
  /// Turns the main loop until the condition holds; false after so many seconds.
  bool RunUntil(const std::function<bool()>& iCondition, int iSeconds);
  /// The longest stretch for which the main loop did not answer, since the last call.
  int64_t TakeLongestTurnMs();
  /// Runs it in a later turn of the main loop.
  void Post(std::function<void()> iFunction) { FLoop.Post(std::move(iFunction)); }
  /// What writes notifications down.
  INotifier& Recorder() { return *this; }
  /// How many lines with this text have been logged since the last call of ForgetLog.
  int Logged(TStringView iText) const;
  void ForgetLog();

  /// Puts the time of day forward or back.
  void JumpClock(int64_t iMs) { FJump += iMs; }

 private:
  void Display(const TNotification& iNotification) override;
  void ShowModal(TForm& ioForm) override;
  bool ShowOpenDialog(TOpenDialog&) override { return false; }
  void Write(TLogLevel iLevel, TStringView iSender, TStringView iText) override;
  TDateTime Now() const override;
  void Turn();

  std::filesystem::path FFolder;
  TKKIniFile FIniFile;
  TQueueMainLoop FLoop;
  TRemindThreadFactory FThreads;
  TRemindHandler FHandler;
  std::vector<TDelivery> FDeliveries;
  std::vector<std::pair<TGuid, TDateTime>> FDue;
  mutable std::mutex FLogMutex;
  std::vector<TString> FLog;
  std::atomic<int64_t> FJump{0};
  TSteady::time_point FAlive;
  int64_t FLongestTurnMs = 0;
};

}  // namespace kk
