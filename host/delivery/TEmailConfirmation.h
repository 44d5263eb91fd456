#pragma once

#include <functional>

#include "host/common/TKKCommonEmail.h"

namespace kk {

/// How the address for reminders ("EMail" of the settings) is confirmed: a code is mailed to it,
/// and whoever can tell the code may have reminders sent there.
///
/// The settings ("EMailCode") hold a salted hash of code and address (crypt(5), yescrypt), the
/// moment, and how often a code was tried; the code itself is in the mail alone. It is good for 24
/// hours, cMaxTries tries, and the address that it was mailed to. Any thread, one at a time.
class TEmailConfirmation {
 public:
  static constexpr int cDigits = 8;
  static constexpr int cMaxTries = 5;
  static constexpr int cHours = 24;

  /// False with the reason in German. The message is small and waits for the server's answer.
  using TSend = std::function<bool(const TEmail& iEmail, TString& oError)>;

  /// Mails a new code; the one before is good for nothing from then on. Answers the address. Raises
  /// Exception, in German, if there is no address or the mail doesn't go out; a code that was
  /// mailed before stays then.
  static TString Request(const TSend& iSend);

  enum class TOutcome {
    eoConfirmed,  ///< the address is confirmed from now on
    eoNone,       ///< no code was mailed to this address
    eoExpired,    ///< it was too long ago
    eoWrong,      ///< not this code
    eoTooMany     ///< not this code, or any other: the tries are used up
  };
  /// Checks a code, in which blanks and hyphens don't count. oTriesLeft: for eoWrong. Each try is
  /// counted in the settings before it is made; where that fails, Exception is raised.
  static TOutcome Check(TStringView iCode, int& oTriesLeft);
};

}  // namespace kk
