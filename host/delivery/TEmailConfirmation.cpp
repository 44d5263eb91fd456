#include "host/delivery/TEmailConfirmation.h"

#include <crypt.h>
#include <sys/random.h>

#include <cstdlib>
#include <memory>
#include <string>

#include "host/base/Exception.h"
#include "host/base/TClock.h"
#include "host/common/KKDat.h"
#include "host/common/TIniFileSectionCommunication.h"
#include "host/common/TVersionHelper.h"

namespace kk {
namespace {

constexpr int64_t cLifeMs = TEmailConfirmation::cHours * TDateTime::cMsPerHour;
constexpr char16_t cSeparator = u';';
constexpr size_t cMaxCode = 64;

constexpr TStringView cSubject = u"Kaufkobolde %MV%SV - Bestätigung Ihrer E-Mail-Adresse";
constexpr TStringView cBody =
    u"Mit diesem Code bestätigen Sie, dass Kaufkobolde Erinnerungen an %s schicken darf:\r\n"
    u"\r\n"
    u"    %s\r\n"
    u"\r\n"
    u"Geben Sie ihn in den Einstellungen auf der Seite \"E-Mail\" ein, im Terminal so:\r\n"
    u"\r\n"
    u"    kaufkobolde-cli settings confirm-email %s\r\n"
    u"\r\n"
    u"Er gilt %d Stunden. Haben Sie ihn nicht angefordert, dann löschen Sie diese Nachricht: "
    u"Ohne\r\n"
    u"den Code geschieht nichts.\r\n";

/// What the settings know of a code.
struct TMailedCode {
  std::string Hash;
  int64_t UtcMs = 0;
  int64_t Tries = 0;

  static bool TryParse(TStringView iText, TMailedCode& oCode) {
    const std::vector<TString> parts = Split(iText, cSeparator);
    if (parts.size() != 3 || parts[0].empty()) return false;
    oCode.Hash = ToUtf8(parts[0]);
    return TryStrToInt(parts[1], oCode.UtcMs) && TryStrToInt(parts[2], oCode.Tries) &&
           oCode.UtcMs >= 0 && oCode.Tries >= 0;
  }
  TString ToText() const { return Format(u"%s;%d;%d", {FromUtf8(Hash), UtcMs, Tries}); }
};

using TMemory = std::unique_ptr<void, decltype(&std::free)>;

// iSetting: a salt, or a hash that begins with its own. Empty if it is none.
std::string HashOf(TStringView iCode, TStringView iAddress, const std::string& iSetting) {
  const std::string phrase = ToUtf8(iCode) + "\n" + ToUtf8(iAddress);
  void* data = nullptr;
  int size = 0;
  const char* const hash = crypt_ra(phrase.c_str(), iSetting.c_str(), &data, &size);
  const TMemory memory(data, &std::free);
  return hash != nullptr ? std::string(hash) : std::string();
}

std::string NewSalt() {
  const TMemory salt(crypt_gensalt_ra("$y$", 0, nullptr, 0), &std::free);
  if (!salt) throw Exception(u"Es lässt sich kein Code erzeugen");
  return static_cast<const char*>(salt.get());
}

// All codes are equally likely: numbers beyond the last whole round are drawn again.
TString NewCode() {
  constexpr uint32_t cCodes = 100'000'000;
  constexpr uint32_t cWholeRounds = UINT32_MAX / cCodes * cCodes;
  uint32_t number = cWholeRounds;
  while (number >= cWholeRounds) {
    if (getrandom(&number, sizeof number, 0) != sizeof number) {
      throw Exception(u"Es lässt sich kein Code erzeugen");
    }
  }
  const TString digits = IntToStr(number % cCodes);
  return TString(TEmailConfirmation::cDigits - digits.size(), u'0') + digits;
}

// The time that it takes does not depend on where they differ.
bool AreEqual(const std::string& iA, const std::string& iB) {
  if (iA.size() != iB.size()) return false;
  unsigned difference = 0;
  for (size_t i = 0; i < iA.size(); ++i) {
    difference |= static_cast<unsigned>(iA[i] ^ iB[i]);
  }
  return difference == 0;
}

TString Address() {
  TString address;
  TIniFileSectionCommunication().GetEMail(address);
  return address;
}

TString WithoutSpacing(TStringView iCode) {
  TString result;
  for (const char16_t c : iCode) {
    if (c > u' ' && c != u'-' && result.size() < cMaxCode) result += c;
  }
  return result;
}

int64_t UtcNow() { return LocalToUtcMs(Now()); }

}  // namespace

TString TEmailConfirmation::Request(const TSend& iSend) {
  const TString address = Address();
  if (Trim(address).empty()) throw Exception(u"Es ist keine E-Mail-Adresse eingestellt.");
  const TString code = NewCode();
  TMailedCode mailed;
  mailed.Hash = HashOf(code, address, NewSalt());
  if (mailed.Hash.empty()) throw Exception(u"Es lässt sich kein Code erzeugen");
  TString error;
  const TEmail email{TVersionHelper::ReplaceVersionParams(cSubject),
                     Format(cBody, {address, code, code, cHours}), address, KKDat().SenderAddress(),
                     u"Kaufkobolde"};
  if (!iSend(email, error)) {
    throw Exception(Format(u"Der Code konnte nicht an %s geschickt werden: %s", {address, error}));
  }
  mailed.UtcMs = UtcNow();
  TIniFileSectionCommunication().SetEMailCode(mailed.ToText());
  return address;
}

TEmailConfirmation::TOutcome TEmailConfirmation::Check(TStringView iCode, int& oTriesLeft) {
  using enum TOutcome;
  oTriesLeft = 0;
  TIniFileSectionCommunication settings;
  TMailedCode mailed;
  if (!TMailedCode::TryParse(settings.GetEMailCode(), mailed)) return eoNone;
  // A clock that was set back by days counts as one that has gone on.
  if (std::abs(UtcNow() - mailed.UtcMs) > cLifeMs) return eoExpired;
  if (mailed.Tries >= cMaxTries) return eoTooMany;
  ++mailed.Tries;
  settings.SetEMailCode(mailed.ToText());
  const std::string hash = HashOf(WithoutSpacing(iCode), Address(), mailed.Hash);
  if (AreEqual(hash, mailed.Hash)) {
    settings.SetEMailConfirmed();
    return eoConfirmed;
  }
  oTriesLeft = cMaxTries - static_cast<int>(mailed.Tries);
  return oTriesLeft > 0 ? eoWrong : eoTooMany;
}

}  // namespace kk
