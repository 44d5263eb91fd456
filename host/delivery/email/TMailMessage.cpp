#include "host/delivery/email/TMailMessage.h"

#include <sys/random.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <string_view>

#include "host/base/Exception.h"
#include "host/base/Guard.h"
#include "host/base/TClock.h"
#include "host/delivery/email/TMailAddress.h"
#include "host/delivery/email/TMailText.h"

namespace kk {

namespace {

// The limit of a line, RFC 5322, 2.1.1.
constexpr size_t cMaxLine = 998;
// With "From: ", a blank and the angle brackets they fill a line of 76.
constexpr size_t cMaxNameAndAddress = 67;
constexpr size_t cRandomBytes = 16;

// From the machine's own source: what an id's neighbours look like tells nothing about it.
std::string RandomText() {
  static constexpr char cDigits[] = "0123456789abcdef";
  std::array<uint8_t, cRandomBytes> bytes{};
  if (getrandom(bytes.data(), bytes.size(), 0) != static_cast<ssize_t>(bytes.size())) {
    throw Exception(u"Das System liefert keine Zufallszahlen");
  }
  std::string text;
  for (const uint8_t byte : bytes) {
    text += cDigits[byte >> 4];
    text += cDigits[byte & 0x0F];
  }
  return text;
}

std::string CheckedAddress(TStringView iRole, TStringView iAddress) {
  try {
    return TMailAddress::Check(iAddress);
  } catch (const Exception& e) {
    throw Exception(
        Format(u"Die Adresse des %s kann nicht verwendet werden: %s", {iRole, e.Message()}));
  }
}

std::string FromHeader(const TEmail& iEmail, const std::string& iSender) {
  const std::string name =
      EncodedName(ShortenedText(HeaderText(iEmail.SenderName), TMailMessage::cMaxName));
  if (name.empty()) return iSender;
  const bool fits = name.size() + iSender.size() <= cMaxNameAndAddress;
  return name + (fits ? " <" : "\r\n <") + iSender + ">";
}

bool IsAddress(const std::string& iText) {
  std::string checked;
  return Guarded(u"E-Mail", [&] { checked = TMailAddress::Check(FromUtf8(iText)); }) &&
         checked == iText;
}

// Lines of ASCII with CR LF and no other control character but the tab.
bool AreLines(std::string_view iText) {
  size_t length = 0;
  for (size_t i = 0; i < iText.size(); ++i) {
    const char c = iText[i];
    if (c == '\r') {
      if (i + 1 == iText.size() || iText[++i] != '\n') return false;
      length = 0;
    } else if ((c < ' ' && c != '\t') || c > '~' || ++length > cMaxLine) {
      return false;
    }
  }
  return length == 0;
}

}  // namespace

TMailMessage TMailMessage::Build(const TEmail& iEmail) {
  const TDateTime now = Now();
  TMailMessage message;
  message.Recipient = CheckedAddress(u"Empfängers", iEmail.Recipient);
  message.Sender = CheckedAddress(u"Absenders", iEmail.SenderAddress);
  if (iEmail.Body.size() > cMaxBody) throw Exception(u"Der Text der E-Mail ist zu lang");
  message.MessageId = "<" + RandomText() + "@" + TMailAddress::DomainOf(message.Sender) + ">";
  message.Text = "From: " + FromHeader(iEmail, message.Sender) +
                 "\r\n"
                 "To: " +
                 message.Recipient +
                 "\r\n"
                 "Subject: " +
                 EncodedText(ShortenedText(HeaderText(iEmail.Subject), cMaxSubject)) +
                 "\r\n"
                 "Date: " +
                 MailDate(now, LocalToUtcMs(now)) +
                 "\r\n"
                 "Message-ID: " +
                 message.MessageId +
                 "\r\n"
                 "MIME-Version: 1.0\r\n"
                 "Content-Type: text/plain; charset=utf-8\r\n"
                 "Content-Transfer-Encoding: quoted-printable\r\n"
                 // No answering machine shall answer (RFC 3834, 5).
                 "Auto-Submitted: auto-generated\r\n"
                 "\r\n" +
                 QuotedPrintable(iEmail.Body);
  return message;
}

bool TMailMessage::IsWhole() const {
  const size_t end = Text.find("\r\n\r\n");
  return IsAddress(Sender) && IsAddress(Recipient) && end != std::string::npos &&
         Text.size() <= cMaxText && AreLines(Text) && MessageId.size() > 2 &&
         std::all_of(MessageId.begin(), MessageId.end(), [](char c) { return c > ' '; }) &&
         std::string_view(Text).substr(0, end + 2).find("\r\nMessage-ID: " + MessageId + "\r\n") !=
             std::string_view::npos;
}

}  // namespace kk
