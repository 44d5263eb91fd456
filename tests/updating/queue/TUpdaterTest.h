#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "TWitness.h"
#include "tests/support/TTestMainLoop.h"

namespace kk {

inline TIntf<IInterfaceList> ListOf(std::initializer_list<TIntf<ISearchResult>> iResults) {
  const TIntf<IInterfaceList> list = NewInterfaceList();
  for (const auto& result : iResults) list->Add(result);
  return list;
}

/// An updater of a source that waits for the test, and a witness of what it does.
class TUpdaterTest : public testing::Test {
 protected:
  TUpdaterTest() { witness.Watch(updater); }
  ~TUpdaterTest() override {
    while (!source->Requests().empty()) source->Finish(true);
  }

  bool Add(const TIntf<ISearchResult>& iResult) { return updater.Add(iResult, witness.ForEntry()); }
  bool AddPriorized(const TIntf<ISearchResult>& iResult) {
    return updater.AddPriorized(iResult, witness.ForEntry());
  }
  std::string IdOf(const TIntf<ISearchResult>& iResult) {
    return ToUtf8(GUIDToString(iResult->GetId()));
  }
  // Ends all requests and answers the names in the order in which they went out.
  std::string ServeAll() {
    std::string names;
    while (!source->Requests().empty()) {
      names += ToUtf8(source->Requests().front().Clone->GetName());
      source->Finish(true);
    }
    return names;
  }

  TTestMainLoop loop;
  TWitness witness;
  TIntf<TFakeSource> source = MakeIntf<TFakeSource>(u"Quelle");
  TWatchlistItemUpdater updater{source};
  TIntf<ISearchResult> a = FakeResult(u"A");
  TIntf<ISearchResult> b = FakeResult(u"B");
  TIntf<ISearchResult> c = FakeResult(u"C");
  TIntf<ISearchResult> d = FakeResult(u"D");
};

}  // namespace kk
