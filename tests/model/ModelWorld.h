#pragma once

#include <string>
#include <utility>

#include "tests/support/TFakeSource.h"
#include "tests/support/TTestModelRoot.h"

namespace kk {

inline TWatchlistCategory& AddCategory(TLstWatchlistCategory& ioLst, TStringView iName,
                                       const TGuid& iId = NewGuid()) {
  auto category = std::make_unique<TWatchlistCategory>();
  category->SetName(iName);
  category->SetId(iId);
  return ioLst.Add(std::move(category));
}

inline TWatchlistPlugin& AddGroup(TLstWatchlistPlugin& ioLst, const TIntf<TFakeSource>& iSource) {
  return ioLst.Add(std::make_unique<TWatchlistPlugin>(iSource));
}

/// An item without a result.
inline TWatchlistItem& AddItem(TLstWatchlistItem& ioLst, const TGuid& iId = NewGuid()) {
  auto item = std::make_unique<TWatchlistItem>();
  item->SetSearchResultId(iId);
  return ioLst.Add(std::move(item));
}

inline TWatchlistItem& AddItem(TLstWatchlistItem& ioLst, const TIntf<ISearchResult>& iResult) {
  auto item = std::make_unique<TWatchlistItem>();
  item->SetSearchResult(iResult);
  return ioLst.Add(std::move(item));
}

inline TWatchlistItem& AddItem(TLstWatchlistItem& ioLst, const char16_t* iName) {
  return AddItem(ioLst, FakeResult(iName));
}

/// "A,B,C": the names of the objects of a list.
template <class TList>
std::string NamesOf(const TList& iList) {
  std::string names;
  for (const auto* object : iList) {
    names += (names.empty() ? "" : ",");
    if constexpr (requires { object->Name(); }) {
      names += ToUtf8(object->Name());
    } else {
      names += ToUtf8(object->GetName());
    }
  }
  return names;
}

}  // namespace kk
