#pragma once

#include <optional>

#include "host/base/TString.h"

namespace kk {

/// Where the terminal host talks to its user. Lines come without their end and are shown as they
/// are: who prints a text of somebody else sends it through ForTerminal first. Main thread, but for
/// Complain.
class ICliConsole {
 public:
  virtual ~ICliConsole() = default;

  /// A line of what was asked for (stdout).
  virtual void Print(TStringView iLine) = 0;
  /// A line that is not a part of it: failures, hints, questions (stderr). Any thread.
  virtual void Complain(TStringView iLine) = 0;
  /// How far the work is: one line that the next one takes the place of, on a terminal alone. An
  /// empty text takes it away.
  virtual void Progress(TStringView iLine) = 0;
  /// Brings out all that was printed. False if anything of it could not be written.
  virtual bool Flush() = 0;

  /// Whether somebody can answer questions.
  virtual bool IsInteractive() const = 0;
  /// Shows the prompt and answers the line entered; nothing at the end of the input, and from
  /// Ctrl+C on until it is taken. The main loop goes on meanwhile.
  virtual std::optional<TString> ReadLine(TStringView iPrompt) = 0;
  /// The same for what nobody shall see: on a terminal it is not shown while it is typed; without
  /// one there is no prompt.
  virtual std::optional<TString> ReadSecret(TStringView iPrompt) = 0;
  /// From now on a question ends like the input when the other side of this connection has hung
  /// up, because nobody waits for its answer then; -1 ends that.
  virtual void LeaveQuestionsWith(int /*iDescriptor*/) {}
  /// True once after Ctrl+C or a request to end. It is for the one who asks; the next Ctrl+C ends
  /// the program at once if nobody has asked by then.
  virtual bool TakeInterrupt() = 0;
};

}  // namespace kk
