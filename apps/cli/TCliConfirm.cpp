#include "apps/cli/TCliConfirm.h"

#include "apps/cli/TerminalText.h"
#include "host/base/Exception.h"
#include "host/common/TIniFileSectionCommunication.h"
#include "host/delivery/TEmailConfirmation.h"

namespace kk {
namespace {

constexpr TStringView cAnotherCode =
    u"\"kaufkobolde-cli settings confirm-email\" schickt einen neuen.";

// As it may be shown. Raises Exception if there is none.
TString Address(bool& oConfirmed) {
  TString address;
  oConfirmed = TIniFileSectionCommunication().GetEMail(address);
  if (!Trim(address).empty()) return ForTerminal(address);
  throw Exception(
      u"Es ist noch keine E-Mail-Adresse eingestellt. Das geht mit \"kaufkobolde-cli settings set "
      u"Communication EMail ADRESSE\".");
}

TString Tries(int iLeft) {
  return iLeft == 1 ? TString(u"einen Versuch") : Format(u"%d Versuche", {iLeft});
}

}  // namespace

void TCliConfirm::Request() {
  bool confirmed = false;
  const TString address = Address(confirmed);
  if (confirmed) return FConsole.Print(Format(u"%s ist schon bestätigt.", {address}));
  TEmailConfirmation::Request(&TKKCommonEmail::SendNow);
  FConsole.Print(Format(u"Ein Code ist an %s unterwegs. Er gilt %d Stunden. Geben Sie ihn so ein:",
                        {address, TEmailConfirmation::cHours}));
  FConsole.Print(u"  kaufkobolde-cli settings confirm-email CODE");
}

void TCliConfirm::Check(TStringView iCode) {
  using enum TEmailConfirmation::TOutcome;
  bool confirmed = false;
  const TString address = Address(confirmed);
  int left = 0;
  switch (TEmailConfirmation::Check(iCode, left)) {
    case eoConfirmed:
      return FConsole.Print(
          Format(u"%s ist bestätigt. Erinnerungen per E-Mail gehen jetzt dorthin.", {address}));
    case eoNone:
      if (confirmed) return FConsole.Print(Format(u"%s ist schon bestätigt.", {address}));
      throw Exception(
          Format(u"Für %s gibt es noch keinen Code. %s",
                 {address, u"\"kaufkobolde-cli settings confirm-email\" schickt einen."}));
    case eoExpired:
      throw Exception(Format(u"Der Code ist älter als %d Stunden und gilt nicht mehr. %s",
                             {TEmailConfirmation::cHours, cAnotherCode}));
    case eoTooMany:
      throw Exception(Format(
          u"Der Code stimmt nicht, oder es waren schon %d falsche davor. Er gilt nicht mehr. %s",
          {TEmailConfirmation::cMaxTries, cAnotherCode}));
    case eoWrong:
      break;
  }
  throw Exception(Format(u"Der Code stimmt nicht. Sie haben noch %s.", {Tries(left)}));
}

}  // namespace kk
