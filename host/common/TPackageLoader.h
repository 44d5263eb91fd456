#pragma once

#include <memory>
#include <vector>

#include "host/base/TObject.h"
#include "host/contract/TPlugins.h"

namespace kk {

/// A package that was not loaded, and why, as a text for the user.
struct TRefusedPackage {
  TString FileName;
  TString Reason;
};

/// Loads packages: shared objects that register a plug-in (host/contract/PackageEntry.h). One that
/// can't be used is refused with a reason and a log line, and keeps none of the others from being
/// loaded. The host's main loop, log and services stand before. Main thread.
class TPackageLoader : public TObject {
 public:
  ~TPackageLoader() override;

  /// Loads every "*.so" of a folder, in order of the names' bytes.
  void LoadFolder(TStringView iFolder);
  /// Loads one package; false if it was refused. It is refused if it is no whole shared object of
  /// this machine, has no entry, was built for another version of the interfaces, raises in its
  /// registration, registers nothing, registers an id that is taken, or is loaded already. A
  /// plug-in that it had registered by then is taken out again.
  bool Load(TStringView iFileName);

  /// Full paths, in order of loading.
  const std::vector<TString>& Loaded() const { return FLoaded; }
  const std::vector<TRefusedPackage>& Refused() const { return FRefused; }

  /// Takes the plug-ins of the packages out of Plugins(), the last one first, and, if no object
  /// behind an interface is alive any more, unloads the packages; otherwise they stay in memory,
  /// and the log says so. The plug-ins must be uninitialised by now. Called by the destructor.
  void Unload();

 private:
  struct TPackage {
    void* Handle = nullptr;
    std::vector<TIntf<IPlugin>> Plugins;
  };
  void LoadOrRaise(const TString& iFileName);

  std::vector<TPackage> FPackages;
  std::vector<TString> FLoaded;
  std::vector<TRefusedPackage> FRefused;
};

}  // namespace kk
