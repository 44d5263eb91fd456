#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>

#include <filesystem>

#include "host/base/Exception.h"
#include "host/common/TFileCompression.h"
#include "host/common/TFileHelper.h"
#include "tests/support/TRawZip.h"
#include "tests/support/TTempFolder.h"

namespace kk {
namespace {

class TFileCompressionTest : public testing::Test {
 protected:
  ~TFileCompressionTest() override { TFileCompression::SetMaxEntrySize(size_t{1} << 30); }

  void Compress(std::vector<std::pair<TString, std::string>> iEntries, int iLevel = 3) {
    std::vector<std::unique_ptr<TStreamForCompression>> streams;
    for (const auto& [name, bytes] : iEntries) {
      streams.push_back(
          std::make_unique<TStreamForCompression>(name, new TMemoryStream(bytes), true));
    }
    Write(streams, iLevel);
  }
  void Write(const std::vector<std::unique_ptr<TStreamForCompression>>& iStreams, int iLevel = 3) {
    std::vector<TStreamForCompression*> borrowed;
    for (const auto& stream : iStreams) borrowed.push_back(stream.get());
    TFileCompression::CompressStreams(borrowed, FFile, iLevel, true);
  }
  std::string Entry(TStringView iName) {
    TMemoryStream stream("old");
    if (!TFileCompression::DecompressFile(FFile, iName, stream)) return "(none)";
    EXPECT_EQ(stream.GetPosition(), 0u);
    return stream.Bytes();
  }
  std::vector<TString> Names() {
    TStringList list{u"old"};
    TFileCompression::FilesInside(FFile, list, false);
    return list.Lines();
  }
  std::string Bytes() { return FFolder.Read(u"a.zip"); }
  void SetBytes(const std::string& iBytes) {
    // Not over the old one: some file systems flush a file to the disk that is cut and rewritten.
    std::filesystem::remove(ToUtf8(FFile));
    FFolder.Write(u"a.zip", iBytes);
  }

  TTempFolder FFolder;
  TString FFile = FFolder.File(u"a.zip");
};

std::string Noise(size_t iSize) {
  std::string bytes;
  uint32_t state = 12345;
  for (size_t i = 0; i < iSize; ++i) {
    state = state * 1664525u + 1013904223u;
    bytes += static_cast<char>(state >> 24);
  }
  return bytes;
}

TEST_F(TFileCompressionTest, WhatIsPackedIsUnpackedEqual) {
  const std::string big(3'000'000, 'x');
  Compress({{u"version", "2"}, {u"leer", ""}, {u"groß", big}, {u"noise", Noise(200'000)}});
  EXPECT_EQ(Names(), (std::vector<TString>{u"version", u"leer", u"groß", u"noise"}));
  EXPECT_EQ(Entry(u"version"), "2");
  EXPECT_EQ(Entry(u"leer"), "");
  EXPECT_EQ(Entry(u"groß"), big);
  EXPECT_EQ(Entry(u"noise"), Noise(200'000));
  EXPECT_LT(Bytes().size(), 220'000u);
}

TEST_F(TFileCompressionTest, EveryLevelReadsBack) {
  const std::string text(100'000, 'y');
  for (const int level : {0, 1, 2, 3}) {
    Compress({{u"a", text}}, level);
    EXPECT_EQ(Entry(u"a"), text) << level;
    EXPECT_EQ(Bytes().size() > text.size(), level == 0) << level;
  }
}

TEST_F(TFileCompressionTest, AnArchiveWithoutEntriesIsOne) {
  Compress({});
  EXPECT_EQ(Names(), std::vector<TString>{});
  EXPECT_EQ(Entry(u"a"), "(none)");
}

TEST_F(TFileCompressionTest, ANameThatIsntInTheArchiveGivesFalse) {
  Compress({{u"version", "2"}});
  TMemoryStream stream("old");
  EXPECT_FALSE(TFileCompression::DecompressFile(FFile, u"Version", stream));
  EXPECT_FALSE(TFileCompression::DecompressFile(FFile, u"", stream));
  EXPECT_EQ(stream.GetSize(), 0u);
}

TEST_F(TFileCompressionTest, NoFileHasNoEntries) {
  TMemoryStream stream;
  EXPECT_FALSE(TFileCompression::DecompressFile(FFolder.File(u"none"), u"a", stream));
  EXPECT_EQ(Names(), std::vector<TString>{});
  EXPECT_TRUE(TFileCompression::ReadPacked(FFile).empty());
}

TEST_F(TFileCompressionTest, NamesGoInWithoutTheirFolder) {
  Compress({{u"a/b/name", "1"}, {u"c\\other", "2"}});
  EXPECT_EQ(Names(), (std::vector<TString>{u"name", u"other"}));
}

TEST_F(TFileCompressionTest, AFolderStaysWhereTwoNamesWouldBeTheSameWithoutIt) {
  Compress({{u"a/x", "1"}, {u"b/x", "2"}, {u"y/z", "3"}, {u"z", "4"}, {u"dir/", ""}});
  EXPECT_EQ(Names(), (std::vector<TString>{u"x", u"b/x", u"y/z", u"z", u"dir/"}));
  EXPECT_EQ(Entry(u"z"), "4");
}

TEST_F(TFileCompressionTest, RefusesTwoStreamsOfOneNameAndNamesThatAreNone) {
  SetBytes("old");
  EXPECT_THROW(Compress({{u"a", "1"}, {u"a", "2"}}), EInOutError);
  EXPECT_THROW(Compress({{u"", "1"}}), EInOutError);
  EXPECT_THROW(Compress({{TString(u"a\0b", 3), "1"}}), EInOutError);
  EXPECT_EQ(Bytes(), "old");
}

TEST_F(TFileCompressionTest, BorrowsAStreamThatItDoesNotOwn) {
  TMemoryStream stream("bytes");
  {
    TStreamForCompression entry(u"a", &stream, false);
    EXPECT_EQ(&entry.GetStream(), &stream);
    EXPECT_EQ(entry.GetPacked(), nullptr);
    EXPECT_EQ(&entry.GetEmptyStream(), &stream);
  }
  EXPECT_EQ(stream.GetSize(), 0u);
}

TEST_F(TFileCompressionTest, EntriesStillPackedKeepTheirBytes) {
  Compress({{u"packed", std::string(100'000, 'p')}, {u"empty", ""}, {u"noise", Noise(70'000)}}, 1);
  std::vector<TPackedEntry> before;
  auto streams = TFileCompression::ReadPacked(FFile);
  for (const auto& stream : streams) before.push_back(*stream->GetPacked());
  streams.push_back(std::make_unique<TStreamForCompression>(u"new", new TMemoryStream("n"), true));
  Write(streams, 3);

  const auto after = TFileCompression::ReadPacked(FFile);
  ASSERT_EQ(after.size(), 4u);
  for (size_t i = 0; i < before.size(); ++i) {
    EXPECT_EQ(after[i]->GetPacked()->Bytes, before[i].Bytes);
    EXPECT_EQ(after[i]->GetPacked()->Crc, before[i].Crc);
    EXPECT_EQ(after[i]->GetPacked()->UnpackedSize, before[i].UnpackedSize);
    EXPECT_EQ(after[i]->GetPacked()->Method, before[i].Method);
  }
  EXPECT_EQ(Entry(u"packed"), std::string(100'000, 'p'));
  EXPECT_EQ(Entry(u"empty"), "");
  EXPECT_EQ(Entry(u"noise"), Noise(70'000));
  EXPECT_EQ(Entry(u"new"), "n");
}

TEST_F(TFileCompressionTest, StoredEntriesStayStored) {
  const std::string text(10'000, 's');
  Compress({{u"a", text}}, 0);
  Write(TFileCompression::ReadPacked(FFile));
  const auto streams = TFileCompression::ReadPacked(FFile);
  EXPECT_EQ(streams[0]->GetPacked()->Method, 0);
  EXPECT_EQ(streams[0]->GetPacked()->Bytes, text);
  EXPECT_EQ(Entry(u"a"), text);
}

TEST_F(TFileCompressionTest, AnEntryPackedInAWayThatIsNotKnownIsKeptAsItIs) {
  TRawZip zip;
  zip.Add({.Name = "x", .Bytes = "??", .Size = 7, .Crc = 5, .Method = 97});
  SetBytes(zip.ToBytes());
  Write(TFileCompression::ReadPacked(FFile));
  const auto streams = TFileCompression::ReadPacked(FFile);
  EXPECT_EQ(streams[0]->GetPacked()->Method, 97);
  EXPECT_EQ(streams[0]->GetPacked()->Bytes, "??");
  EXPECT_EQ(streams[0]->GetPacked()->Crc, 5u);
  EXPECT_THROW(streams[0]->GetStream(), EInOutError);
}

TEST_F(TFileCompressionTest, ANameThatIsNoUTF8IsFoundAsItIsListed) {
  TRawZip zip;
  zip.AddStored("ca\xC1\xAB", "Inhalt");  // an overlong form of one byte
  SetBytes(zip.ToBytes());
  TStringList names;
  TFileCompression::FilesInside(FFile, names, false);
  ASSERT_EQ(names.GetCount(), 1);
  EXPECT_EQ(Entry(names.Get(0)), "Inhalt");
}

TEST_F(TFileCompressionTest, DamageStaysVisibleThroughASave) {
  TRawZip zip;
  zip.Add({.Name = "stored", .Bytes = "damaged", .Size = 7, .Crc = 5, .Method = 0});
  zip.Add({.Name = "empty", .Bytes = "", .Size = 0, .Crc = 5, .Method = 0});
  zip.Add({.Name = "deflated", .Bytes = "damaged", .Size = 7, .Crc = 5, .Method = 8});
  zip.Add({.Name = "long", .Bytes = Noise(70'000), .Size = 70'000, .Crc = 5, .Method = 0});
  SetBytes(zip.ToBytes());
  for (int save = 0; save < 2; ++save) {
    for (const TStringView name : {u"stored", u"empty", u"deflated", u"long"}) {
      EXPECT_THROW(Entry(name), EInOutError) << save;
    }
    Write(TFileCompression::ReadPacked(FFile));
  }
  // The bytes themselves are all there, though: only the check sum of the long one is wrong.
  EXPECT_NE(TFileCompression::ReadPacked(FFile)[3]->GetPacked()->Bytes.find(Noise(60'000)),
            std::string::npos);
}

TEST_F(TFileCompressionTest, APackedEntryIsUnpackedWhenItsStreamIsAskedFor) {
  Compress({{u"a", std::string(300'000, 'q')}, {u"b", "2"}});
  const auto streams = TFileCompression::ReadPacked(FFile);
  ASSERT_NE(streams[0]->GetPacked(), nullptr);
  EXPECT_EQ(streams[0]->GetStream().Bytes(), std::string(300'000, 'q'));
  EXPECT_EQ(streams[0]->GetPacked(), nullptr);
  EXPECT_EQ(streams[0]->GetName(), u"a");
  EXPECT_EQ(streams[1]->GetEmptyStream().GetSize(), 0u);
  EXPECT_EQ(streams[1]->GetPacked(), nullptr);
}

TEST_F(TFileCompressionTest, OfTwoEntriesOfOneNameTheFirstCounts) {
  TRawZip zip;
  zip.AddStored("a", "first");
  zip.AddStored("a", "second");
  SetBytes(zip.ToBytes());
  EXPECT_EQ(Entry(u"a"), "first");
  ASSERT_EQ(TFileCompression::ReadPacked(FFile).size(), 1u);
  Write(TFileCompression::ReadPacked(FFile));
  EXPECT_EQ(Entry(u"a"), "first");
}

TEST_F(TFileCompressionTest, UnpacksNothingBeyondTheLimit) {
  Compress({{u"bomb", std::string(1'000'000, '\0')}, {u"ok", "1"}});
  TFileCompression::SetMaxEntrySize(999'999);
  EXPECT_THROW(Entry(u"bomb"), EInOutError);
  EXPECT_EQ(Entry(u"ok"), "1");
  const auto streams = TFileCompression::ReadPacked(FFile);
  EXPECT_THROW(streams[0]->GetStream(), EInOutError);
  Write(streams);  // kept all the same
  TFileCompression::SetMaxEntrySize(1'000'000);
  EXPECT_EQ(Entry(u"bomb").size(), 1'000'000u);
  EXPECT_EQ(TFileCompression::ReadPacked(FFile)[0]->GetStream().GetSize(), 1'000'000u);
}

TEST_F(TFileCompressionTest, WritesNothingThatItWouldNotReadBack) {
  TFileCompression::SetMaxEntrySize(10);
  EXPECT_THROW(Compress({{u"a", std::string(11, 'x')}}), EInOutError);
  EXPECT_FALSE(FileExists(FFile));
}

TEST_F(TFileCompressionTest, AnEntryThatLiesAboutItsSizeIsDamaged) {
  Compress({{u"bomb", std::string(1'000'000, 'b')}});
  const auto original = TFileCompression::ReadPacked(FFile);
  for (const uint32_t claim : {0u, 1u, 999'999u, 1'000'001u, 0xFFFFFFFEu}) {
    TPackedEntry packed = *original[0]->GetPacked();
    TRawZip zip;
    zip.Add({.Name = "bomb", .Bytes = packed.Bytes, .Size = claim, .Crc = packed.Crc, .Method = 8});
    SetBytes(zip.ToBytes());
    EXPECT_THROW(Entry(u"bomb"), EInOutError) << claim;
    EXPECT_THROW(TFileCompression::ReadPacked(FFile)[0]->GetStream(), EInOutError) << claim;
  }
}

// Deflate (RFC 1951, 3.2.6) of zeros without an end: a literal, and matches of 258 bytes at
// distance 1, 13 bits for each.
std::string EndlessZeros(int iMatches) {
  std::string bytes;
  int bits = 0;
  const auto put = [&](unsigned iBits, int iCount) {
    for (int i = iCount - 1; i >= 0; --i, ++bits) {
      if (bits % 8 == 0) bytes += '\0';
      bytes.back() = static_cast<char>(bytes.back() | (iBits >> i & 1) << bits % 8);
    }
  };
  put(0b010, 3);  // not the last block; fixed codes
  put(0b00110000, 8);
  for (int i = 0; i < iMatches; ++i) put(0b11000101'00000, 13);
  return bytes;
}

int64_t MostMemoryInKiB() {
  rusage usage{};
  getrusage(RUSAGE_SELF, &usage);
  return usage.ru_maxrss;
}

TEST_F(TFileCompressionTest, StopsUnpackingWhereAnEntryShouldEnd) {
  TRawZip zip;
  zip.Add({.Name = "bomb", .Bytes = EndlessZeros(2'000'000), .Size = 10, .Crc = 0, .Method = 8});
  SetBytes(zip.ToBytes());
  const int64_t before = MostMemoryInKiB();
  EXPECT_THROW(Entry(u"bomb"), EInOutError);
  EXPECT_LT(MostMemoryInKiB() - before, 100 * 1024);
}

TEST_F(TFileCompressionTest, EntriesThatLieOverEachOtherAreRefusedAsAWhole) {
  TRawZip zip;
  zip.AddStored("a", std::string(10'000, 'x'));
  for (int i = 0; i < 50; ++i) zip.AddAlias("b" + std::to_string(i), 0);
  SetBytes(zip.ToBytes());
  EXPECT_THROW(TFileCompression::ReadPacked(FFile), EInOutError);
}

TEST_F(TFileCompressionTest, WhatIsNoArchiveIsRefused) {
  for (const std::string& bytes : {std::string(), std::string("x"), std::string(1000, 'x')}) {
    SetBytes(bytes);
    EXPECT_THROW(Names(), EInOutError);
    EXPECT_THROW(Entry(u"a"), EInOutError);
    EXPECT_THROW(TFileCompression::ReadPacked(FFile), EInOutError);
  }
}

TEST_F(TFileCompressionTest, ANamedPipeDoesNotHoldTheProgram) {
  ASSERT_EQ(mkfifo(ToUtf8(FFile).c_str(), 0600), 0);
  EXPECT_THROW(Names(), EInOutError);
}

// What damage does: every entry either reads as it was, or it is missing, or it raises.
class TDamagedArchiveTest : public TFileCompressionTest {
 protected:
  TDamagedArchiveTest() {
    Compress({{u"version", "2"}, {u"categories", std::string(60, 'c') + Noise(30)}});
    FWhole = Bytes();
  }
  void ReadAll(bool iMayMiss) {
    for (const auto& [name, bytes] : {std::pair{u"version", std::string("2")},
                                      {u"categories", std::string(60, 'c') + Noise(30)}}) {
      try {
        const std::string entry = Entry(name);
        if (entry != "(none)" || !iMayMiss) {
          EXPECT_EQ(entry, bytes);
        }
      } catch (const EInOutError&) {
      }
    }
    try {
      for (const auto& stream : TFileCompression::ReadPacked(FFile)) stream->GetStream();
    } catch (const EInOutError&) {
    }
  }
  std::string FWhole;
};

TEST_F(TDamagedArchiveTest, CutAtEveryByteItRaises) {
  for (size_t size = 0; size < FWhole.size(); ++size) {
    SetBytes(FWhole.substr(0, size));
    EXPECT_THROW(Names(), EInOutError) << size;
    EXPECT_THROW(Entry(u"version"), EInOutError) << size;
  }
}

TEST_F(TDamagedArchiveTest, AnyBitFlippedNeverGivesWrongBytes) {
  for (size_t bit = 0; bit < FWhole.size() * 8; ++bit) {
    std::string bytes = FWhole;
    bytes[bit / 8] = static_cast<char>(bytes[bit / 8] ^ (1 << bit % 8));
    SetBytes(bytes);
    ReadAll(true);
  }
}

struct TStepper {
  void DoStep(TObject*) {
    if (++Steps == Last) throw Exception(u"genug");
  }
  int Steps = 0;
  int Last = 0;
};

TEST(TFileCompression, ALargeEntryIsUnpackedInSteps) {
  const TTempFolder folder;
  const TString file = folder.File(u"a.zip");
  TMemoryStream bytes(std::string(200'000, 'x'));
  TStreamForCompression entry(u"n", &bytes, false);
  TFileCompression::CompressStreams({&entry}, file, 3, true);
  TStepper stepper;
  const auto step = TNotifyEvent::Of<&TStepper::DoStep>(&stepper);
  TMemoryStream stream;
  EXPECT_TRUE(TFileCompression::DecompressFile(file, u"n", stream, step));
  EXPECT_EQ(stream.Bytes(), bytes.Bytes());
  EXPECT_EQ(stepper.Steps, 4);  // 3 times 64 KiB and the rest
  EXPECT_FALSE(TFileCompression::DecompressFile(file, u"m", stream, step));
  EXPECT_EQ(stepper.Steps, 4);
  // What a step raises passes.
  stepper.Last = 6;
  EXPECT_THROW(TFileCompression::DecompressFile(file, u"n", stream, step), Exception);
  EXPECT_EQ(stream.GetSize(), 0u);
}

RC_GTEST_PROP(TFileCompression, AnyEntriesComeBackEqual,
              (const std::map<std::string, std::string>& iEntries)) {
  const TTempFolder folder;
  const TString file = folder.File(u"a.zip");
  std::vector<std::unique_ptr<TStreamForCompression>> owned;
  std::vector<TStreamForCompression*> streams;
  int number = 0;
  for (const auto& [name, bytes] : iEntries) {
    owned.push_back(std::make_unique<TStreamForCompression>(u"n" + IntToStr(number++),
                                                            new TMemoryStream(bytes), true));
    streams.push_back(owned.back().get());
  }
  TFileCompression::CompressStreams(streams, file, 3, true);
  number = 0;
  for (const auto& [name, bytes] : iEntries) {
    TMemoryStream stream;
    RC_ASSERT(TFileCompression::DecompressFile(file, u"n" + IntToStr(number++), stream));
    RC_ASSERT(stream.Bytes() == bytes);
  }
}

}  // namespace
}  // namespace kk
