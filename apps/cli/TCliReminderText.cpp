#include "apps/cli/TCliReminderText.h"

#include <array>

#include "apps/cli/TerminalText.h"

namespace kk {
namespace {

// By the numbers of the kinds.
constexpr auto cReminderKinds =
    std::to_array<TStringView>({u"Sound", u"Meldungsfenster", u"SMS", u"Kalender", u"E-Mail"});

void Append(TString& ioText, TStringView iPart) {
  if (!ioText.empty()) ioText += u", ";
  ioText += iPart;
}

}  // namespace

TString ReminderKinds(const TWatchlistReminderInfo& iReminder) {
  TString kinds;
  for (int type : iReminder.Types) {
    if (type < 0 || static_cast<size_t>(type) >= cReminderKinds.size()) continue;
    Append(kinds, cReminderKinds[static_cast<size_t>(type)]);
  }
  return kinds;
}

TString ReminderWays(const TWatchlistReminderInfo& iReminder) {
  TString ways = ReminderKinds(iReminder);
  if (!iReminder.SoundFile.empty()) {
    Append(ways, u"Sounddatei " + ForTerminal(iReminder.SoundFile));
  }
  return ways;
}

}  // namespace kk
