#include "host/base/TLocale.h"

#include <unicode/locid.h>

#include <cstdlib>

namespace kk {

namespace {

std::string LocaleOfUser() {
  for (const char* variable : {"LC_ALL", "LC_TIME", "LANG"}) {
    const char* value = std::getenv(variable);
    if (value == nullptr || *value == '\0') continue;
    const std::string name(value);
    if (name == "C" || name == "POSIX" || name.rfind("C.", 0) == 0) break;
    return icu::Locale::createCanonical(value).getName();
  }
  return "de_DE";
}

std::string& CurrentName() {
  static std::string name = LocaleOfUser();
  return name;
}

}  // namespace

const std::string& LocaleName() { return CurrentName(); }

void SetLocaleName(const std::string& iName) {
  CurrentName() = iName.empty() ? LocaleOfUser() : iName;
}

}  // namespace kk
