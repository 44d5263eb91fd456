#pragma once

#include <chrono>
#include <string>
#include <vector>

#include "host/common/THelperProcess.h"

namespace kk {

/// How sounds are played; the defaults are the product's.
struct TSoundOptions {
  /// The program that plays; empty is kaufkobolde-play beside the running program.
  std::string Program = {};
  /// How long it may take until the sound's length is known, and beyond that length.
  std::chrono::milliseconds Grace{5000};
  /// A sound that is longer isn't played.
  std::chrono::milliseconds MaxLength{std::chrono::minutes(10)};
  /// "NAME=value", which the program gets on top of the environment of this one.
  std::vector<std::string> Environment = {};
};

/// How a sound ended: 0 if all of it has been played, else the number of the operating system and a
/// German sentence.
struct TSoundResult {
  int Error = 0;
  TString Reason = {};
};

/// One run of the program that plays a sound. It is over when the object goes. One thread.
class TSoundProcess {
 public:
  TSoundProcess(const TSoundOptions& iOptions, const std::string& iPath);
  ~TSoundProcess();
  TSoundProcess(const TSoundProcess&) = delete;
  TSoundProcess& operator=(const TSoundProcess&) = delete;

  /// Waits for its end: until the deadline, and no longer than until iStop can be read from. Once.
  TSoundResult Wait(int iStop);

 private:
  using TClock = std::chrono::steady_clock;

  /// What the program writes on one of its ways out, of which the newest bytes are kept.
  struct TOutput {
    int Begin = -1;  ///< of the pipe: ours
    int End = -1;    ///< the program's
    std::string Text = {};

    bool Open();
    void Read();
    void CloseBegin();
    void CloseEnd();
  };

  int Start(const std::string& iPath);
  /// True if it has ended, within the time; oResult else.
  bool WaitForEnd(int iStop, TSoundResult& oResult);
  /// Reads the length and moves the deadline. False if the sound must not be played.
  bool TakeLength(TSoundResult& oResult);
  TSoundResult ResultOf(int iStatus) const;
  TString ToldReason() const;

  const TSoundOptions& FOptions;
  TOutput FLengthLine;
  TOutput FErrors;
  THelperProcess FHelper;
  TClock::time_point FDeadline;
  bool FIsLengthKnown = false;
  TSoundResult FStartFailure;
};

}  // namespace kk
