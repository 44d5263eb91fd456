#include "host/delivery/email/TMailFile.h"

#include <charconv>
#include <limits>

#include "host/base/Exception.h"
#include "host/delivery/email/TMailText.h"

namespace kk {

namespace {

constexpr char cHead[] = "kaufkobolde-mail 1\n";
constexpr size_t cMaxReason = 500;

[[noreturn]] void Damaged() { throw Exception(u"Die Datei ist beschädigt"); }

// Takes "name: value" and its line end from the front.
std::string TakeLine(std::string_view& ioRest, std::string_view iName) {
  const size_t end = ioRest.find('\n');
  if (end == std::string_view::npos || !ioRest.starts_with(iName)) Damaged();
  std::string value(ioRest.substr(iName.size(), end - iName.size()));
  ioRest.remove_prefix(end + 1);
  return value;
}

int64_t TakeNumber(std::string_view& ioRest, std::string_view iName) {
  const std::string text = TakeLine(ioRest, iName);
  int64_t number = -1;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  if (error != std::errc() || end != text.data() + text.size() || number < 0) Damaged();
  return number;
}

}  // namespace

std::string TMailFile::Write() const {
  return std::string(cHead) + "sender: " + Message.Sender + "\nrecipient: " + Message.Recipient +
         "\nmessage-id: " + Message.MessageId + "\nfirst: " + std::to_string(FirstMs) +
         "\nnext: " + std::to_string(NextMs) + "\nattempts: " + std::to_string(Attempts) +
         "\nreason: " + ToUtf8(ShortenedText(HeaderText(Reason), cMaxReason)) +
         "\nsize: " + std::to_string(Message.Text.size()) + "\n\n" + Message.Text;
}

TMailFile TMailFile::Read(std::string_view iBytes) {
  TMailFile file;
  TakeLine(iBytes, std::string_view(cHead, sizeof cHead - 2));
  file.Message.Sender = TakeLine(iBytes, "sender: ");
  file.Message.Recipient = TakeLine(iBytes, "recipient: ");
  file.Message.MessageId = TakeLine(iBytes, "message-id: ");
  file.FirstMs = TakeNumber(iBytes, "first: ");
  file.NextMs = TakeNumber(iBytes, "next: ");
  const int64_t attempts = TakeNumber(iBytes, "attempts: ");
  file.Reason = FromUtf8(TakeLine(iBytes, "reason: "));
  const int64_t size = TakeNumber(iBytes, "size: ");
  TakeLine(iBytes, "");
  if (attempts < 1 || attempts > std::numeric_limits<int>::max()) Damaged();
  file.Attempts = static_cast<int>(attempts);
  file.Message.Text = iBytes;
  if (size != static_cast<int64_t>(iBytes.size()) || !file.Message.IsWhole()) Damaged();
  return file;
}

}  // namespace kk
