#pragma once

#include <string>
#include <string_view>

#include "host/base/TString.h"

namespace kk {

/// What a mail server has answered so far, line by line (RFC 5321, 4.2): its last refusal, and its
/// answer to the message, which is the first whole answer behind the 354 to "DATA". What comes
/// after that one, such as the answer to "QUIT", is passed over.
class TSmtpReplies {
 public:
  void Add(std::string_view iLine);

  /// The code of the last refusal (4xx, 5xx); 0 if there was none.
  int RefusalCode() const { return FRefusalCode; }
  /// That refusal as one line without control characters, 200 characters at most.
  TString Refusal() const;
  /// The answer to the message has come.
  bool IsFinal() const { return FFinalCode != 0; }
  /// The server has taken the message: the answer is 2xx.
  bool IsAccepted() const { return FFinalCode / 100 == 2; }

 private:
  std::string FUnfinished;
  std::string FRefusal;
  int FRefusalCode = 0;
  int FFinalCode = 0;
  bool FAwaitsFinal = false;
};

}  // namespace kk
