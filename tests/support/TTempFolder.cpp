#include "tests/support/TTempFolder.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <stdexcept>

#include "host/common/TFileHelper.h"

namespace kk {

namespace fs = std::filesystem;

TTempFolder::TTempFolder(bool iAsHostFolders) : FAsHostFolders(iAsHostFolders) {
  std::string pattern = (fs::temp_directory_path() / "kk-test-XXXXXX").string();
  if (mkdtemp(pattern.data()) == nullptr) throw std::runtime_error("no temporary folder");
  FPath = pattern;
  const TString path = FromUtf8(FPath);
  if (FAsHostFolders) SetHostFolders({path, path, path, path, path});
}

TTempFolder::~TTempFolder() {
  if (FAsHostFolders) SetHostFolders({});
  std::error_code ignored;
  fs::remove_all(FPath, ignored);
}

TString TTempFolder::File(TStringView iName) const { return FromUtf8(FPath + "/" + ToUtf8(iName)); }

void TTempFolder::Write(TStringView iName, std::string_view iBytes) const {
  std::ofstream file(ToUtf8(File(iName)), std::ios::binary);
  file.write(iBytes.data(), static_cast<std::streamsize>(iBytes.size()));
}

std::string TTempFolder::Read(TStringView iName) const {
  std::ifstream file(ToUtf8(File(iName)), std::ios::binary);
  std::ostringstream bytes;
  bytes << file.rdbuf();
  return bytes.str();
}

bool TTempFolder::Has(TStringView iName) const { return fs::exists(ToUtf8(File(iName))); }

std::vector<std::string> TTempFolder::Names() const {
  std::vector<std::string> names;
  for (const auto& entry : fs::directory_iterator(FPath)) names.push_back(entry.path().filename());
  std::sort(names.begin(), names.end());
  return names;
}

}  // namespace kk
