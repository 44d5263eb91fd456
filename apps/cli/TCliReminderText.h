#pragma once

#include "host/contract/IWatchlistAccess.h"

namespace kk {

/// The kinds of a reminder for the user: "Sound, Meldungsfenster". Empty if it has none.
TString ReminderKinds(const TWatchlistReminderInfo& iReminder);

/// The same with the sound file behind: "Meldungsfenster, Sounddatei /pfad/ton.wav".
TString ReminderWays(const TWatchlistReminderInfo& iReminder);

}  // namespace kk
