#pragma once

#include <optional>
#include <unordered_map>

#include "host/base/TStringList.h"

namespace kk {

/// A string list whose look-up of a line or of a name takes constant time. The hash is made on the
/// first look-up after a change, so a long run of changes costs nothing.
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
  int IndexOf(TStringView iLine) const;
  int IndexOfName(TStringView iName) const;

 private:
  using TIndex = std::unordered_map<TString, int>;
  const TIndex& ByLine() const;
  const TIndex& ByName() const;
  void Changed();

  TStringList FLines;
  mutable std::optional<TIndex> FByLine;
  mutable std::optional<TIndex> FByName;
};

}  // namespace kk
