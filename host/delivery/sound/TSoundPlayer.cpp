#include "host/delivery/sound/TSoundPlayer.h"

#include <poll.h>
#include <sys/eventfd.h>
#include <unistd.h>

#include <cerrno>
#include <utility>

#include "host/base/Exception.h"
#include "host/base/Log.h"

namespace kk {

TSoundPlayer::TSoundPlayer(TSoundOptions iOptions)
    : FOptions(std::move(iOptions)), FStop(eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK)) {
  if (FStop < 0) throw Exception(u"Die Tonausgabe lässt sich nicht einrichten");
}

TSoundPlayer::~TSoundPlayer() { close(FStop); }

bool TSoundPlayer::Play(TStringView iFileName) {
  const TSoundResult result = Run(iFileName);
  if (result.Error == 0) return true;
  LogError(u"Host", u"Der Ton %s wurde nicht abgespielt: %s",
           {WithoutControlCharacters(iFileName), result.Reason});
  errno = result.Error;
  return false;
}

TSoundResult TSoundPlayer::Run(TStringView iFileName) const {
  const std::string path = ToUtf8(iFileName);
  if (path.empty() || path.find('\0') != std::string::npos)
    return {EINVAL, u"Der Dateiname ist ungültig"};
  pollfd stop = {FStop, POLLIN, 0};
  if (poll(&stop, 1, 0) > 0) return {ECANCELED, u"Das Programm wird beendet"};
  return TSoundProcess(FOptions, path).Wait(FStop);
}

void TSoundPlayer::Stop() { eventfd_write(FStop, 1); }

}  // namespace kk
