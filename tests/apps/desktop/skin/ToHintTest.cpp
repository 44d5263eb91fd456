#include "apps/desktop/skin/ToHint.h"

#include <gtest/gtest.h>

#include <QTextDocument>

#include "apps/desktop/skin/QtText.h"

namespace kk {
namespace {

TString Shown(TStringView iText) {
  QTextDocument document;
  document.setHtml(ToHint(iText));
  return FromQt(document.toPlainText());
}

TEST(ToHint, NothingIsNoHint) { EXPECT_TRUE(ToHint({}).isEmpty()); }

TEST(ToHint, ShowsTheTextWordForWord) {
  EXPECT_EQ(Shown(u"<b>Preis & Größe</b>\r\nzweite"), u"<b>Preis & Größe</b>\nzweite");
}

TEST(ToHint, CutsOffWhatWouldCoverTheWindow) {
  EXPECT_EQ(Shown(TString(2000, u'x')), TString(2000, u'x'));
  EXPECT_EQ(Shown(TString(10000, u'x')), TString(2000, u'x') + u'…');
}

TEST(ToHint, CutsNoCharacterInTwo) {
  const TString rest(20, u'y');
  EXPECT_EQ(Shown(TString(1999, u'x') + u"\U0001F600" + rest), TString(1999, u'x') + u'…');
  EXPECT_EQ(Shown(TString(1998, u'x') + u"\U0001F600" + rest),
            TString(1998, u'x') + u"\U0001F600…");
}

}  // namespace
}  // namespace kk
