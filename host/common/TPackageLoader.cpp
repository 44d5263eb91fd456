#include "host/common/TPackageLoader.h"

#include <dlfcn.h>
#include <link.h>

#include <algorithm>
#include <cstring>
#include <filesystem>
#include <utility>

#include "host/base/Exception.h"
#include "host/base/Log.h"
#include "host/common/TFileHelper.h"
#include "host/contract/PackageEntry.h"

namespace kk {

namespace fs = std::filesystem;

namespace {

constexpr TStringView cSender = u"Plugin";

template <class T>
bool ReadAt(const std::string& iBytes, size_t iOffset, T& oValue) {
  if (iOffset > iBytes.size() || iBytes.size() - iOffset < sizeof(T)) return false;
  std::memcpy(&oValue, iBytes.data() + iOffset, sizeof(T));
  return true;
}

// Every segment that is to be loaded lies in the file (System V ABI, chapters 4 and 5). The dynamic
// linker maps a file that was cut without a word, and the program ends at the first touch.
bool IsWholeSharedObject(const std::string& iBytes) {
  ElfW(Ehdr) header;
  if (!ReadAt(iBytes, 0, header) || std::memcmp(header.e_ident, ELFMAG, SELFMAG) != 0) return false;
  const int ownClass = sizeof(void*) == 8 ? ELFCLASS64 : ELFCLASS32;
  if (header.e_ident[EI_CLASS] != ownClass || header.e_type != ET_DYN) return false;
  for (size_t i = 0; i < header.e_phnum; ++i) {
    ElfW(Phdr) segment;
    if (!ReadAt(iBytes, header.e_phoff + i * sizeof segment, segment)) return false;
    const bool inside =
        segment.p_offset <= iBytes.size() && segment.p_filesz <= iBytes.size() - segment.p_offset;
    if (segment.p_type == PT_LOAD && !inside) return false;
  }
  return true;
}

void CheckFile(const TString& iFileName) {
  if (!IsWholeSharedObject(ReadFileBytes(iFileName))) {
    throw EInOutError(u"Die Datei ist beschädigt oder kein Paket für diesen Rechner");
  }
}

// A loaded shared object. It goes with this object, unless it is kept or its objects live on.
class TLibrary {
 public:
  explicit TLibrary(const TString& iFileName) : FObjects(LiveObjectCount()) {
    FHandle = dlopen(ToUtf8(iFileName).c_str(), RTLD_NOW | RTLD_LOCAL);
    if (FHandle != nullptr) return;
    throw EInOutError(Format(u"Die Datei ist beschädigt oder passt nicht zu diesem Programm (%s)",
                             {FromUtf8(dlerror())}));
  }
  ~TLibrary() {
    if (FHandle != nullptr && LiveObjectCount() <= FObjects) dlclose(FHandle);
  }
  TLibrary(const TLibrary&) = delete;
  TLibrary& operator=(const TLibrary&) = delete;

  void* Get() const { return FHandle; }
  void* Keep() { return std::exchange(FHandle, nullptr); }

  const TPackageEntry& Entry() const {
    const auto* entry = static_cast<const TPackageEntry*>(dlsym(FHandle, cPackageEntryName));
    if (entry == nullptr) throw EInOutError(u"Die Datei ist kein Paket: Ihr fehlt der Einstieg");
    if (entry->InterfaceVersion != cInterfaceVersion) {
      throw EInOutError(
          Format(u"Das Paket ist für Version %d der Schnittstellen gebaut, das Programm hat %d",
                 {static_cast<int64_t>(entry->InterfaceVersion),
                  static_cast<int64_t>(cInterfaceVersion)}));
    }
    if (entry->Register == nullptr) {
      throw EInOutError(u"Die Datei ist kein Paket: Ihr Einstieg ist leer");
    }
    return *entry;
  }

 private:
  int64_t FObjects;
  void* FHandle;
};

// What a package adds to Plugins(). It is taken out again, unless it is kept.
class TAdded {
 public:
  TAdded() : FBefore(Plugins().GetCount()) {}
  ~TAdded() {
    if (FKept) return;
    for (int i = Plugins().GetCount() - 1; i >= FBefore; --i) {
      Plugins().Remove(Plugins().GetItems(i));
    }
  }
  TAdded(const TAdded&) = delete;
  TAdded& operator=(const TAdded&) = delete;

  void Check() const {
    const int count = Plugins().GetCount();
    if (count == FBefore) throw EInOutError(u"Das Paket meldet kein Plug-in an");
    for (int i = FBefore; i < count; ++i) {
      if (!Plugins().GetItems(i)) throw EInOutError(u"Das Paket meldet ein leeres Plug-in an");
      const TGuid id = Plugins().GetItems(i)->GetId();
      for (int j = 0; j < i; ++j) {
        if (!SameGuid(Plugins().GetItems(j)->GetId(), id)) continue;
        throw EInOutError(
            Format(u"Ein Plug-in mit der Kennung %s ist schon geladen", {GUIDToString(id)}));
      }
    }
  }
  std::vector<TIntf<IPlugin>> Keep() {
    FKept = true;
    std::vector<TIntf<IPlugin>> added;
    for (int i = FBefore; i < Plugins().GetCount(); ++i) added.push_back(Plugins().GetItems(i));
    return added;
  }

 private:
  int FBefore;
  bool FKept = false;
};

// Code of others: whatever it raises becomes a text here, while its package is still loaded.
void RegisterOrRaise(const TPackageEntry& iEntry, const TAdded& iAdded) {
  TString reason;
  try {
    iEntry.Register();
    iAdded.Check();
    return;
  } catch (const EInOutError& e) {
    reason = e.Message();
  } catch (const std::exception& e) {
    reason = Format(u"Das Paket meldet einen Fehler: %s", {ToSingleLine(MessageOf(e))});
  } catch (...) {  // an exception of any type can come over the edge of a package
    reason = u"Das Paket meldet einen unbekannten Fehler";
  }
  throw EInOutError(reason);
}

}  // namespace

TPackageLoader::~TPackageLoader() { Unload(); }

void TPackageLoader::LoadFolder(TStringView iFolder) {
  std::vector<std::string> paths;
  std::error_code error;
  for (fs::directory_iterator i(ToUtf8(iFolder), error), end; !error && i != end;
       i.increment(error)) {
    if (i->path().extension() == ".so") paths.push_back(i->path().string());
  }
  if (error) LogError(cSender, u"Der Ordner %s lässt sich nicht lesen", {iFolder});
  std::sort(paths.begin(), paths.end());
  for (const std::string& path : paths) Load(FromUtf8(path));
}

bool TPackageLoader::Load(TStringView iFileName) {
  const TString fileName = FromUtf8(fs::absolute(ToUtf8(iFileName)).lexically_normal().string());
  try {
    LoadOrRaise(fileName);
  } catch (const EInOutError& e) {
    FRefused.push_back({fileName, e.Message()});
    LogError(cSender, u"Das Paket %s wird nicht geladen: %s", {fileName, e.Message()});
    return false;
  }
  FLoaded.push_back(fileName);
  LogInfo(cSender, u"Paket geladen: %s", {fileName});
  return true;
}

void TPackageLoader::LoadOrRaise(const TString& iFileName) {
  CheckFile(iFileName);
  TLibrary library(iFileName);
  const auto isSame = [&](const TPackage& iPackage) { return iPackage.Handle == library.Get(); };
  if (std::any_of(FPackages.begin(), FPackages.end(), isSame)) {
    throw EInOutError(u"Das Paket ist schon geladen");
  }
  TAdded added;
  RegisterOrRaise(library.Entry(), added);
  FPackages.push_back({nullptr, added.Keep()});
  FPackages.back().Handle = library.Keep();
}

void TPackageLoader::Unload() {
  if (FPackages.empty()) return;
  for (auto package = FPackages.rbegin(); package != FPackages.rend(); ++package) {
    while (!package->Plugins.empty()) {
      Plugins().Remove(package->Plugins.back());
      package->Plugins.pop_back();
    }
  }
  if (LiveObjectCount() == 0) {
    for (auto package = FPackages.rbegin(); package != FPackages.rend(); ++package) {
      dlclose(package->Handle);
    }
  } else {
    LogError(cSender, u"Es leben noch %d Objekte, die Pakete bleiben im Speicher",
             {LiveObjectCount()});
  }
  FPackages.clear();
  FLoaded.clear();
}

}  // namespace kk
