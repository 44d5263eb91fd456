#include "host/common/TDataFileGuard.h"

#include <sys/stat.h>

#include <algorithm>
#include <filesystem>

#include "host/base/Exception.h"
#include "host/base/Guard.h"
#include "host/base/TGuid.h"
#include "host/common/TFileCompression.h"
#include "host/common/TFileHelper.h"
#include "host/common/TFileWriter.h"
#include "host/common/TParserBaseSimpleXML.h"

namespace kk {

namespace {

constexpr TStringView cVersion = u"version";
constexpr TStringView cCategories = u"categories";
constexpr TStringView cRemind = u"remind";
constexpr TStringView cItems = u"items";

// All entries together; a file beyond this is none that the system wrote.
constexpr uint64_t cMaxUnpacked = uint64_t{4} << 30;
// What a day's work adds at most, as a rule.
constexpr size_t cGrowth = 64 << 10;
constexpr unsigned cPrivate = 0600;

bool IsThere(TStringView iFileName) {
  struct stat info {};
  return lstat(ToUtf8(iFileName).c_str(), &info) == 0;
}

// The other entries are the sources' own, whatever they look like.
bool IsXml(TStringView iName) {
  return iName == cCategories || iName == cRemind || StartsWith(iName, cItems);
}

// A category without an id spoils the whole load. The document's bound keeps this from going deep.
void CheckCategories(TSimpleXMLNode iParent) {
  for (auto node = iParent.GetChildNodes().GetFirst(); node; node = node.GetNextSibling()) {
    StringToGUID(TParserBaseSimpleXML::GetValueAsString(node, u"Id"));
    CheckCategories(node.GetChildNode(u"Categories"));
  }
}

void CheckEntry(TStringView iName, TMemoryStream& ioStream) {
  if (iName == cVersion) StrToInt(FromUtf8(ioStream.Bytes()));
  if (!IsXml(iName)) return;
  TSimpleXMLDocument document;
  document.LoadFromStream(ioStream, false);
  if (iName == cCategories) CheckCategories(document.GetDocumentElement());
}

}  // namespace

TString TDataFileGuard::BackupName() const {
  return FFileName.substr(0, FFileName.empty() ? 0 : FFileName.size() - 1) + u"~";
}

bool TDataFileGuard::BackupToRestore() const {
  return !IsThere(FFileName) && FileExists(BackupName());
}

bool TDataFileGuard::IsBackupSound() const {
  return FileExists(BackupName()) &&
         Guarded(u"TDataFileGuard.IsBackupSound", [this] { Check(BackupName()); });
}

void TDataFileGuard::RestoreBackup() const {
  if (IsThere(FFileName) && PutAside(FFileName).empty()) {
    throw EInOutError(Format(u"Von der Datei %s lässt sich keine Kopie anlegen.", {FFileName}));
  }
  const std::string bytes = ReadFileBytes(BackupName());
  WriteFileAtomically(FFileName, bytes, ModeOf(ToUtf8(BackupName())));
}

void TDataFileGuard::CheckRoom() const {
  std::error_code error;
  const auto path = std::filesystem::weakly_canonical(ToUtf8(FFileName), error);
  const auto size = std::filesystem::file_size(path, error);
  TFileWriter writer(error ? ToUtf8(FFileName) : path.string());
  writer.Write(std::string((error ? 0 : size) + cGrowth, '\0'), cPrivate);
}

void TDataFileGuard::Check(const TString& iFileName) {
  auto streams = TFileCompression::ReadPacked(iFileName);
  uint64_t unpacked = 0;
  for (const auto& stream : streams) {
    unpacked += std::min(stream->GetPacked()->UnpackedSize, cMaxUnpacked);
    if (unpacked > cMaxUnpacked) throw EInOutError(u"Die Einträge sind zusammen zu groß");
  }
  bool hasCategories = false;
  for (auto& stream : streams) {
    CheckEntry(stream->GetName(), stream->GetStream());
    hasCategories = hasCategories || stream->GetName() == cCategories;
    stream.reset();  // one entry at a time in memory
  }
  if (!hasCategories) throw EInOutError(u"Die Kategorien fehlen");
}

TString TDataFileGuard::PutAsideIfDamaged() const {
  if (!IsThere(FFileName)) return {};
  TString text;
  try {
    const std::string readable = ReadFileBytes(FFileName);
  } catch (const EInOutError& e) {
    return e.Message();  // nothing that could be copied
  }
  try {
    Check(FFileName);
    return {};
  } catch (const std::exception& e) {
    text = Format(u"Die Datei %s ist beschädigt: %s", {FFileName, ToSingleLine(MessageOf(e))});
  }
  const TString copy = PutAside(FFileName);
  if (copy.empty()) return text + u"\r\nEine Kopie konnte nicht angelegt werden.";
  text += Format(u"\r\nEine Kopie liegt in %s.", {copy});
  // The next save makes the damaged file the backup.
  const TString backup = FileExists(BackupName()) ? PutAside(BackupName()) : TString();
  if (!backup.empty()) {
    text += Format(u"\r\nDer Stand vor dem letzten Speichern liegt in %s.", {backup});
  }
  return text;
}

}  // namespace kk
