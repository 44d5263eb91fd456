#pragma once

#include "host/base/TString.h"

namespace kk {

/// What plays sound files; the host installs one if the machine has a sound output. Any thread.
class ISoundPlayer {
 public:
  virtual ~ISoundPlayer() = default;
  /// False if the file can't be played; errno tells why then.
  virtual bool Play(TStringView iFileName) = 0;
};
/// Installs a player, which is borrowed, and answers the one before; null is none. Main thread.
ISoundPlayer* SetSoundPlayer(ISoundPlayer* iPlayer);

/// Plays a sound file. False on failure, with errno set; without an installed player it always
/// fails (ENODEV) and the log says so. Any thread.
bool PlaySound(TStringView iFileName);

}  // namespace kk
