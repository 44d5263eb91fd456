#include "host/common/TKKIniFile.h"

#include <sys/stat.h>

#include <filesystem>
#include <mutex>
#include <utility>

#include "host/base/Exception.h"
#include "host/base/Guard.h"
#include "host/common/TFileHelper.h"
#include "host/common/TIniText.h"

namespace kk {

namespace {

constexpr size_t cMaxSize = size_t{16} << 20;
constexpr unsigned cOnlyThisUser = 0600;

// By which a change on the disk shows.
struct TFileState {
  bool Exists = false;
  ino_t Node = 0;
  off_t Size = 0;
  int64_t Seconds = 0;
  int64_t NanoSeconds = 0;
  friend bool operator==(const TFileState&, const TFileState&) = default;
};

TFileState StateOf(const TString& iFileName) {
  struct stat info {};
  if (stat(ToUtf8(iFileName).c_str(), &info) != 0) return {};
  return {true, info.st_ino, info.st_size, info.st_mtim.tv_sec, info.st_mtim.tv_nsec};
}

TKKIniFile* installedFile = nullptr;

}  // namespace

struct TKKIniFile::TImpl {
  std::mutex Mutex;
  TString FileName;
  TIniText Text;
  bool IsLoaded = false;
  bool IsUnreadable = false;
  bool IsChanged = false;
  int Updates = 0;
  TFileState State;
  TNotifyEventListSecure NotifyOnChange;

  void Load();
  void Save();
  template <class Change>
  void Apply(Change&& iChange);
};

// Reads the file if it is not the one that was read last. What BeginUpdate has collected stays.
void TKKIniFile::TImpl::Load() {
  const TFileState state = StateOf(FileName);
  if (IsChanged || (IsLoaded && state == State)) return;
  Text = TIniText();
  State = state;
  IsLoaded = true;
  IsUnreadable = state.Exists && !Guarded(u"Host", [&] {
                   const std::string bytes = ReadFileBytes(FileName);
                   if (bytes.size() > cMaxSize)
                     throw EInOutError(u"Die Einstellungsdatei ist zu groß");
                   Text = TIniText(bytes);
                 });
  if (IsUnreadable) LogError(u"Host", u"Die Einstellungen lassen sich nicht lesen: %s", {FileName});
}

void TKKIniFile::TImpl::Save() {
  if (Updates > 0 || !IsChanged) return;
  IsChanged = false;
  IsLoaded = false;  // whatever happens, the next read shows what is on the disk
  if (IsUnreadable && PutAside(FileName).empty()) {
    throw EInOutError(
        Format(u"Die Einstellungen in %s lassen sich nicht lesen und werden nicht überschrieben",
               {FileName}));
  }
  MakeHostFolder(FromUtf8(std::filesystem::path(ToUtf8(FileName)).parent_path().string()));
  WriteFileAtomically(FileName, Text.ToBytes(), cOnlyThisUser);
  State = StateOf(FileName);
  IsLoaded = true;
  IsUnreadable = false;
}

template <class Change>
void TKKIniFile::TImpl::Apply(Change&& iChange) {
  const std::lock_guard lock(Mutex);
  Load();
  IsChanged = iChange(Text) || IsChanged;
  Save();
}

TKKIniFile::TKKIniFile(TStringView iFileName) : FImpl(std::make_unique<TImpl>()) {
  FImpl->FileName = iFileName;
}

TKKIniFile::~TKKIniFile() = default;

const TString& TKKIniFile::GetFileName() const { return FImpl->FileName; }

TString TKKIniFile::ReadString(TStringView iSection, TStringView iKey, TStringView iDefault) const {
  const std::lock_guard lock(FImpl->Mutex);
  FImpl->Load();
  return FImpl->Text.Find(iSection, iKey).value_or(TString(iDefault));
}

bool TKKIniFile::HasKey(TStringView iSection, TStringView iKey) const {
  const std::lock_guard lock(FImpl->Mutex);
  FImpl->Load();
  return FImpl->Text.Find(iSection, iKey).has_value();
}

void TKKIniFile::WriteString(TStringView iSection, TStringView iKey, TStringView iValue) {
  FImpl->Apply([&](TIniText& ioText) {
    if (ioText.Find(iSection, iKey) == TString(iValue)) return false;
    ioText.Set(iSection, iKey, iValue);
    return true;
  });
}

void TKKIniFile::DeleteKey(TStringView iSection, TStringView iKey) {
  FImpl->Apply([&](TIniText& ioText) { return ioText.Delete(iSection, iKey); });
}

void TKKIniFile::ReadSection(TStringView iSection, TStringList& ioKeys) const {
  const std::lock_guard lock(FImpl->Mutex);
  FImpl->Load();
  ioKeys.Clear();
  for (const auto& [key, value] : FImpl->Text.Values(iSection)) ioKeys.Add(key);
}

void TKKIniFile::ReadSectionValues(TStringView iSection, TStringList& ioLines) const {
  const std::lock_guard lock(FImpl->Mutex);
  FImpl->Load();
  ioLines.Clear();
  for (const auto& [key, value] : FImpl->Text.Values(iSection)) ioLines.Add(key + u"=" + value);
}

void TKKIniFile::ReadSections(TStringList& ioSections) const {
  const std::lock_guard lock(FImpl->Mutex);
  FImpl->Load();
  ioSections.Assign(FImpl->Text.Sections());
}

void TKKIniFile::WriteSectionValues(TStringView iSection, const TStringList& iLines) {
  std::vector<std::pair<TString, TString>> values;
  for (int i = 0; i < iLines.GetCount(); ++i) {
    values.emplace_back(iLines.GetName(i), iLines.GetValueFromIndex(i));
  }
  FImpl->Apply([&](TIniText& ioText) { return ioText.SetAll(iSection, values); });
}

void TKKIniFile::DeleteKeys(TStringView iSection, const TStringList& iKeys) {
  FImpl->Apply([&](TIniText& ioText) { return ioText.DeleteAll(iSection, iKeys.Lines()); });
}

void TKKIniFile::BeginUpdate() {
  const std::lock_guard lock(FImpl->Mutex);
  ++FImpl->Updates;
}

void TKKIniFile::EndUpdate() {
  const std::lock_guard lock(FImpl->Mutex);
  if (FImpl->Updates > 0) --FImpl->Updates;
  FImpl->Save();
}

void TKKIniFile::AddNotifyOnChange(const TNotifyEvent& iEvent) {
  FImpl->NotifyOnChange.Add(iEvent);
}

void TKKIniFile::RemoveNotifyOnChange(const TNotifyEvent& iEvent) {
  FImpl->NotifyOnChange.Remove(iEvent);
}

void TKKIniFile::NotifyChanged() { FImpl->NotifyOnChange.Fire(this); }

TKKIniFile& IniFile() {
  if (installedFile == nullptr) throw Exception(u"Es gibt keine Einstellungsdatei");
  return *installedFile;
}

TKKIniFile* SetIniFile(TKKIniFile* iFile) { return std::exchange(installedFile, iFile); }

}  // namespace kk
