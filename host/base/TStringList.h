#pragma once

#include <vector>

#include "host/base/TObject.h"
#include "host/base/TString.h"

namespace kk {

/// Lines of text. A line "name=value" can be read and written by its name. Look-ups do not regard
/// case. Main thread, or any one thread at a time.
class TStringList : public TObject {
 public:
  TStringList() = default;
  TStringList(std::initializer_list<TString> iLines) : FLines(iLines) {}

  int GetCount() const { return static_cast<int>(FLines.size()); }
  /// An index out of range raises EListError, here and below.
  const TString& Get(int iIndex) const;
  void Set(int iIndex, TStringView iLine);
  void Add(TStringView iLine) { FLines.emplace_back(iLine); }
  void Insert(int iIndex, TStringView iLine);
  void Delete(int iIndex);
  void Clear() { FLines.clear(); }
  void Assign(const TStringList& iOther) { FLines = iOther.FLines; }
  void Assign(std::vector<TString> iLines) { FLines = std::move(iLines); }
  /// The first line equal to the text without regard to case; -1 if there is none.
  int IndexOf(TStringView iLine) const;

  /// All lines, each ended by CR LF.
  TString GetText() const;
  /// Splits at CR LF, CR and LF. A break at the end makes no further line.
  void SetText(TStringView iText);
  /// All lines with the delimiter between them.
  TString GetDelimited(TStringView iDelimiter) const;
  /// Splits at the delimiter; an empty text has no lines.
  void SetDelimited(TStringView iText, char16_t iDelimiter);

  /// The part before and behind the first "=". A line without one has neither.
  TString GetName(int iIndex) const;
  TString GetValueFromIndex(int iIndex) const;
  int IndexOfName(TStringView iName) const;
  /// The value of the first line with this name; empty if there is none.
  TString GetValue(TStringView iName) const;
  /// Sets the value of the first line with this name, or appends such a line.
  void SetValue(TStringView iName, TStringView iValue);

  const std::vector<TString>& Lines() const { return FLines; }

 private:
  size_t Checked(int iIndex) const;

  std::vector<TString> FLines;
};

}  // namespace kk
