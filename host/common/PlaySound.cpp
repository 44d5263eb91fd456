#include "host/common/PlaySound.h"

#include <atomic>
#include <cerrno>

#include "host/base/Log.h"

namespace kk {

namespace {

std::atomic<ISoundPlayer*> installedPlayer{nullptr};

}  // namespace

ISoundPlayer* SetSoundPlayer(ISoundPlayer* iPlayer) { return installedPlayer.exchange(iPlayer); }

bool PlaySound(TStringView iFileName) {
  if (ISoundPlayer* player = installedPlayer.load()) return player->Play(iFileName);
  LogError(u"Host", u"Es ist keine Tonausgabe eingerichtet");
  errno = ENODEV;
  return false;
}

}  // namespace kk
