#pragma once

#include <tuple>

#include "reminders/TRemindDetailsBase.h"

namespace kk {

/// A reminder by sound.
class TRemindDetailsSound final : public TRemindDetails<TRemindDetailsSound> {
 public:
  static constexpr const char16_t* cClassName = u"TRemindDetailsSound";

  TRemindDetailsSound() = default;
  explicit TRemindDetailsSound(TStringView iSoundFile) : FSoundFile(iSoundFile) {}

  /// Full path of the sound file.
  const TString& SoundFile() const { return FSoundFile; }
  void SetSoundFile(TStringView iSoundFile) { FSoundFile = iSoundFile; }

  auto Strings() { return std::tie(FSoundFile); }
  auto Strings() const { return std::tie(FSoundFile); }

 private:
  TString FSoundFile;
};

}  // namespace kk
