#pragma once

namespace kk {

/// Catches Ctrl+C (SIGINT), SIGTERM and SIGHUP for the life of the object; there is one at a time.
/// The first one is only noted, so that the work under way can end well; a second one before it was
/// taken ends the program as if nobody caught it. A closed pipe (SIGPIPE) becomes a failed write.
/// Main thread.
class TCliInterrupt {
 public:
  TCliInterrupt();
  ~TCliInterrupt();
  TCliInterrupt(const TCliInterrupt&) = delete;
  TCliInterrupt& operator=(const TCliInterrupt&) = delete;

  /// Whether one is noted.
  bool IsPending() const;
  /// The same, and forgets it: the next one is noted again.
  bool Take();
  /// A file descriptor that can be read while one is noted, for poll.
  int Descriptor() const { return FPipe[0]; }

 private:
  int FPipe[2] = {-1, -1};
};

}  // namespace kk
