#include "persistence/TLstStreamForCompression.h"

#include <gtest/gtest.h>

#include "host/base/Exception.h"

namespace kk {
namespace {

std::unique_ptr<TStreamForCompression> Stream(TStringView iName) {
  return std::make_unique<TStreamForCompression>(iName, TPackedEntry{});
}

TEST(TLstStreamForCompression, FindsByNameWithoutRegardToCase) {
  TLstStreamForCompression streams(true);
  streams.Add(Stream(u"version"));
  TStreamForCompression& remind = streams.Add(Stream(u"remind"));
  EXPECT_EQ(streams.FindByName(u"REMIND"), &remind);
  EXPECT_EQ(streams.IndexOfName(u"Remind"), 1);
  EXPECT_EQ(streams.FindByName(u"reminds"), nullptr);
  EXPECT_EQ(streams.IndexOfName(u""), -1);
}

TEST(TLstStreamForCompression, OfTwoWithTheSameNameTheFirstCounts) {
  TLstStreamForCompression streams(true);
  TStreamForCompression& first = streams.Add(Stream(u"a"));
  TStreamForCompression& second = streams.Add(Stream(u"A"));
  EXPECT_EQ(streams.FindByName(u"A"), &first);
  streams.Delete(0);
  EXPECT_EQ(streams.FindByName(u"a"), &second);
  streams.Delete(0);
  EXPECT_EQ(streams.FindByName(u"a"), nullptr);
}

TEST(TLstStreamForCompression, TakingOutTheSecondOfTwoKeepsTheFirst) {
  TLstStreamForCompression streams(true);
  TStreamForCompression& first = streams.Add(Stream(u"a"));
  streams.Add(Stream(u"A"));
  streams.Delete(1);
  EXPECT_EQ(streams.FindByName(u"A"), &first);
}

TEST(TLstStreamForCompression, AnIndexOutsideFails) {
  const TLstStreamForCompression streams(true);
  EXPECT_THROW(streams.GetItems(0), EListError);
}

}  // namespace
}  // namespace kk
