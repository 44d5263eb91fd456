#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "host/base/TString.h"

namespace kk {

/// What a call and the process that has the data tell each other: one JSON object (RFC 8259, UTF-8)
/// on each line.
struct THostMessage {
  enum class TKind {
    // From the call.
    // The first, and only once: Words are its arguments, Folder where it was made.
    Call,   ///< a command, which is executed as if it were made there
    Start,  ///< a second start of a program with a window; Text may let the window to the front
    Line,   ///< Text is what was entered
    EndOfInput,  ///< nobody will enter anything any more
    Interrupt,   ///< Ctrl+C, or a request to end
    // To the call.
    Print,
    Complain,
    Progress,
    Ask,        ///< Text is the prompt; a Line or EndOfInput is waited for
    AskSecret,  ///< the same for what nobody shall see
    Exit        ///< the last one
  };
  /// Of the two sides; a call of another version is refused.
  static constexpr int cVersion = 1;
  /// The longest line that a call may send, in bytes.
  static constexpr size_t cMaxLine = size_t{4} << 20;

  TKind Kind = TKind::Exit;
  TString Text;
  // Of the first one.
  int Version = cVersion;
  std::vector<TString> Words;
  TString Folder;  ///< full path
  bool IsInteractive = false;
  int ExitCode = 0;  ///< of an Exit

  /// Whether it is the one with which a call begins.
  bool IsFirst() const;
  /// The line, with its end.
  std::string ToLine() const;
  /// Takes a line without its end. Nothing if it is none of these messages.
  static std::optional<THostMessage> FromLine(std::string_view iLine);
};

}  // namespace kk
