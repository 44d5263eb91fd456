#pragma once

#include "host/common/PlaySound.h"
#include "host/delivery/sound/TSoundProcess.h"

namespace kk {

/// Plays sounds through a small program of its own (kaufkobolde-play), so that a sound server that
/// hangs, or a file that brings a library down, holds nobody for good: the program has the sound's
/// length plus TSoundOptions::Grace, then it is killed. Sounds may be played at the same time.
class TSoundPlayer : public ISoundPlayer {
 public:
  /// Raises Exception if the machine has no handle left.
  explicit TSoundPlayer(TSoundOptions iOptions = {});
  /// Nobody may be in Play any more.
  ~TSoundPlayer() override;
  TSoundPlayer(const TSoundPlayer&) = delete;
  TSoundPlayer& operator=(const TSoundPlayer&) = delete;

  /// Waits until the sound has been heard. True only if all of it was played; else the reason goes
  /// to the log (sender "Host") and errno is: ENOENT no such file; EISDIR, EINVAL not a WAV file;
  /// ENODATA nothing in it, or cut off; EFBIG longer than TSoundOptions::MaxLength; ECONNREFUSED no
  /// sound server; EIO it broke off; ETIMEDOUT the server hangs; ECANCELED after Stop; or what the
  /// machine said. Any thread.
  bool Play(TStringView iFileName) override;

  /// Ends what is playing at once and lets nothing be played any more. Any thread.
  void Stop();

 private:
  TSoundResult Run(TStringView iFileName) const;

  const TSoundOptions FOptions;
  const int FStop;  // an event that is never reset, once Stop has set it
};

}  // namespace kk
