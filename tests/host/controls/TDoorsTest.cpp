#include <gtest/gtest.h>

#include "host/base/Exception.h"
#include "host/common/TKKCommonEmail.h"
#include "host/common/TKKCommonSms.h"
#include "host/common/TOutlook.h"
#include "host/controls/TfrmKKCommonNotifier.h"
#include "tests/support/TScriptedFormHost.h"

namespace kk {
namespace {

TEST(TDoors, WithoutASenderMailFailsAndSaysWhy) {
  TString error;
  EXPECT_FALSE(TKKCommonEmail::Send(u"s", u"b", u"a@b.example", u"c@d.example", u"n", error));
  EXPECT_EQ(error, u"Es ist kein Versand von E-Mails eingerichtet");
}

TEST(TDoors, WithoutASenderTextMessagesFailAndSayWhy) {
  TString error;
  TSMSResult result = TSMSResult::srOk;
  EXPECT_FALSE(TKKCommonSms::Send(u"m", u"1", result, error, TDateTime()));
  EXPECT_EQ(result, TSMSResult::srNotSetUp);
  EXPECT_EQ(error, u"Es ist kein Versand von SMS eingerichtet");
}

TEST(TDoors, WithoutACalendarThereIsNoCalendarObject) { EXPECT_THROW(CreateOutlook(), Exception); }

TEST(TDoors, WithoutANotifierDisplayRaises) {
  EXPECT_THROW(TfrmKKCommonNotifier::Display(TWindowPosition::wpDesktop, NewGuid(), u"", u"", u"",
                                             u"", u"", {}),
               Exception);
}

TEST(TDoors, TheFiveStringsOfANotificationKeepTheirRoles) {
  struct TRecorder : INotifier {
    void Display(const TNotification& iNotification) override { Last = iNotification; }
    TNotification Last;
  } recorder;
  INotifier* const before = SetNotifier(&recorder);
  const TGuid id = NewGuid();
  TfrmKKCommonNotifier::Display(TWindowPosition::wpDesktopLasting, id, u"Titel", u"Link",
                                u"Linktext", u"Text", u"Worum", {});
  SetNotifier(before);
  EXPECT_EQ(recorder.Last.Position, TWindowPosition::wpDesktopLasting);
  EXPECT_EQ(recorder.Last.Id, id);
  EXPECT_EQ(recorder.Last.Title, u"Titel");
  EXPECT_EQ(recorder.Last.Link, u"Link");
  EXPECT_EQ(recorder.Last.LinkText, u"Linktext");
  EXPECT_EQ(recorder.Last.Text, u"Text");
  EXPECT_EQ(recorder.Last.Caption, u"Worum");
}

TEST(TOpenDialog, OkGivesTheFileAndACancelKeepsTheOldOne) {
  TScriptedFormHost forms;
  forms.ExpectOpenDialog(u"Bitte wählen", u"/neu.wav").ExpectOpenDialog(u"Bitte wählen", u"");
  TOpenDialog dialog{u"Bitte wählen", u"Ton (*.wav)|*.wav", true, u"/alt.wav"};
  EXPECT_TRUE(dialog.Execute());
  EXPECT_EQ(dialog.FileName, u"/neu.wav");
  EXPECT_EQ(forms.LastOpenDialog().FileName, u"/alt.wav");
  EXPECT_FALSE(dialog.Execute());
  EXPECT_EQ(dialog.FileName, u"/neu.wav");
}

}  // namespace
}  // namespace kk
