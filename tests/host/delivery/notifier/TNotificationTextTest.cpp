#include "host/delivery/notifier/TNotificationText.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

namespace kk {
namespace {

TNotification Make(TStringView iTitle, TStringView iCaption, TStringView iText = {}) {
  TNotification notification;
  notification.Title = iTitle;
  notification.Caption = iCaption;
  notification.Text = iText;
  return notification;
}

TEST(TNotificationText, TheSummaryIsTitleAndCaption) {
  EXPECT_EQ(TNotificationText::Summary(Make(u"Erinnerung", u"Lampe")), "Erinnerung: Lampe");
  EXPECT_EQ(TNotificationText::Summary(Make(u"Erinnerung", u"")), "Erinnerung");
  EXPECT_EQ(TNotificationText::Summary(Make(u"", u"Lampe")), "Lampe");
}

TEST(TNotificationText, ASummaryIsNeverEmpty) {
  EXPECT_EQ(TNotificationText::Summary(Make(u"", u" \n\0")), "Kaufkobolde");
}

TEST(TNotificationText, TheSummaryIsOneLineAndNoMarkup) {
  EXPECT_EQ(TNotificationText::Summary(Make(u"Erinnerung", u"<b>rot</b>\r\n& grün\u0007")),
            "Erinnerung: <b>rot</b> & grün");
}

TEST(TNotificationText, TheBodyIsTheTextWithItsLines) {
  EXPECT_EQ(TNotificationText::Body(Make(u"T", u"C", u"eins\r\nzwei\rdrei\n"), false, false),
            "eins\nzwei\ndrei");
}

TEST(TNotificationText, ACaptionThatTheSummaryCutsStandsWholeInTheBody) {
  const TString caption(110, u'x');
  const TNotification notification = Make(u"Erinnerung", caption, u"Text");
  EXPECT_EQ(TNotificationText::Summary(notification), "Erinnerung: " + std::string(107, 'x') + "…");
  EXPECT_EQ(TNotificationText::Body(notification, false, false), ToUtf8(caption) + "\nText");
  EXPECT_EQ(TNotificationText::Body(Make(u"Erinnerung", TString(108, u'x')), false, false), "");
}

TEST(TNotificationText, MarkupIsEscapedWhereTheServiceReadsIt) {
  const TNotification notification = Make(u"T", u"C", u"<b>&amp;</b>");
  EXPECT_EQ(TNotificationText::Body(notification, true, false), "&lt;b&gt;&amp;amp;&lt;/b&gt;");
  EXPECT_EQ(TNotificationText::Body(notification, false, false), "<b>&amp;</b>");
}

TEST(TNotificationText, TheLinkStandsBelowTheTextWhereItIsAskedFor) {
  TNotification notification = Make(u"T", u"C", u"Text");
  notification.Link = u"https://example.test/?a=1&b=2";
  EXPECT_EQ(TNotificationText::Body(notification, true, true),
            "Text\nhttps://example.test/?a=1&amp;b=2");
}

TEST(TNotificationText, AnActionAlwaysHasAText) {
  TNotification notification;
  EXPECT_EQ(TNotificationText::LinkText(notification), "Öffnen");
  notification.LinkText = u"Jetzt\nbesuchen";
  EXPECT_EQ(TNotificationText::LinkText(notification), "Jetzt besuchen");
}

TEST(TNotificationText, NothingIsCutThroughTheMiddleOfACharacter) {
  TString caption(118, u'x');
  caption += u"😀😀";
  EXPECT_EQ(TNotificationText::Summary(Make(u"", caption)), std::string(118, 'x') + "…");
}

TEST(TNotificationText, WhatTheBusRefusesIsReplaced) {
  const TString text = TString(u"a") + u'\xFFFE' + u'\xFFFF' + u'\xFDD0' + u'\xFDEF' + u'\xD83F' +
                       u'\xDFFF' + u'\xD800' + u"😀" + u'\xDC00' + u"z";
  EXPECT_EQ(TNotificationText::Body(Make(u"", u"", text), false, false),
            ToUtf8(u"a\uFFFD\uFFFD\uFFFD\uFFFD\uFFFD\uFFFD😀\uFFFDz"));
}

TEST(TNotificationText, AMillionCharactersBecomeAFewThousand) {
  const TString huge(1 << 20, u'<');
  TNotification notification = Make(huge, huge, huge);
  notification.Link = huge;
  notification.LinkText = huge;
  EXPECT_LT(TNotificationText::Summary(notification).size(), 130u);
  EXPECT_LT(TNotificationText::Body(notification, true, true).size(), 25000u);
  EXPECT_LT(TNotificationText::LinkText(notification).size(), 70u);
}

RC_GTEST_PROP(TNotificationText, WhateverTheTextsAreNoControlCharacterPasses, ()) {
  const auto any = [] {
    const auto units = *rc::gen::arbitrary<std::vector<uint16_t>>();
    return TString(units.begin(), units.end());
  };
  TNotification notification = Make(any(), any(), any());
  notification.LinkText = any();
  const auto check = [](const std::string& iText, bool iLines) {
    TString text = FromUtf8(iText);
    if (iLines) text = ReplaceAll(text, u"\n", u"");
    RC_ASSERT(WithoutControlCharacters(text) == text);
    RC_ASSERT(ToUtf8(FromUtf8(iText)) == iText);
  };
  check(TNotificationText::Summary(notification), false);
  check(TNotificationText::Body(notification, true, false), true);
  check(TNotificationText::LinkText(notification), false);
}

}  // namespace
}  // namespace kk
