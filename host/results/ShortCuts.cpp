#include "host/results/ShortCuts.h"

#include <algorithm>

namespace kk {

namespace {

bool Has(const TMenuItem& iEntry, TStringView iShortCut) {
  return !iEntry.ShortCut().empty() && IsSameShortCut(iEntry.ShortCut(), iShortCut);
}

bool HasBelow(const TMenuItem& iEntry, TStringView iShortCut) {
  if (Has(iEntry, iShortCut)) return true;
  for (int i = 0; i < iEntry.GetCount(); ++i) {
    if (HasBelow(iEntry.GetItems(i), iShortCut)) return true;
  }
  return false;
}

TMenuItem* FindIn(TMenuItem& iEntry, TStringView iShortCut) {
  if (!iEntry.Visible()) return nullptr;
  if (Has(iEntry, iShortCut)) return &iEntry;
  for (int i = 0; iEntry.Enabled() && i < iEntry.GetCount(); ++i) {
    if (TMenuItem* found = FindIn(iEntry.GetItems(i), iShortCut)) return found;
  }
  return nullptr;
}

}  // namespace

bool IsSameShortCut(TStringView iA, TStringView iB) {
  const std::vector<TString> a = Split(iA, u'+');
  const std::vector<TString> b = Split(iB, u'+');
  return a.size() == b.size() && std::is_permutation(a.begin(), a.end(), b.begin(), SameText);
}

bool HasShortCut(const std::vector<TMenuItem*>& iEntries, TStringView iShortCut) {
  return std::any_of(iEntries.begin(), iEntries.end(),
                     [&](const TMenuItem* iEntry) { return HasBelow(*iEntry, iShortCut); });
}

TMenuItem* FindByShortCut(const std::vector<TMenuItem*>& iEntries, TStringView iShortCut) {
  for (TMenuItem* entry : iEntries) {
    if (TMenuItem* found = FindIn(*entry, iShortCut)) return found;
  }
  return nullptr;
}

}  // namespace kk
