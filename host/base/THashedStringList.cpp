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

}  // namespace

std::optional<TString> THashedStringList::KeyOf(TKey iKey, TStringView iLine) {
  if (iKey == kLine) return Folded(iLine);
  const size_t at = iLine.find(u'=');
  if (at == TStringView::npos) return {};  // neither a name nor a value
  return Folded(iKey == kName ? iLine.substr(0, at) : iLine.substr(at + 1));
}

void THashedStringList::Enter(TIndex& ioIndex, TKey iKey, TStringView iLine, uint64_t iNumber) {
  const std::optional<TString> key = KeyOf(iKey, iLine);
  if (!key) return;
  std::vector<uint64_t>& numbers = ioIndex[*key];
  numbers.insert(std::lower_bound(numbers.begin(), numbers.end(), iNumber), iNumber);
}

void THashedStringList::Leave(TIndex& ioIndex, TKey iKey, TStringView iLine, uint64_t iNumber) {
  const std::optional<TString> key = KeyOf(iKey, iLine);
  if (!key) return;
  const auto entry = ioIndex.find(*key);
  std::vector<uint64_t>& numbers = entry->second;
  numbers.erase(std::lower_bound(numbers.begin(), numbers.end(), iNumber));
  if (numbers.empty()) ioIndex.erase(entry);
}

void THashedStringList::Add(TStringView iLine) {
  FLines.Add(iLine);
  FNumbers.push_back(FNextNumber++);
  Update(Enter, GetCount() - 1);
}

void THashedStringList::Delete(int iIndex) {
  Update(Leave, iIndex);
  FLines.Delete(iIndex);
  FNumbers.erase(FNumbers.begin() + iIndex);
}

void THashedStringList::SetValue(TStringView iName, TStringView iValue) {
  const TString line = TString(iName).append(u"=").append(iValue);
  const int index = IndexOfName(iName);
  if (index < 0) return Add(line);
  Update(Leave, index);
  FLines.Set(index, line);
  Update(Enter, index);
}

void THashedStringList::Clear() {
  FLines.Clear();
  FNumbers.clear();
  FIndexes = {};
}

int THashedStringList::Find(TKey iKey, TStringView iText) const {
  std::optional<TIndex>& index = FIndexes[iKey];
  if (!index) {
    index.emplace();
    for (size_t i = 0; i < FNumbers.size(); ++i) {
      Enter(*index, iKey, FLines.Lines()[i], FNumbers[i]);
    }
  }
  const auto hit = index->find(Folded(iText));
  if (hit == index->end()) return -1;
  const auto at = std::lower_bound(FNumbers.begin(), FNumbers.end(), hit->second.front());
  return static_cast<int>(at - FNumbers.begin());
}

void THashedStringList::Update(void (*iChange)(TIndex&, TKey, TStringView, uint64_t), int iIndex) {
  const TString& line = FLines.Get(iIndex);
  for (const TKey key : {kLine, kName, kValue}) {
    if (FIndexes[key]) iChange(*FIndexes[key], key, line, FNumbers[static_cast<size_t>(iIndex)]);
  }
}

}  // namespace kk
