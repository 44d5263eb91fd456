#include "host/base/TLocale.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <map>

namespace kk {
namespace {

// The three variables of the locale, set for the test and put back after it.
class TUsersLocale : public testing::Test {
 protected:
  TUsersLocale() {
    for (const char* name : {"LC_ALL", "LC_TIME", "LANG"}) {
      const char* value = std::getenv(name);
      if (value != nullptr) FBefore[name] = value;
      unsetenv(name);
    }
  }
  ~TUsersLocale() override {
    for (const char* name : {"LC_ALL", "LC_TIME", "LANG"}) unsetenv(name);
    for (const auto& [name, value] : FBefore) setenv(name.c_str(), value.c_str(), 1);
    SetLocaleName("");
  }

  static std::string Asked() {
    SetLocaleName("");
    return LocaleName();
  }

 private:
  std::map<std::string, std::string> FBefore;
};

TEST_F(TUsersLocale, IsGermanWhereNoneIsSet) { EXPECT_EQ(Asked(), "de_DE"); }

TEST_F(TUsersLocale, TheFirstVariableThatIsSetDecides) {
  setenv("LANG", "fr_FR.UTF-8", 1);
  EXPECT_EQ(Asked(), "fr_FR");
  setenv("LC_TIME", "en_GB.UTF-8", 1);
  EXPECT_EQ(Asked(), "en_GB");
  setenv("LC_ALL", "de_AT", 1);
  EXPECT_EQ(Asked(), "de_AT");
  setenv("LC_ALL", "", 1);
  EXPECT_EQ(Asked(), "en_GB") << "an empty one counts as not set";
}

TEST_F(TUsersLocale, TheMachinesOwnCountAsNone) {
  for (const char* name : {"C", "POSIX", "C.UTF-8"}) {
    setenv("LC_ALL", name, 1);
    EXPECT_EQ(Asked(), "de_DE") << name;
  }
}

TEST_F(TUsersLocale, CanBePinned) {
  setenv("LANG", "fr_FR.UTF-8", 1);
  SetLocaleName("de_CH");
  EXPECT_EQ(LocaleName(), "de_CH");
}

}  // namespace
}  // namespace kk
