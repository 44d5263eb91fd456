#pragma once

#include <array>
#include <cstdint>
#include <initializer_list>
#include <optional>

#include "host/contract/TBitmap.h"
#include "plugin/texts/UnitKKPluginWatchlistConsts.h"
#include "plugin/texts/UnitKKPluginWatchlistResourceStrings.h"

namespace kk {

/// The ways in which a user is reminded. Files and settings store these numbers.
enum class TRemindType : uint8_t { rtSound, rtWindow, rtSMS, rtOutlook, rtEmail };
using enum TRemindType;

/// All kinds, in their order.
inline constexpr std::array<TRemindType, 5> cRemindTypes = {rtSound, rtWindow, rtSMS, rtOutlook,
                                                            rtEmail};

/// A set of kinds in one byte: bit n for the kind n. A reminder holds at most two, and if two, one
/// is rtSound.
class TRemindTypes {
 public:
  constexpr TRemindTypes() = default;
  constexpr TRemindTypes(std::initializer_list<TRemindType> iTypes) {
    for (const TRemindType type : iTypes) Include(type);
  }

  constexpr void Include(TRemindType iType) { FBits = static_cast<uint8_t>(FBits | Bit(iType)); }
  constexpr void Exclude(TRemindType iType) { FBits = static_cast<uint8_t>(FBits & ~Bit(iType)); }
  constexpr bool Has(TRemindType iType) const { return (FBits & Bit(iType)) != 0; }
  constexpr bool IsEmpty() const { return FBits == 0; }
  constexpr uint8_t Bits() const { return FBits; }
  /// The kind that stands for all of them, so that sound does only where it is alone.
  constexpr std::optional<TRemindType> Highest() const {
    for (auto type = cRemindTypes.rbegin(); type != cRemindTypes.rend(); ++type) {
      if (Has(*type)) return *type;
    }
    return {};
  }

  friend constexpr bool operator==(const TRemindTypes&, const TRemindTypes&) = default;

 private:
  static constexpr int Bit(TRemindType iType) { return 1 << static_cast<int>(iType); }

  uint8_t FBits = 0;
};
static_assert(sizeof(TRemindTypes) == 1);

/// The kind as the user reads it.
constexpr TStringView RemindTypeText(TRemindType iType) {
  return cRemindTypeText[static_cast<size_t>(iType)];
}

inline TBitmap RemindTypeImage(TRemindType iType) {
  return {TString(cRemindImages[static_cast<size_t>(iType)])};
}

/// The place of the kind in the editor's list, 0 to 4.
constexpr int RemindTypeEditorIndex(TRemindType iType) {
  return cRemindTypeEditorIndex[static_cast<size_t>(iType)];
}

}  // namespace kk
