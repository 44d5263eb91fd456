#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <cerrno>
#include <cstdlib>

#include "host/common/Images.h"
#include "host/common/OpenURL.h"
#include "host/common/PlaySound.h"
#include "tests/support/TFakeOpener.h"
#include "tests/support/TLogRecorder.h"
#include "tests/support/TTempFolder.h"

namespace kk {
namespace {

using testing::ElementsAre;

TEST(OpenURL, OpensWebAndMailAddresses) {
  TFakeOpener opener;
  const TLogRecorder log;
  OpenURL(u"https://example.org/a?b=c&d=(e)#f", true);
  OpenURL(u"HTTP://example.org", false);
  OpenURL(u"mailto:a@example.org", true);
  EXPECT_THAT(opener.Urls, ElementsAre("https://example.org/a?b=c&d=(e)#f", "HTTP://example.org",
                                       "mailto:a@example.org"));
  EXPECT_TRUE(log.Lines().empty());
}

TEST(OpenURL, RefusesEverythingElseAndSaysSo) {
  TFakeOpener opener;
  const TString tooLong = u"http://" + TString(33 * 1024, u'x');
  for (const TString& url :
       {TString(), TString(u"file:///etc/passwd"), TString(u"javascript:alert(1)"), TString(u"-x"),
        TString(u"--help"), TString(u"/bin/sh"), TString(u" http://a"), TString(u"http:"),
        TString(u"http://"), TString(u"mailto:"), TString(u"httpx://a"), TString(u"http://a\nb"),
        TString(u"http://a\u007F"), TString(u"http://a\0b", 10), tooLong}) {
    const TLogRecorder log;
    OpenURL(url, true);
    ASSERT_EQ(log.Lines().size(), 1u) << ToUtf8(url);
    EXPECT_THAT(log.Lines()[0], testing::StartsWith("error Host: Die Adresse wird nicht geöffnet"));
  }
  EXPECT_TRUE(opener.Urls.empty());
}

TEST(OpenURL, EncodesWhatHasNoPlaceInAnAddress) {
  TFakeOpener opener;
  OpenURL(u"http://a/ä b\"<>\\^`{|}%41😀", true);
  EXPECT_THAT(opener.Urls,
              ElementsAre("http://a/%C3%A4%20b%22%3C%3E%5C%5E%60%7B%7C%7D%41%F0%9F%98%80"));
}

TEST(OpenURL, LogsThatNothingCouldBeStarted) {
  TFakeOpener opener;
  opener.Works = false;
  const TLogRecorder log;
  OpenURL(u"http://a", true);
  EXPECT_THAT(log.Lines(), ElementsAre("error Host: Es lässt sich kein Browser öffnen (xdg-open)"));
}

class TXdgOpenTest : public testing::Test {
 protected:
  TXdgOpenTest() : FPath(std::getenv("PATH")) { setenv("PATH", FFolder.Path().c_str(), 1); }
  ~TXdgOpenTest() override { setenv("PATH", FPath.c_str(), 1); }
  TTempFolder FFolder;
  TLogRecorder FLog;
  std::string FPath;
};

TEST_F(TXdgOpenTest, StartsXdgOpenWithTheAddressAsItsOnlyArgumentAndNoShell) {
  // A named pipe, so that the test waits for just as long as the script takes.
  ASSERT_EQ(mkfifo(ToUtf8(FFolder.File(u"result")).c_str(), 0600), 0);
  FFolder.Write(u"xdg-open",
                "#!/bin/sh\nprintf '%s|%s' \"$#\" \"$1\" > '" + FFolder.Path() + "/result'\n");
  chmod(ToUtf8(FFolder.File(u"xdg-open")).c_str(), 0700);
  OpenURL(u"http://a/;touch$(x)&y", true);
  EXPECT_EQ(FFolder.Read(u"result"), "1|http://a/;touch$(x)&y");
  EXPECT_TRUE(FLog.Lines().empty());
}

TEST_F(TXdgOpenTest, SaysThatItIsNotInstalled) {
  OpenURL(u"http://a", true);
  EXPECT_THAT(FLog.Lines(),
              ElementsAre("error Host: Es lässt sich kein Browser öffnen (xdg-open)"));
}

TEST(PlaySound, SaysThatNoSoundOutputIsInstalled) {
  const TLogRecorder log;
  errno = 0;
  EXPECT_FALSE(PlaySound(u"/a.wav"));
  EXPECT_EQ(errno, ENODEV);
  EXPECT_THAT(log.Lines(), ElementsAre("error Host: Es ist keine Tonausgabe eingerichtet"));
}

TEST(PlaySound, AsksTheInstalledPlayer) {
  class TPlayer : public ISoundPlayer {
   public:
    bool Play(TStringView iFileName) override { return iFileName == u"/good.wav"; }
  } player;
  EXPECT_EQ(SetSoundPlayer(&player), nullptr);
  EXPECT_TRUE(PlaySound(u"/good.wav"));
  EXPECT_FALSE(PlaySound(u"/bad.wav"));
  EXPECT_EQ(SetSoundPlayer(nullptr), &player);
}

TEST(Images, AreKnownByTheNameOfTheirResource) {
  EXPECT_EQ(CreateBmp(u"watchlist", u"BELL").ResourceName, u"BELL");
  TBitmap bitmap;
  GetImageFromCommonResources(u"WATCHLISTTOOLBARBUTTONIMAGE", bitmap);
  EXPECT_EQ(bitmap.ResourceName, u"WATCHLISTTOOLBARBUTTONIMAGE");
}

}  // namespace
}  // namespace kk
