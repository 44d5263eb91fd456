#include "settings/page/TframKKSettingsWatchlist.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cerrno>

#include "host/base/Exception.h"
#include "host/common/TFileHelper.h"
#include "host/controls/TForm.h"
#include "settings/TIniFileSectionWatchlist.h"
#include "settings/page/TSettingsNodeWatchlist.h"
#include "tests/support/TFaultyFileLayer.h"
#include "tests/support/TScriptedFormHost.h"
#include "tests/support/TSettingsWorld.h"

namespace kk {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

// The page in a window that its user sees.
class TSettingsPageTest : public TSettingsWorld {
 protected:
  TSettingsPageTest() {
    Frame.PutInto(&FForm);
    FForm.Show();
  }
  ~TSettingsPageTest() override { Frame.PutInto(nullptr); }

  TScriptedFormHost User;
  TForm FForm{nullptr, u"frmTest"};
  TIntf<TSettingsNodeWatchlist> Node = MakeIntf<TSettingsNodeWatchlist>();
  TframKKSettingsWatchlist& Frame = Node->GetFrame();
};

// The texts that stand in a control, in reading order.
void AddTexts(const TControl& iControl, TLines& ioTexts) {
  if (const auto* captioned = dynamic_cast<const TCaptionControl*>(&iControl)) {
    if (!captioned->Caption().empty()) ioTexts.push_back(ToUtf8(captioned->Caption()));
  }
  for (const TControl* child : iControl.Children()) AddTexts(*child, ioTexts);
}

// What a user has set, or can set, in the control; empty for one that is there to look at.
std::string ValueOf(const TControl& iControl) {
  if (const auto* box = dynamic_cast<const TCheckBox*>(&iControl))
    return box->Checked() ? "1" : "0";
  if (const auto* radio = dynamic_cast<const TRadioButton*>(&iControl)) {
    return radio->Checked() ? "1" : "0";
  }
  if (const auto* number = dynamic_cast<const TSpinEdit*>(&iControl)) {
    return std::to_string(number->Value());
  }
  if (const auto* list = dynamic_cast<const TComboBox*>(&iControl)) return ToUtf8(list->Text());
  if (const auto* edit = dynamic_cast<const TEdit*>(&iControl)) return ToUtf8(edit->Text());
  return {};
}

// "name value" of each control that has a value, in reading order.
TLines ShownIn(const TControl& iControl) {
  TLines values;
  if (const std::string value = ValueOf(iControl); !value.empty()) {
    values.push_back(ToUtf8(iControl.Name()) + " " + value);
  }
  for (const TControl* child : iControl.Children()) {
    for (const std::string& value : ShownIn(*child)) values.push_back(value);
  }
  return values;
}

TLines EntriesOf(const TComboBox& iList) {
  TLines texts;
  for (const TString& entry : iList.Items()) texts.push_back(ToUtf8(entry));
  return texts;
}

TEST_F(TSettingsPageTest, ItsNodeHasItsIdentity) {
  EXPECT_EQ(GUIDToString(Node->GetId()), u"{4039E44B-70D4-41D3-86E6-C8CB02CD59FA}");
  EXPECT_EQ(Node->GetCaption(), u"Beobachten");
  EXPECT_EQ(Node->GetSortOrder(), 0);
  EXPECT_TRUE(Supports<ISettingsNode>(TIntf<ISettingsNode>(Node)));
  EXPECT_EQ(&TIntf<ISettingsNode>(Node)->GetFrame(), &Frame);
}

TEST_F(TSettingsPageTest, ItsTextsStandFromTopToBottom) {
  TLines texts;
  AddTexts(Frame, texts);
  EXPECT_THAT(
      texts, ElementsAre("Aktualisierung", "Einträge bei Programmstart aktualisieren",
                         "Einträge automatisch alle", "Stunden aktualisieren", "Darstellung",
                         "Kategorieauswahlfenster beim Hinzufügen von Einträgen anzeigen",
                         "Anzahl der Einträge hinter Kategorien anzeigen",
                         "Dabei auch Einträge in untergeordneten Kategorien berücksichtigen",
                         "Voreinstellung Erinnerung", "Sounddatei", "...",
                         "Zuletzt ausgewählte Sounddatei speichern",
                         "Beim Hinzufügen immer automatisch Erinnerung aktivieren (sofern möglich)",
                         "Immer den zuletzt gewählten Zeitpunkt nutzen",
                         "Immer folgende Standardeinstellungen nutzen:", "Benachrichtigung",
                         "Nach Ablauf von", "Std", "Min", "Sek", "vor Ablauf der Auktion"));
}

TEST_F(TSettingsPageTest, WhatBelongsTogetherStandsInARowAndWhatBelongsToAChoiceIsIndented) {
  EXPECT_EQ(Frame.Arrangement(), TArrangement::arColumn);
  for (const TPanel* row : {&Frame.pnlInterval, &Frame.pnlSoundfile, &Frame.pnlDefaults,
                            &Frame.pnlRemindType, &Frame.pnlTimeSpan, &Frame.pnlTimeRelative}) {
    EXPECT_EQ(row->Arrangement(), TArrangement::arRow) << ToUtf8(row->Name());
  }
  EXPECT_TRUE(Frame.edtSoundfile.Stretches());
  EXPECT_THAT(Frame.pnlDefaults.Children(),
              ElementsAre(&Frame.pnlIndent, &Frame.pnlDefaultReminderSettings));
  EXPECT_GT(Frame.pnlIndent.MinWidth(), 0);
}

TEST_F(TSettingsPageTest, ItsListsAreToChooseFrom) {
  EXPECT_FALSE(Frame.cmbxRemindType.Editable());
  EXPECT_FALSE(Frame.cmbxTimeRelative.Editable());
  EXPECT_THAT(EntriesOf(Frame.cmbxRemindType), ElementsAre("Nur Sound", "Meldungsfenster"));
  EXPECT_THAT(EntriesOf(Frame.cmbxTimeRelative),
              ElementsAre("1 Minute", "2 Minuten", "5 Minuten", "10 Minuten", "15 Minuten",
                          "30 Minuten", "1 Stunde", "2 Stunden", "3 Stunden", "4 Stunden",
                          "5 Stunden", "6 Stunden", "12 Stunden", "1 Tag"));
}

TEST_F(TSettingsPageTest, AFreshFileShowsTheDefaults) {
  Node->LoadSettings();
  EXPECT_THAT(ShownIn(Frame),
              ElementsAre("chckbxUpdateOnStartup 0", "chckbxUpdateOnInterval 0",
                          "spnedtInterval 24", "chckbxShowAddDialog 1", "chckbxShowItemCount 1",
                          "chckbxShowItemCountRecursive 1",
                          "edtSoundfile " + ToUtf8(TFileHelper::GetLocalFileName(u"remind.wav")),
                          "chckbxStoreLastSelectedSoundfile 1", "chckbxAutoActivateReminder 0",
                          "rdbtnUseLastSettings 1", "rdbtnUseDefaultSettings 0",
                          "cmbxRemindType Meldungsfenster", "rdbtnTimeSpan 0", "spnedtHours 1",
                          "spnedtMinutes 0", "spnedtSeconds 0", "rdbtnTimeRelative 1",
                          "cmbxTimeRelative 1 Minute"));
  Node->SaveSettings();
  EXPECT_THAT(Stored(), IsEmpty()) << "nothing was changed";
}

TEST_F(TSettingsPageTest, WhatIsStoredIsShown) {
  TIniFileSectionWatchlist section;
  section.SetUpdateOnStartup(true);
  section.SetUpdateOnInterval(true);
  section.SetUpdateIntervalInHrs(7);
  section.SetShowAddDialog(false);
  section.SetShowItemCountInTree(false);
  section.SetShowItemCountInTreeRecursive(false);
  section.SetSoundFile(u"/x.wav");
  section.SetStoreLastSelectedSoundFile(false);
  section.SetAutoActivateReminder(true);
  section.SetUseDefaultReminderTimes(true);
  section.SetDefaultRemindType(0);
  section.SetDefaultReminderAfterTime(true);
  section.SetDefaultReminderHours(2);
  section.SetDefaultReminderMinutes(3);
  section.SetDefaultReminderSeconds(-4);
  section.SetRelativeTimeIndex(13);
  Node->LoadSettings();
  EXPECT_THAT(
      ShownIn(Frame),
      ElementsAre("chckbxUpdateOnStartup 1", "chckbxUpdateOnInterval 1", "spnedtInterval 7",
                  "chckbxShowAddDialog 0", "chckbxShowItemCount 0",
                  "chckbxShowItemCountRecursive 0", "edtSoundfile /x.wav",
                  "chckbxStoreLastSelectedSoundfile 0", "chckbxAutoActivateReminder 1",
                  "rdbtnUseLastSettings 0", "rdbtnUseDefaultSettings 1", "cmbxRemindType Nur Sound",
                  "rdbtnTimeSpan 1", "spnedtHours 2", "spnedtMinutes 3", "spnedtSeconds -4",
                  "rdbtnTimeRelative 0", "cmbxTimeRelative 1 Tag"));
  const TLines before = Stored();
  Node->SaveSettings();
  EXPECT_EQ(Stored(), before);
}

// Changes every control by its user's door.
void ChangeAll(TframKKSettingsWatchlist& ioFrame) {
  EXPECT_TRUE(ioFrame.chckbxUpdateOnStartup.Click());
  EXPECT_TRUE(ioFrame.chckbxUpdateOnInterval.Click());
  EXPECT_TRUE(ioFrame.spnedtInterval.EnterValue(7));
  EXPECT_TRUE(ioFrame.chckbxShowAddDialog.Click());
  EXPECT_TRUE(ioFrame.chckbxShowItemCountRecursive.Click());
  EXPECT_TRUE(ioFrame.chckbxShowItemCount.Click());
  EXPECT_TRUE(ioFrame.edtSoundfile.EnterText(u"/x.wav"));
  EXPECT_TRUE(ioFrame.chckbxStoreLastSelectedSoundfile.Click());
  EXPECT_TRUE(ioFrame.chckbxAutoActivateReminder.Click());
  EXPECT_TRUE(ioFrame.rdbtnUseDefaultSettings.Click());
  EXPECT_TRUE(ioFrame.cmbxTimeRelative.Select(5));
  EXPECT_TRUE(ioFrame.rdbtnTimeSpan.Click());
  EXPECT_TRUE(ioFrame.spnedtHours.EnterValue(2));
  EXPECT_TRUE(ioFrame.spnedtMinutes.EnterValue(3));
  EXPECT_TRUE(ioFrame.spnedtSeconds.EnterValue(-4));
  EXPECT_TRUE(ioFrame.cmbxRemindType.Select(0));
}

TEST_F(TSettingsPageTest, SavesInItsOrderAndAtOnce) {
  Node->LoadSettings();
  ChangeAll(Frame);
  TFaultyFileLayer layer;
  Node->SaveSettings();
  EXPECT_THAT(
      Stored(),
      ElementsAre("UpdateOnStartup=1", "UpdateOnInterval=1", "UpdateIntervalInHrs=7",
                  "ShowItemCountInTree=0", "ShowItemCountInTreeRecursive=0", "ShowAddDialog=0",
                  "StoreLastSelectedSoundFile=0", "SoundFile=/x.wav", "AutoActivateReminder=1",
                  "UseDefaultReminderTimes=1", "DefaultReminderAfterTime=1",
                  "DefaultReminderHours=2", "DefaultReminderMinutes=3", "DefaultReminderSeconds=-4",
                  "RelativeTimeInMinutes=5", "DefaultRemindType=0"));
  EXPECT_EQ(std::ranges::count(layer.Calls(), "rename"), 1);
}

TEST_F(TSettingsPageTest, AWriteThatFailsIsToldAndSavesNothing) {
  Node->LoadSettings();
  ChangeAll(Frame);
  TFaultyFileLayer layer;
  layer.FailAll("write", ENOSPC);
  EXPECT_THROW(Node->SaveSettings(), EInOutError);
  EXPECT_THAT(Stored(), IsEmpty());
}

TEST_F(TSettingsPageTest, TheTimeUsedLastIsStoredAsNoDefaults) {
  TIniFileSectionWatchlist section;
  section.SetAutoActivateReminder(true);
  section.SetUseDefaultReminderTimes(true);
  Node->LoadSettings();
  EXPECT_TRUE(Frame.rdbtnUseLastSettings.Click());
  EXPECT_FALSE(Frame.rdbtnUseDefaultSettings.Checked());
  Node->SaveSettings();
  EXPECT_FALSE(section.GetUseDefaultReminderTimes());
}

TEST_F(TSettingsPageTest, NothingIsEverRefused) {
  Frame.edtSoundfile.EnterText(u"/no/such/file");
  TString message = u"x";
  TControl* control = &Frame;
  EXPECT_TRUE(Node->ValidateSettings(message, control));
  EXPECT_EQ(message, u"");
  EXPECT_EQ(control, nullptr);
}

TEST_F(TSettingsPageTest, ChangedSettingsOfOthersMeanNothingToIt) {
  Node->LoadSettings();
  Frame.edtSoundfile.EnterText(u"/x.wav");
  TIniFileSectionWatchlist().SetUpdateOnStartup(true);
  Node->SettingsChanged();
  Frame.SettingsChanged();
  EXPECT_EQ(Frame.edtSoundfile.Text(), u"/x.wav");
  EXPECT_FALSE(Frame.chckbxUpdateOnStartup.Checked());
}

// Bounds.

TEST_F(TSettingsPageTest, TheIntervalHasBoundsAndTheOtherNumbersHaveNone) {
  TIniFileSectionWatchlist section;
  section.SetUpdateOnInterval(true);
  section.SetUpdateIntervalInHrs(5000);
  Node->LoadSettings();
  EXPECT_EQ(Frame.spnedtInterval.Value(), 1000);
  Frame.spnedtInterval.EnterValue(0);
  EXPECT_EQ(Frame.spnedtInterval.Value(), 1);
  for (TSpinEdit* number : {&Frame.spnedtHours, &Frame.spnedtMinutes, &Frame.spnedtSeconds}) {
    number->SetValue(100'000);
    EXPECT_EQ(number->Value(), 100'000);
    number->SetValue(-100'000);
    EXPECT_EQ(number->Value(), -100'000);
  }
  Node->SaveSettings();
  EXPECT_EQ(section.GetUpdateIntervalInHrs(), 1);
  EXPECT_EQ(section.GetDefaultReminderHours(), 0) << "the settings have bounds";
  EXPECT_EQ(section.GetDefaultReminderSeconds(), -100'000);
}

// What can be used.

TEST_F(TSettingsPageTest, TheIntervalCanBeSetWhileItIsUsed) {
  Node->LoadSettings();
  EXPECT_FALSE(Frame.spnedtInterval.Enabled());
  EXPECT_TRUE(Frame.lblInterval.Enabled());
  Frame.chckbxUpdateOnInterval.Click();
  EXPECT_TRUE(Frame.spnedtInterval.Enabled());
  Frame.chckbxUpdateOnInterval.Click();
  EXPECT_FALSE(Frame.spnedtInterval.Enabled());
  TIniFileSectionWatchlist().SetUpdateOnInterval(true);
  Node->LoadSettings();
  EXPECT_TRUE(Frame.spnedtInterval.Enabled());
}

TEST_F(TSettingsPageTest, SubCategoriesCountWhereNumbersAreShown) {
  Node->LoadSettings();
  EXPECT_TRUE(Frame.chckbxShowItemCountRecursive.Enabled());
  Frame.chckbxShowItemCount.Click();
  EXPECT_FALSE(Frame.chckbxShowItemCountRecursive.Enabled());
  EXPECT_TRUE(Frame.chckbxShowItemCountRecursive.Checked());
  Frame.chckbxShowItemCount.Click();
  EXPECT_TRUE(Frame.chckbxShowItemCountRecursive.Enabled());
  TIniFileSectionWatchlist().SetShowItemCountInTree(false);
  Node->LoadSettings();
  EXPECT_FALSE(Frame.chckbxShowItemCountRecursive.Enabled());
}

// The box, the default settings and the time span: are they chosen? And is the page loaded so, or
// clicked together?
class TEnablingTest : public TSettingsPageTest,
                      public testing::WithParamInterface<std::tuple<bool, bool, bool, bool>> {
 protected:
  void Choose(bool iAutomatic, bool iDefaults, bool iSpan, bool iByClicks) {
    TIniFileSectionWatchlist section;
    if (iByClicks) {
      // From the opposites on, by the user's doors. Only what is enabled can be clicked.
      section.SetAutoActivateReminder(true);
      section.SetUseDefaultReminderTimes(true);
      section.SetDefaultReminderAfterTime(!iSpan);
      Node->LoadSettings();
      EXPECT_TRUE((iSpan ? Frame.rdbtnTimeSpan : Frame.rdbtnTimeRelative).Click());
      if (!iDefaults) Frame.rdbtnUseLastSettings.Click();
      if (!iAutomatic) Frame.chckbxAutoActivateReminder.Click();
      return;
    }
    section.SetAutoActivateReminder(iAutomatic);
    section.SetUseDefaultReminderTimes(iDefaults);
    section.SetDefaultReminderAfterTime(iSpan);
    Node->LoadSettings();
  }
};

TEST_P(TEnablingTest, FollowsTheTable) {
  const auto [automatic, defaults, span, byClicks] = GetParam();
  Choose(automatic, defaults, span, byClicks);
  const auto expect = [](bool iEnabled, std::initializer_list<TControl*> iControls) {
    for (TControl* control : iControls) {
      EXPECT_EQ(control->Enabled(), iEnabled) << ToUtf8(control->Name());
    }
  };
  expect(automatic, {&Frame.rdbtnUseLastSettings, &Frame.rdbtnUseDefaultSettings});
  expect(automatic && defaults, {&Frame.rdbtnTimeSpan, &Frame.rdbtnTimeRelative});
  expect(automatic && defaults && span,
         {&Frame.spnedtHours, &Frame.lblHours, &Frame.spnedtMinutes, &Frame.lblMinutes,
          &Frame.spnedtSeconds, &Frame.lblSeconds});
  expect(automatic && defaults && !span, {&Frame.cmbxTimeRelative});
  expect(automatic && defaults, {&Frame.lblTimeRelative, &Frame.cmbxRemindType, &Frame.Label3});
  expect(true, {&Frame.chckbxAutoActivateReminder, &Frame.edtSoundfile, &Frame.btnSoundfile,
                &Frame.lblSoundfile, &Frame.chckbxStoreLastSelectedSoundfile,
                &Frame.pnlDefaultReminderSettings});
}

INSTANTIATE_TEST_SUITE_P(AllChoices, TEnablingTest,
                         testing::Combine(testing::Bool(), testing::Bool(), testing::Bool(),
                                          testing::Bool()));

TEST_F(TSettingsPageTest, WhatIsGreyedIsSavedAsItIs) {
  TIniFileSectionWatchlist section;
  section.SetUseDefaultReminderTimes(true);
  section.SetDefaultReminderAfterTime(true);
  section.SetDefaultReminderHours(2);
  section.SetRelativeTimeIndex(5);
  section.SetDefaultRemindType(0);
  section.SetAutoActivateReminder(true);
  const TLines before = Stored();
  Node->LoadSettings();
  Frame.chckbxAutoActivateReminder.Click();
  EXPECT_FALSE(Frame.rdbtnUseLastSettings.Click());
  EXPECT_FALSE(Frame.spnedtHours.EnterValue(9));
  EXPECT_FALSE(Frame.cmbxRemindType.Select(1));
  Node->SaveSettings();
  section.SetAutoActivateReminder(true);
  EXPECT_EQ(Stored(), before) << "but the box";
}

TEST_F(TSettingsPageTest, TheTwoChoicesDoNotExcludeEachOther) {
  TIniFileSectionWatchlist().SetAutoActivateReminder(true);
  Node->LoadSettings();
  Frame.rdbtnUseDefaultSettings.Click();
  EXPECT_TRUE(Frame.rdbtnTimeRelative.Checked());
  Frame.rdbtnTimeSpan.Click();
  EXPECT_TRUE(Frame.rdbtnUseDefaultSettings.Checked());
  EXPECT_FALSE(Frame.rdbtnTimeRelative.Checked());
}

// The file dialog.

TEST_F(TSettingsPageTest, AnotherSoundIsLookedForFromTheOneThatStandsThere) {
  Node->LoadSettings();
  Frame.edtSoundfile.EnterText(u"/sounds/alt.wav");
  User.ExpectOpenDialog(u"Bitte Sounddatei auswählen", u"/sounds/neu.wav");
  EXPECT_TRUE(Frame.btnSoundfile.Click());
  EXPECT_EQ(User.LastOpenDialog().Filter, u"Sounddatei (*.wav)|*.wav");
  EXPECT_TRUE(User.LastOpenDialog().FileMustExist);
  EXPECT_FALSE(User.LastOpenDialog().ForSaving);
  EXPECT_EQ(User.LastOpenDialog().FileName, u"/sounds/alt.wav");
  EXPECT_EQ(Frame.edtSoundfile.Text(), u"/sounds/neu.wav");
  EXPECT_THAT(Stored(), IsEmpty()) << "it is saved with the page";
}

TEST_F(TSettingsPageTest, ACancelledFileDialogChangesNothing) {
  Frame.edtSoundfile.EnterText(u"/sounds/alt.wav");
  User.ExpectOpenDialog(u"Bitte Sounddatei auswählen", u"");
  Frame.btnSoundfile.Click();
  EXPECT_EQ(Frame.edtSoundfile.Text(), u"/sounds/alt.wav");
}

}  // namespace
}  // namespace kk
