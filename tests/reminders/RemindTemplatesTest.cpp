#include "reminders/RemindTemplates.h"

#include <gtest/gtest.h>

#include "host/base/TLocale.h"
#include "host/common/TVersionHelper.h"
#include "plugin/texts/UnitKKPluginWatchlistResourceStrings.h"

namespace kk {
namespace {

class RemindTemplates : public testing::Test {
 protected:
  RemindTemplates() { SetLocaleName("de_DE"); }
  ~RemindTemplates() override { SetLocaleName({}); }

  const TDateTime FNow = EncodeDateTime({2026, 11, 20, 18, 30, 5, 0});
};

TEST_F(RemindTemplates, AreTheSystemsOwnTexts) {
  EXPECT_EQ(_resRemindEMailSubject, u"Kaufkobolde %MV%SV - Erinnerung an %s");
  EXPECT_EQ(_resRemindEMailBody,
            u"Sie wollten an %s erinnert werden.\r\n%s\r\n\r\n%s\r\n\r\nGesendet am %s mit "
            u"Kaufkobolde %MV%SV\r\n\r\nAlle Angaben ohne Gewähr");
  EXPECT_EQ(_resRemindSMS, u"Kaufkobolde %MV%SV - Erinnerung an %s");
}

TEST_F(RemindTemplates, SubjectNamesTheVersionAndTheCaption) {
  EXPECT_EQ(RemindEMailSubject(u"Uhr"), u"Kaufkobolde 7.0 - Erinnerung an Uhr");
}

TEST_F(RemindTemplates, BodyNamesCaptionTextLinkAndTheMoment) {
  EXPECT_EQ(RemindEMailBody(u"Uhr", u"endet bald", u"https://shop/1", FNow),
            u"Sie wollten an Uhr erinnert werden.\r\nendet bald\r\n\r\nhttps://shop/1\r\n\r\n"
            u"Gesendet am " +
                DateTimeToStr(FNow) + u" mit Kaufkobolde 7.0\r\n\r\nAlle Angaben ohne Gewähr");
}

TEST_F(RemindTemplates, LineBreaksOfEverySortLeaveTheBodyAsCrLf) {
  const TString body = RemindEMailBody(u"Uhr", u"eins\nzwei\rdrei\r\nvier", u"", FNow);
  EXPECT_NE(body.find(u"\r\neins\r\nzwei\r\ndrei\r\nvier\r\n\r\n\r\n\r\nGesendet"), TString::npos);
}

TEST_F(RemindTemplates, BodyHasNoBlanksAtItsEnds) {
  const TString body = RemindEMailBody(u"", u"", u"", FNow);
  EXPECT_TRUE(StartsWith(body, u"Sie wollten an  erinnert"));
  EXPECT_EQ(body.substr(body.size() - 6), u"Gewähr");
}

TEST_F(RemindTemplates, MarksInTheTextsOfAnArticleAreText) {
  EXPECT_EQ(RemindEMailSubject(u"100 %s %MV%SV %d"),
            u"Kaufkobolde 7.0 - Erinnerung an 100 %s %MV%SV %d");
  EXPECT_EQ(RemindSmsMessage(u"%MV %s"), u"Kaufkobolde 7.0 - Erinnerung an %MV %s");
  EXPECT_TRUE(StartsWith(RemindEMailBody(u"%s", u"%SV", u"%d", FNow),
                         u"Sie wollten an %s erinnert werden.\r\n%SV\r\n\r\n%d\r\n"));
}

TEST_F(RemindTemplates, ATextMessageGoesWholeHoweverLong) {
  const TString text(5000, u'x');
  EXPECT_EQ(RemindSmsMessage(text), u"Kaufkobolde 7.0 - Erinnerung an " + text);
}

}  // namespace
}  // namespace kk
