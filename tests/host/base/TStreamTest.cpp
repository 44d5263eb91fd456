#include "host/base/TStream.h"

#include <gtest/gtest.h>

namespace kk {
namespace {

TEST(TMemoryStream, ReadsWhatWasWritten) {
  TMemoryStream stream;
  stream.Write("Grüße");
  EXPECT_EQ(stream.GetSize(), 7u);
  EXPECT_EQ(stream.GetPosition(), 7u);
  EXPECT_EQ(stream.ReadRest(), "");
  stream.SetPosition(0);
  EXPECT_EQ(stream.ReadRest(), "Grüße");
  EXPECT_EQ(stream.GetPosition(), 7u);
}

TEST(TMemoryStream, ReadsUpToTheEnd) {
  TMemoryStream stream("abc");
  char bytes[8] = {};
  EXPECT_EQ(stream.Read(bytes, 2), 2u);
  EXPECT_EQ(stream.Read(bytes, 8), 1u);
  EXPECT_EQ(bytes[0], 'c');
  EXPECT_EQ(stream.Read(bytes, 8), 0u);
  EXPECT_EQ(stream.Read(nullptr, 0), 0u);
}

TEST(TMemoryStream, WritesOverWhatIsThereAndBeyondTheEnd) {
  TMemoryStream stream("abcd");
  stream.SetPosition(1);
  stream.Write("XY");
  EXPECT_EQ(stream.Bytes(), "aXYd");
  EXPECT_EQ(stream.GetPosition(), 3u);
  stream.Write("Z12");
  EXPECT_EQ(stream.Bytes(), "aXYZ12");
  stream.Write(nullptr, 0);
  EXPECT_EQ(stream.GetSize(), 6u);
}

TEST(TMemoryStream, APositionBehindTheEndIsTheEnd) {
  TMemoryStream stream("ab");
  stream.SetPosition(99);
  EXPECT_EQ(stream.GetPosition(), 2u);
  stream.Write("c");
  EXPECT_EQ(stream.Bytes(), "abc");
}

TEST(TMemoryStream, TakesAllBytesOverAndStartsAnew) {
  TMemoryStream stream("abc");
  stream.SetPosition(2);
  stream.SetBytes(std::string("x\0y", 3));
  EXPECT_EQ(stream.GetPosition(), 0u);
  EXPECT_EQ(stream.ReadRest(), std::string("x\0y", 3));
  stream.Clear();
  EXPECT_EQ(stream.GetSize(), 0u);
  EXPECT_EQ(stream.GetPosition(), 0u);
}

}  // namespace
}  // namespace kk
