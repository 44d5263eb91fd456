#include "host/program/THostLock.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>

#include "tests/support/TTempFolder.h"

namespace kk {
namespace {

TEST(THostLock, KeepsTheFolderToOne) {
  TTempFolder data;
  const THostLock lock(FromUtf8(data.Path()));
  try {
    const THostLock another(FromUtf8(data.Path()));
    ADD_FAILURE() << "two have it";
  } catch (const EHostBusy& e) {
    EXPECT_EQ(ToUtf8(e.Message()), "Die Beobachtenliste in \"" + data.Path() +
                                       "\" ist gerade in einem anderen Aufruf offen. Bitte "
                                       "warten, bis er fertig ist.");
  }
}

TEST(THostLock, GivesItBack) {
  TTempFolder data;
  { const THostLock lock(FromUtf8(data.Path())); }
  EXPECT_NO_THROW(THostLock(FromUtf8(data.Path())));
}

TEST(THostLock, MakesTheFolder) {
  TTempFolder data;
  const std::string folder = data.Path() + "/neu/tief";
  const THostLock lock(FromUtf8(folder));
  EXPECT_TRUE(std::filesystem::is_directory(folder));
}

TEST(THostLock, SaysWhatKeepsItFromTheFolder) {
  TTempFolder data;
  data.Write(u"datei", "x");
  EXPECT_THROW(THostLock(FromUtf8(data.Path() + "/datei")), EInOutError);
  EXPECT_THROW(THostLock(FromUtf8(data.Path() + "/datei/darin")), EInOutError);
  std::filesystem::create_directory(data.Path() + "/kaufkobolde.lock");
  EXPECT_THROW(THostLock(FromUtf8(data.Path())), EInOutError);
}

}  // namespace
}  // namespace kk
