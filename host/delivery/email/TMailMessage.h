#pragma once

#include <string>

#include "host/common/TKKCommonEmail.h"

namespace kk {

/// One mail as it travels: the envelope (RFC 5321) and the message of plain text (RFC 5322, MIME)
/// for it, ASCII alone, in lines of 76 characters with CR LF (one that holds an address may be
/// longer).
struct TMailMessage {
  /// The longest subject and name of a sender, in UTF-16 units; what is beyond is cut off.
  static constexpr size_t cMaxSubject = 500;
  static constexpr size_t cMaxName = 100;
  /// The longest body, in UTF-16 units, and the longest message, in bytes.
  static constexpr size_t cMaxBody = size_t{4} << 20;
  static constexpr size_t cMaxText = size_t{64} << 20;

  std::string Sender;
  std::string Recipient;
  /// With its angle brackets; nobody can guess it. A message that is sent again keeps it, so that
  /// whoever gets it twice can tell.
  std::string MessageId;
  std::string Text;

  /// Raises Exception with the reason, in German, if sender or recipient isn't one address or the
  /// body is too long. The message is dated now.
  static TMailMessage Build(const TEmail& iEmail);

  /// Whether all four parts have the form that Build gives them; a message that was kept on the
  /// disk goes to no server without it.
  bool IsWhole() const;
};

}  // namespace kk
