#include "host/common/TFileCompression.h"

#include <unordered_set>

#include "host/base/Exception.h"
#include "host/common/TFileHelper.h"
#include "host/common/TZipReader.h"
#include "host/common/TZipWriter.h"

namespace kk {

namespace {

size_t maxEntrySize = size_t{1} << 30;

std::string WithoutFolder(const std::string& iName) {
  return iName.substr(iName.find_last_of("/\\") + 1);
}

// Names without a folder part come first: a name that loses its folder must not take theirs.
class TArchiveNames {
 public:
  explicit TArchiveNames(const std::vector<TStreamForCompression*>& iStreams) {
    for (const TStreamForCompression* stream : iStreams) {
      const std::string name = ToUtf8(stream->GetName());
      if (WithoutFolder(name) == name) Take(name);
    }
  }

  std::string NameFor(const TStreamForCompression& iStream) {
    const std::string name = ToUtf8(iStream.GetName());
    const std::string alone = WithoutFolder(name);
    if (alone == name) return name;
    if (!alone.empty() && FTaken.insert(alone).second) return alone;
    Take(name);
    return name;
  }

 private:
  void Take(const std::string& iName) {
    const bool fits = !iName.empty() && iName.find('\0') == std::string::npos;
    if (!fits || !FTaken.insert(iName).second) {
      throw EInOutError(
          Format(u"Der Name '%s' eines Eintrags ist ungültig oder doppelt", {FromUtf8(iName)}));
    }
  }

  std::unordered_set<std::string> FTaken;
};

std::optional<TPackedEntry> ReadEntry(TStringView iFileName, TStringView iEntryName) {
  if (!FileExists(iFileName)) return {};
  TZipReader reader(iFileName);
  const int64_t index = reader.IndexOf(iEntryName);
  if (index < 0) return {};
  return reader.ReadPacked(static_cast<uint64_t>(index));
}

}  // namespace

TStreamForCompression::TStreamForCompression(TStringView iName, TMemoryStream* iStream,
                                             bool iOwnsStream)
    : FName(iName), FStream(iStream), FOwned(iOwnsStream ? iStream : nullptr) {}

TStreamForCompression::TStreamForCompression(TStringView iName, TPackedEntry iPacked)
    : FName(iName),
      FStream(nullptr),
      FOwned(std::make_unique<TMemoryStream>()),
      FPacked(std::move(iPacked)) {
  FStream = FOwned.get();
}

TStreamForCompression::~TStreamForCompression() = default;

TMemoryStream& TStreamForCompression::GetStream() {
  if (FPacked) {
    FStream->SetBytes(UnpackEntry(*FPacked, FName));
    FPacked.reset();
  }
  return *FStream;
}

TMemoryStream& TStreamForCompression::GetEmptyStream() {
  FPacked.reset();
  FStream->Clear();
  return *FStream;
}

size_t TFileCompression::MaxEntrySize() { return maxEntrySize; }

void TFileCompression::SetMaxEntrySize(size_t iBytes) { maxEntrySize = iBytes; }

void TFileCompression::CompressStreams(const std::vector<TStreamForCompression*>& iStreams,
                                       TStringView iFileName, int iLevel, bool /*iFlag*/,
                                       unsigned iMode) {
  TArchiveNames names(iStreams);
  TZipWriter writer;
  for (TStreamForCompression* stream : iStreams) {
    const std::string name = names.NameFor(*stream);
    if (const TPackedEntry* packed = stream->GetPacked()) {
      writer.AddPacked(name, *packed);
      continue;
    }
    const std::string& bytes = stream->GetStream().Bytes();
    // What could not be read back must not be written.
    if (bytes.size() > MaxEntrySize()) {
      throw EInOutError(Format(u"Der Eintrag '%s' ist größer als erlaubt", {FromUtf8(name)}));
    }
    writer.Add(name, bytes, iLevel);
  }
  WriteFileAtomically(iFileName, writer.Finish(), iMode);
}

bool TFileCompression::DecompressFile(TStringView iFileName, TStringView iEntryName,
                                      TMemoryStream& ioStream, TNotifyEvent iOnStep) {
  ioStream.Clear();
  const std::optional<TPackedEntry> packed = ReadEntry(iFileName, iEntryName);
  if (!packed) return false;
  ioStream.SetBytes(UnpackEntry(*packed, iEntryName, iOnStep));
  return true;
}

void TFileCompression::FilesInside(TStringView iFileName, TStringList& ioList, bool /*iFlag*/) {
  ioList.Clear();
  if (!FileExists(iFileName)) return;
  const TZipReader reader(iFileName);
  for (uint64_t i = 0; i < reader.GetCount(); ++i) ioList.Add(reader.GetName(i));
}

std::vector<std::unique_ptr<TStreamForCompression>> TFileCompression::ReadPacked(
    TStringView iFileName) {
  std::vector<std::unique_ptr<TStreamForCompression>> streams;
  ReadPacked(iFileName, streams);
  return streams;
}

void TFileCompression::ReadPacked(TStringView iFileName,
                                  std::vector<std::unique_ptr<TStreamForCompression>>& ioStreams) {
  if (!FileExists(iFileName)) return;
  TZipReader reader(iFileName);
  std::unordered_set<TString> seen;
  for (uint64_t i = 0; i < reader.GetCount(); ++i) {
    const TString name = reader.GetName(i);
    if (!seen.insert(name).second) continue;
    ioStreams.push_back(std::make_unique<TStreamForCompression>(name, reader.ReadPacked(i)));
  }
}

}  // namespace kk
