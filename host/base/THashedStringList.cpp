#include "host/base/THashedStringList.h"

#include <unicode/uchar.h>
#include <unicode/unistr.h>

#include <algorithm>

namespace kk {

namespace {

TString Folded(TStringView iText) {
  // Ids need no tables.
  if (std::all_of(iText.begin(), iText.end(), [](char16_t c) { return c < 0x80; })) {
    TString folded(iText);
    std::transform(folded.begin(), folded.end(), folded.begin(), AsciiLower);
    return folded;
  }
  icu::UnicodeString text(iText.data(), static_cast<int32_t>(iText.size()));
  text.foldCase(U_FOLD_CASE_DEFAULT);
  return TString(text.getBuffer(), static_cast<size_t>(text.length()));
}

int Find(const std::unordered_map<TString, int>& iIndex, TStringView iText) {
  const auto hit = iIndex.find(Folded(iText));
  return hit == iIndex.end() ? -1 : hit->second;
}

}  // namespace

void THashedStringList::Changed() {
  FByLine.reset();
  FByName.reset();
}

void THashedStringList::Add(TStringView iLine) {
  FLines.Add(iLine);
  const int index = FLines.GetCount() - 1;
  if (FByLine) FByLine->emplace(Folded(iLine), index);
  if (FByName && iLine.find(u'=') != TStringView::npos) {
    FByName->emplace(Folded(FLines.GetName(index)), index);
  }
}

void THashedStringList::Delete(int iIndex) {
  FLines.Delete(iIndex);
  Changed();
}

void THashedStringList::SetValue(TStringView iName, TStringView iValue) {
  const TString line = TString(iName).append(u"=").append(iValue);
  const int index = IndexOfName(iName);
  if (index < 0) return Add(line);
  FLines.Set(index, line);
  FByLine.reset();  // its name is in the same place as before
}

void THashedStringList::Clear() {
  FLines.Clear();
  Changed();
}

int THashedStringList::IndexOf(TStringView iLine) const { return Find(ByLine(), iLine); }

int THashedStringList::IndexOfName(TStringView iName) const { return Find(ByName(), iName); }

const THashedStringList::TIndex& THashedStringList::ByLine() const {
  if (!FByLine) {
    FByLine.emplace();
    for (int i = 0; i < GetCount(); ++i) FByLine->emplace(Folded(Get(i)), i);
  }
  return *FByLine;
}

const THashedStringList::TIndex& THashedStringList::ByName() const {
  if (!FByName) {
    FByName.emplace();
    for (int i = 0; i < GetCount(); ++i) {
      if (Get(i).find(u'=') != TString::npos) FByName->emplace(Folded(GetName(i)), i);
    }
  }
  return *FByName;
}

}  // namespace kk
