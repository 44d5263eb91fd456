#pragma once

#include <chrono>
#include <deque>
#include <functional>
#include <mutex>

#include "host/program/THostMessage.h"
#include "host/program/THostSocket.h"

namespace kk {

/// One caller of the process that has the data. The thread of the server moves bytes, the main
/// thread reads and writes messages; neither waits for the other.
class THostPeer {
 public:
  using TTime = std::chrono::steady_clock::time_point;
  /// iWake tells the server's thread that there is something to send. Any thread calls it.
  THostPeer(THostSocket ioSocket, std::function<void()> iWake);
  THostPeer(const THostPeer&) = delete;
  THostPeer& operator=(const THostPeer&) = delete;

  // Any thread.
  /// What it began with; it stands from the moment when the server hands it out.
  const THostMessage& Call() const { return FCall; }
  /// The call's turn has come. False if the caller has left it before: nothing of it may be done.
  bool Begin();
  void Send(const THostMessage& iMessage);
  /// A line for the user that is no part of an answer.
  void Complain(TStringView iText);
  /// The last message; the line is closed behind it.
  void SendExit(int iCode);
  /// A Line or an EndOfInput that has come since the last question; nothing if there is none.
  std::optional<THostMessage> TakeAnswer();
  void ForgetAnswers();
  /// Whether the caller has interrupted since the last time.
  bool TakeInterrupt();
  bool IsInterrupted() const;
  bool IsGone() const;

  // The server's thread.
  int Descriptor() const { return FSocket.Descriptor(); }
  bool HasOutput() const;
  /// False when the caller is done with, whatever the reason. oCalled: the call has come just now.
  bool Move(bool iCanRead, bool iCanWrite, bool& oCalled);
  /// Whether it has been silent for too long without a call.
  bool IsLate(TTime iNow) const { return !FHasCalled && iNow > FCallDeadline; }
  void HangUp();

 private:
  bool Receive(bool& oCalled);
  bool Take(const std::string& iLine, bool& oCalled);
  bool SendWhatGoes();
  void Leave();

  THostSocket FSocket;  ///< the server's thread alone
  const std::function<void()> FWake;
  const TTime FCallDeadline;
  THostMessage FCall;
  bool FHasCalled = false;    ///< the server's thread alone
  std::string FInput;         ///< the server's thread alone
  mutable std::mutex FMutex;  ///< over all below
  std::deque<std::string> FOutput;
  size_t FSent = 0;  ///< of the first
  std::deque<THostMessage> FAnswers;
  bool FBegun = false;
  bool FInterrupted = false;
  bool FExited = false;
  bool FGone = false;
};

}  // namespace kk
