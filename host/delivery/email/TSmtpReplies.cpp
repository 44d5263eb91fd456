#include "host/delivery/email/TSmtpReplies.h"

#include <algorithm>

#include "host/delivery/email/TMailText.h"

namespace kk {

namespace {

constexpr size_t cMaxShown = 200;
// More of an answer than can be shown is not kept.
constexpr size_t cMaxKept = 1024;
constexpr int cStartMailInput = 354;
constexpr int cFirstRefusal = 400;
constexpr int cLastRefusal = 599;

bool IsDigit(char c) { return c >= '0' && c <= '9'; }

}  // namespace

void TSmtpReplies::Add(std::string_view iLine) {
  while (!iLine.empty() && (iLine.back() == '\n' || iLine.back() == '\r')) iLine.remove_suffix(1);
  const bool isReply = iLine.size() >= 3 && std::all_of(iLine.begin(), iLine.begin() + 3, IsDigit);
  if (!isReply || IsFinal()) return;
  if (FUnfinished.size() < cMaxKept) {
    FUnfinished += ' ';
    FUnfinished += iLine.substr(std::min<size_t>(4, iLine.size())).substr(0, cMaxKept);
  }
  if (iLine.size() > 3 && iLine[3] == '-') return;  // it goes on
  const int code = (iLine[0] - '0') * 100 + (iLine[1] - '0') * 10 + (iLine[2] - '0');
  if (code >= cFirstRefusal && code <= cLastRefusal) {
    FRefusalCode = code;
    FRefusal = std::string(iLine.substr(0, 3)) + FUnfinished;
  }
  FUnfinished.clear();
  if (FAwaitsFinal) FFinalCode = code;
  FAwaitsFinal = code == cStartMailInput;
}

TString TSmtpReplies::Refusal() const {
  return ShortenedText(Trim(HeaderText(FromUtf8(FRefusal))), cMaxShown);
}

}  // namespace kk
