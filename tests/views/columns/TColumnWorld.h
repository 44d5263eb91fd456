#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/support/TFakeCells.h"
#include "tests/support/TFakePlugin.h"
#include "tests/support/TWatchlistWorld.h"

namespace kk {

/// A result that counts how often it is asked whether it is the same as another, and that fails
/// where the test wants it to.
class TWatchedResult : public TFakeSearchResult {
 public:
  using TFakeSearchResult::TFakeSearchResult;
  TGuid GetId() const override {
    if (IdFails) throw Exception(u"Kennung kaputt");
    return TFakeSearchResult::GetId();
  }
  bool IsSame(const TIntf<ISearchResult>& iOther) const override {
    ++Asked;
    if (SameFails) throw Exception(u"Vergleich kaputt");
    return TFakeSearchResult::IsSame(iOther);
  }

  bool IdFails = false;
  bool SameFails = false;
  mutable int Asked = 0;
};

/// A handler with two sources, and what a click does.
class TColumnTest : public testing::Test, public TWatchlistWorld {
 protected:
  TColumnTest() {
    CreateHandler(FPlugin);
    Handler()->LstIntegration().Add(Auction);
    Handler()->LstIntegration().Add(Shop);
    Log.Clear();
  }
  ~TColumnTest() override {
    FPlugin = nullptr;
    FreeHandler();
    FreeBuriedCategories();
  }
  static void Delete(TWatchlistItem& iItem) { Tree().DeleteItemById(iItem.SearchResultId()); }
  /// What was swallowed: "debug", the place and the message.
  TLines Swallowed() const { return Log.DebugLines(); }

  TIntf<TFakePlugin> FPlugin = MakeIntf<TFakePlugin>();
};

}  // namespace kk
