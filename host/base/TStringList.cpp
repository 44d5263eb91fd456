#include "host/base/TStringList.h"

#include <algorithm>

#include "host/base/Exception.h"

namespace kk {

size_t TStringList::Checked(int iIndex) const { return CheckedIndex(iIndex, FLines.size()); }

const TString& TStringList::Get(int iIndex) const { return FLines[Checked(iIndex)]; }

void TStringList::Set(int iIndex, TStringView iLine) { FLines[Checked(iIndex)] = iLine; }

void TStringList::Insert(int iIndex, TStringView iLine) {
  const size_t at = iIndex == GetCount() ? FLines.size() : Checked(iIndex);
  FLines.insert(FLines.begin() + static_cast<ptrdiff_t>(at), TString(iLine));
}

void TStringList::Delete(int iIndex) {
  FLines.erase(FLines.begin() + static_cast<ptrdiff_t>(Checked(iIndex)));
}

int TStringList::IndexOf(TStringView iLine) const {
  for (int i = 0; i < GetCount(); ++i) {
    if (SameText(FLines[static_cast<size_t>(i)], iLine)) return i;
  }
  return -1;
}

TString TStringList::GetText() const {
  TString text;
  for (const TString& line : FLines) text.append(line).append(u"\r\n");
  return text;
}

void TStringList::SetText(TStringView iText) {
  FLines.clear();
  for (size_t from = 0; from < iText.size();) {
    const size_t end = std::min(iText.find_first_of(u"\r\n", from), iText.size());
    FLines.emplace_back(iText.substr(from, end - from));
    const bool both = iText.substr(end, 2) == u"\r\n";
    from = end + (both ? 2 : 1);
  }
}

TString TStringList::GetDelimited(TStringView iDelimiter) const {
  TString text;
  for (size_t i = 0; i < FLines.size(); ++i) {
    if (i > 0) text += iDelimiter;
    text += FLines[i];
  }
  return text;
}

void TStringList::SetDelimited(TStringView iText, char16_t iDelimiter) {
  FLines = Split(iText, iDelimiter);
}

TString TStringList::GetName(int iIndex) const {
  const TString& line = Get(iIndex);
  const size_t at = line.find(u'=');
  return at == TString::npos ? TString() : line.substr(0, at);
}

TString TStringList::GetValueFromIndex(int iIndex) const {
  const TString& line = Get(iIndex);
  const size_t at = line.find(u'=');
  return at == TString::npos ? TString() : line.substr(at + 1);
}

int TStringList::IndexOfName(TStringView iName) const {
  for (int i = 0; i < GetCount(); ++i) {
    const TString& line = FLines[static_cast<size_t>(i)];
    const size_t at = line.find(u'=');
    if (at != TString::npos && SameText(TStringView(line).substr(0, at), iName)) return i;
  }
  return -1;
}

TString TStringList::GetValue(TStringView iName) const {
  const int index = IndexOfName(iName);
  return index < 0 ? TString() : GetValueFromIndex(index);
}

void TStringList::SetValue(TStringView iName, TStringView iValue) {
  const TString line = TString(iName) + u"=" + TString(iValue);
  const int index = IndexOfName(iName);
  if (index < 0) {
    Add(line);
  } else {
    Set(index, line);
  }
}

}  // namespace kk
