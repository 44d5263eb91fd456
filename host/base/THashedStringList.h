#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <unordered_map>

#include "host/base/TStringList.h"

namespace kk {

/// A string list that finds a line, or a name, by a hash. A hash is made on the first look-up that
/// needs it and kept right by every change from then on.
class THashedStringList : public TObject {
 public:
  int GetCount() const { return FLines.GetCount(); }
  const TString& Get(int iIndex) const { return FLines.Get(iIndex); }
  TString GetName(int iIndex) const { return FLines.GetName(iIndex); }
  TString GetValueFromIndex(int iIndex) const { return FLines.GetValueFromIndex(iIndex); }

  void Add(TStringView iLine);
  void Delete(int iIndex);
  /// Sets the value of the first line with this name, or appends such a line.
  void SetValue(TStringView iName, TStringView iValue);
  void Clear();

  /// The first such line, or the first with such a name, without regard to case; -1 if none.
  int IndexOf(TStringView iLine) const { return Find(kLine, iLine); }
  int IndexOfName(TStringView iName) const { return Find(kName, iName); }

 protected:
  /// The part of a line that is looked for.
  enum TKey : size_t { kLine, kName, kValue };
  int Find(TKey iKey, TStringView iText) const;

 private:
  // Lines are known by numbers that grow from line to line and stay when others go: so a deletion
  // leaves a hash right. Under each folded text stand the numbers of its lines, ascending.
  using TIndex = std::unordered_map<TString, std::vector<uint64_t>>;

  static std::optional<TString> KeyOf(TKey iKey, TStringView iLine);
  static void Enter(TIndex& ioIndex, TKey iKey, TStringView iLine, uint64_t iNumber);
  static void Leave(TIndex& ioIndex, TKey iKey, TStringView iLine, uint64_t iNumber);
  /// Enters or takes a line out wherever there is a hash.
  void Update(void (*iChange)(TIndex&, TKey, TStringView, uint64_t), int iIndex);

  TStringList FLines;
  std::vector<uint64_t> FNumbers;  // of each line
  uint64_t FNextNumber = 0;
  mutable std::array<std::optional<TIndex>, 3> FIndexes;
};

}  // namespace kk
