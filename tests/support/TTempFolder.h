#pragma once

#include <string>
#include <vector>

#include "host/base/TString.h"

namespace kk {

/// A new empty folder that goes with the object. With iAsHostFolders all of the host's folders lie
/// in it while it lives.
class TTempFolder {
 public:
  explicit TTempFolder(bool iAsHostFolders = false);
  ~TTempFolder();
  TTempFolder(const TTempFolder&) = delete;
  TTempFolder& operator=(const TTempFolder&) = delete;

  const std::string& Path() const { return FPath; }
  /// Full path of a name in the folder.
  TString File(TStringView iName) const;
  void Write(TStringView iName, std::string_view iBytes) const;
  std::string Read(TStringView iName) const;
  bool Has(TStringView iName) const;
  /// The names in the folder, sorted.
  std::vector<std::string> Names() const;

 private:
  std::string FPath;
  bool FAsHostFolders;
};

}  // namespace kk
