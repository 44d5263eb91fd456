#include "apps/desktop/shell/TDroppedText.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QMimeData>
#include <QUrl>

#include "apps/desktop/skin/QtText.h"
#include "tests/support/TTempFolder.h"

namespace kk {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

TEST(TDroppedText, AddressesOfTheWebAreText) {
  const auto word = TDroppedText::OfWord(u"https://shop.example/lampe");
  EXPECT_EQ(word.Text, u"https://shop.example/lampe");
  EXPECT_THAT(word.Files, IsEmpty());
}

TEST(TDroppedText, FilesAreKnownByTheirNamesOrBecauseTheyAreThere) {
  const TTempFolder folder;
  folder.Write(u"a.wch", "x");
  for (const TStringView name : {u"/etc/x", u"./x", u"../x"}) {
    EXPECT_THAT(TDroppedText::OfWord(name).Files, ElementsAre(TString(name)));
  }
  EXPECT_THAT(TDroppedText::OfWord(folder.File(u"a.wch")).Files,
              ElementsAre(folder.File(u"a.wch")));
  EXPECT_THAT(TDroppedText::OfWord(u"FILE:///tmp/%C3%A4").Files, ElementsAre(u"/tmp/ä"));
  EXPECT_EQ(TDroppedText::OfWord(u"lampe").Text, u"lampe");
}

TEST(TDroppedText, NothingComesOfAFileOnAnotherMachine) {
  EXPECT_TRUE(TDroppedText::OfWord(u"file:").IsEmpty());
}

TEST(TDroppedText, NameWithControlCharactersIsNoFile) {
  EXPECT_THAT(TDroppedText::OfWord(u"/tmp/a\nb").Files, IsEmpty());
}

TEST(TDroppedText, UrlsOfADropAreTakenAsTheyAre) {
  QMimeData dropped;
  dropped.setUrls({QUrl(ToQt(u"https://a.example/ä b")), QUrl::fromLocalFile(ToQt(u"/tmp/x.wch"))});
  const auto text = TDroppedText::OfMime(dropped);
  EXPECT_EQ(text.Text, u"https://a.example/%C3%A4%20b");
  EXPECT_THAT(text.Files, ElementsAre(u"/tmp/x.wch"));
}

TEST(TDroppedText, TextIsTakenLineByLine) {
  QMimeData pasted;
  pasted.setText(ToQt(u"  a.example \r\n\n file:///tmp/y.wch\nb"));
  const auto text = TDroppedText::OfMime(pasted);
  EXPECT_EQ(text.Text, u"a.example\nb");
  EXPECT_THAT(text.Files, ElementsAre(u"/tmp/y.wch"));
  EXPECT_TRUE(TDroppedText::OfMime(QMimeData()).IsEmpty());
}

TEST(TDroppedText, TooMuchIsCutOffAtALine) {
  QMimeData pasted;
  const TString line(TDroppedText::cMaxLength - 10, u'x');
  pasted.setText(ToQt(line + u"\n" + line + u"\nkurz"));
  EXPECT_EQ(TDroppedText::OfMime(pasted).Text, line + u"\nkurz");
  EXPECT_TRUE(TDroppedText::OfWord(TString(TDroppedText::cMaxLength + 1, u'x')).IsEmpty());
}

TEST(TDroppedText, ExportFilesEndInWch) {
  EXPECT_TRUE(TDroppedText::IsExportFile(u"/a/b.WCH"));
  EXPECT_FALSE(TDroppedText::IsExportFile(u".wch"));
  EXPECT_FALSE(TDroppedText::IsExportFile(u"/a/b.wch.exe"));
}

}  // namespace
}  // namespace kk
