#pragma once

#include <atomic>
#include <condition_variable>
#include <functional>
#include <map>
#include <mutex>
#include <optional>
#include <stop_token>
#include <string>
#include <thread>

#include "host/base/TDateTime.h"
#include "host/base/TObject.h"
#include "host/delivery/email/TMailFile.h"
#include "host/delivery/email/TSmtpClient.h"

namespace kk {

/// Messages that the mail server has not taken for now, kept on the disk and tried again: 5 s after
/// the first failure, then after twice the time of the last wait, 15 minutes at most, and no more
/// when 24 hours have gone since the first attempt. That goes on across restarts and while the
/// machine sleeps; what the machine's clock is set to meanwhile changes none of these times.
///
/// The folder holds one file for each message ("*.mail") and belongs to this user alone. One worker
/// sends, one message after the other; while it works, no other process does so from this folder.
/// The log tells how each message ended. A file that is damaged is given the name "*.damaged"; one
/// that can't be read at the moment is looked at again.
///
/// What remains: if the program or the machine dies between the server's answer and the end of the
/// file, or the server takes a message and its answer is lost, the message is sent again. It has
/// the same Message-ID then.
class TMailOutbox : public TObject {
 public:
  static constexpr int64_t cFirstDelayMs = 5000;
  static constexpr int64_t cMaxDelayMs = 15 * TDateTime::cMsPerMinute;
  static constexpr int64_t cLifeMs = 24 * TDateTime::cMsPerHour;
  /// The outbox takes no more than so many messages and bytes.
  static constexpr size_t cMaxMessages = 500;
  static constexpr size_t cMaxBytes = size_t{128} << 20;

  /// One attempt to send; what it raises counts as a failure for now.
  using TSend = std::function<TSmtpResult(const TMailMessage&, std::stop_token)>;

  /// The folder (an absolute path) is made when it is needed. Without iSend: to the server of the
  /// settings, with a TSmtpClient.
  explicit TMailOutbox(TStringView iFolder, TSend iSend = nullptr);
  /// Stops and waits for the worker.
  ~TMailOutbox() override;

  /// Begins to work on what lies in the folder and what comes; once. If another process has the
  /// folder or it can't be used, that is logged and nothing is sent.
  void Start();
  /// Ends the attempt that is under way and makes no more; what is not sent stays. Returns at once.
  /// Any thread.
  void Stop();
  /// True between Start and Stop, if the folder could be had.
  bool IsWorking() const;

  /// Keeps a message whose first attempt has failed, now, for this reason. On the disk when it
  /// returns, also without a worker. Raises Exception if it can't be kept. Any thread.
  void Add(const TMailMessage& iMessage, TStringView iReason);

  /// Tries what is due by now; answers in how many milliseconds the next attempt is due, nothing
  /// if there is none. What the worker does; a test without Start may do it itself.
  std::optional<int64_t> RunDue();

 private:
  struct TEntry {
    int64_t FirstMs = 0;
    int64_t NextMs = 0;
    int64_t DelayMs = 0;
  };
  enum class TReading { rdDone, rdNotNow, rdNothing };

  bool Lock();
  void Work();
  bool Load();
  int64_t LookAtClock();
  bool IsKnown(const std::string& iName) const;
  std::string NextDue();
  void Try(const std::string& iName);
  TReading Read(const std::string& iName, TMailFile& oFile);
  bool IsOver(const std::string& iName, TMailFile& ioFile);
  TSmtpResult Send(const TMailMessage& iMessage) const;
  void Retry(const std::string& iName, TMailFile iFile, TStringView iReason);
  void Postpone(const std::string& iName);
  void GiveUp(const std::string& iName, const TMailFile& iFile);
  void Remove(const std::string& iName);
  void Forget(const std::string& iName);
  void CheckRoom(size_t iBytes) const;
  TString PathOf(const std::string& iName) const;

  const TString FFolder;
  const TSend FSend;
  std::stop_source FStop;
  int FLock = -1;
  bool FLoaded = false;  // the worker's own
  std::atomic<bool> FStarted{false};

  mutable std::mutex FMutex;  // guards all below
  std::condition_variable_any FWake;
  std::map<std::string, TEntry> FEntries;
  bool FChanged = false;
  // What the clocks showed at the last look.
  int64_t FLastMs = 0;
  int64_t FLastSteadyMs = 0;
  std::jthread FWorker;
};

}  // namespace kk
