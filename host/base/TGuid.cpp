#include "host/base/TGuid.h"

#include <cstring>
#include <random>

#include "host/base/Exception.h"

namespace kk {

namespace {

int DigitValue(char16_t iChar) {
  if (iChar >= u'0' && iChar <= u'9') return iChar - u'0';
  if (iChar >= u'A' && iChar <= u'F') return iChar - u'A' + 10;
  if (iChar >= u'a' && iChar <= u'f') return iChar - u'a' + 10;
  return -1;
}

bool IsHyphenPlace(size_t iIndex) {
  return iIndex == 9 || iIndex == 14 || iIndex == 19 || iIndex == 24;
}

bool Parse(TStringView iText, TGuid& oGuid) {
  if (iText.size() != 38 || iText[0] != u'{' || iText[37] != u'}') return false;
  size_t at = 0;
  for (size_t i = 1; i < 37;) {
    if (IsHyphenPlace(i)) {
      if (iText[i++] != u'-') return false;
      continue;
    }
    const int high = DigitValue(iText[i]);
    const int low = DigitValue(iText[i + 1]);
    if (high < 0 || low < 0) return false;
    oGuid.Bytes[at++] = static_cast<uint8_t>(high * 16 + low);
    i += 2;
  }
  return true;
}

}  // namespace

TGuid NewGuid() {
  static thread_local std::mt19937_64 engine = [] {
    std::random_device device;
    std::seed_seq seed{device(), device(), device(), device(), device(), device()};
    return std::mt19937_64(seed);
  }();
  TGuid guid;
  const uint64_t halves[] = {engine(), engine()};
  std::memcpy(guid.Bytes.data(), halves, sizeof halves);
  guid.Bytes[6] = static_cast<uint8_t>((guid.Bytes[6] & 0x0F) | 0x40);
  guid.Bytes[8] = static_cast<uint8_t>((guid.Bytes[8] & 0x3F) | 0x80);
  return guid;
}

TString GUIDToString(const TGuid& iGuid) {
  static constexpr char16_t cDigits[] = u"0123456789ABCDEF";
  TString text = u"{";
  for (size_t i = 0; i < iGuid.Bytes.size(); ++i) {
    if (i == 4 || i == 6 || i == 8 || i == 10) text += u'-';
    text += cDigits[iGuid.Bytes[i] >> 4];
    text += cDigits[iGuid.Bytes[i] & 0x0F];
  }
  return text + u"}";
}

bool TryStringToGuid(TStringView iText, TGuid& oGuid) {
  if (Parse(iText, oGuid)) return true;
  oGuid = cEmptyGuid;
  return false;
}

TGuid StringToGUID(TStringView iText) {
  TGuid guid;
  if (!Parse(iText, guid)) {
    throw EConvertError(Format(u"'%s' ist kein gültiger GUID-Wert", {iText}));
  }
  return guid;
}

}  // namespace kk

size_t std::hash<kk::TGuid>::operator()(const kk::TGuid& iGuid) const noexcept {
  // Seeded anew in each process: ids come from files, and a file must not choose its collisions.
  static const uint64_t seed = std::random_device()() | (uint64_t{std::random_device()()} << 32);
  uint64_t halves[2];
  std::memcpy(halves, iGuid.Bytes.data(), sizeof halves);
  uint64_t mixed = seed;
  for (const uint64_t half : halves) {
    // The finaliser of SplitMix64.
    mixed += half;
    mixed = (mixed ^ (mixed >> 30)) * 0xBF58476D1CE4E5B9ull;
    mixed = (mixed ^ (mixed >> 27)) * 0x94D049BB133111EBull;
    mixed ^= mixed >> 31;
  }
  return static_cast<size_t>(mixed);
}
