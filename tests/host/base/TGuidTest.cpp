#include <gtest/gtest.h>
#include <rapidcheck.h>

#include <set>
#include <unordered_set>

#include "host/base/Exception.h"
#include "host/base/TGuid.h"

namespace kk {
namespace {

constexpr TGuid cSample = GuidLiteral("{FC3B5C09-B3C7-43DF-BBFE-DFE2158FFCE2}");

TEST(TGuid, TextHasBracesAndUpperCaseDigits) {
  EXPECT_EQ(GUIDToString(cSample), u"{FC3B5C09-B3C7-43DF-BBFE-DFE2158FFCE2}");
  EXPECT_EQ(GUIDToString(cEmptyGuid), u"{00000000-0000-0000-0000-000000000000}");
}

TEST(TGuid, IsReadInEitherCase) {
  TGuid guid;
  EXPECT_TRUE(TryStringToGuid(u"{fc3b5c09-b3c7-43df-bbfe-dfe2158ffce2}", guid));
  EXPECT_EQ(guid, cSample);
  EXPECT_EQ(StringToGUID(u"{FC3B5C09-B3C7-43DF-BBFE-DFE2158FFCE2}"), cSample);
}

TEST(TGuid, OtherTextIsNone) {
  for (const TStringView text :
       {u"", u"FC3B5C09-B3C7-43DF-BBFE-DFE2158FFCE2", u"{FC3B5C09-B3C7-43DF-BBFE-DFE2158FFCE2",
        u"{FC3B5C09-B3C7-43DF-BBFE-DFE2158FFCEG}", u"{FC3B5C09B3C7-43DF-BBFE-DFE2158FFCE22}",
        u"{FC3B5C09-B3C7-43DF-BBFE-DFE2158FFCE2} ", u"(FC3B5C09-B3C7-43DF-BBFE-DFE2158FFCE2)",
        u"{FC3B5C09-B3C7-43DF-BBFE-DFE2158FFCE2)", u"{-C3B5C09-B3C7-43DF-BBFE-DFE2158FFCE2}"}) {
    TGuid guid = cSample;
    EXPECT_FALSE(TryStringToGuid(text, guid)) << ToUtf8(text);
    EXPECT_EQ(guid, cEmptyGuid) << ToUtf8(text);
  }
}

TEST(TGuid, ConversionOfOtherTextRaises) {
  try {
    StringToGUID(u"kein Wert");
    FAIL();
  } catch (const EConvertError& e) {
    EXPECT_EQ(e.Message(), u"'kein Wert' ist kein gültiger GUID-Wert");
  }
}

TEST(TGuid, NewOnesAreDistinctAndOfVersion4) {
  std::set<TGuid> seen;
  for (int i = 0; i < 1000; ++i) {
    const TGuid guid = NewGuid();
    EXPECT_EQ(guid.Bytes[6] >> 4, 4);
    EXPECT_EQ(guid.Bytes[8] >> 6, 2);
    EXPECT_TRUE(seen.insert(guid).second);
  }
}

TEST(TGuid, SameGuidComparesTheWholeValue) {
  TGuid other = cSample;
  EXPECT_TRUE(SameGuid(cSample, other));
  other.Bytes[15] ^= 1;
  EXPECT_FALSE(SameGuid(cSample, other));
}

TEST(TGuid, HashesOfDistinctValuesSpread) {
  std::unordered_set<size_t> hashes;
  for (uint8_t i = 0; i < 255; ++i) {
    TGuid guid = cSample;
    guid.Bytes[i % 16] = i;
    hashes.insert(std::hash<TGuid>()(guid));
  }
  EXPECT_GT(hashes.size(), 230u);
  EXPECT_EQ(std::hash<TGuid>()(cSample), std::hash<TGuid>()(TGuid(cSample)));
}

TEST(TGuid, EveryValueSurvivesItsText) {
  EXPECT_TRUE(rc::check("GUID as text", [](std::array<uint8_t, 16> bytes) {
    const TGuid guid{bytes};
    RC_ASSERT(StringToGUID(GUIDToString(guid)) == guid);
  }));
}

}  // namespace
}  // namespace kk
