#include <limits>

#include "TEditorWorld.h"

namespace kk {
namespace {

using testing::ElementsAre;

class EditorFilling : public TEditorWorld {
 protected:
  /// What the user sees in the editor; he leaves it at once.
  template <class T>
  T See(std::function<T(TEditor&)> iLook) {
    T seen{};
    EXPECT_FALSE(Edit([&](TEditor& form) { seen = iLook(form); }));
    return seen;
  }
  int SeeKind() {
    return See<int>([](TEditor& form) { return form.cmbxRemindType.ItemIndex(); });
  }
  std::vector<int> SeeSpan() {
    return See<std::vector<int>>([](TEditor& form) {
      return std::vector<int>{form.spnedtHours.Value(), form.spnedtMinutes.Value(),
                              form.spnedtSeconds.Value()};
    });
  }
  int SeeRelative() {
    return See<int>([](TEditor& form) { return form.cmbxTimeRelative.ItemIndex(); });
  }
};

std::vector<std::string> TextsOf(const TComboBox& iBox) {
  std::vector<std::string> texts;
  for (const TString& entry : iBox.Items()) texts.push_back(ToUtf8(entry));
  return texts;
}

std::string TimeShown(const TEditor& iForm) { return ToUtf8(iForm.stsbrTime.PanelText(1)); }

TEST_F(EditorFilling, TheWindowCarriesItsTexts) {
  Add();
  Edit([](TEditor& form) {
    EXPECT_EQ(form.Caption(), u"Erinnerung");
    EXPECT_EQ(form.lblRemindType.Caption(), u"Benachrichtigung");
    EXPECT_THAT(TextsOf(form.cmbxRemindType),
                ElementsAre("Nur Sound", "Meldungsfenster", "E-Mail", "Outlook", "SMS"));
    EXPECT_EQ(form.chckbxSoundfile.Caption(), u"");
    EXPECT_EQ(form.lblSoundfile.Caption(), u"Sounddatei");
    EXPECT_EQ(form.btnSoundfile.Caption(), u"...");
    EXPECT_EQ(form.rdbtnTimeSpan.Caption(), u"Nach Ablauf von");
    EXPECT_EQ(form.lblHours.Caption(), u"Stunden");
    EXPECT_EQ(form.lblMinutes.Caption(), u"Minuten");
    EXPECT_EQ(form.lblSeconds.Caption(), u"Sekunden");
    EXPECT_EQ(form.lblTimeRelative.Caption(), u"vor Ablauf der Auktion");
    EXPECT_THAT(TextsOf(form.cmbxTimeRelative),
                ElementsAre("1 Minute", "2 Minuten", "5 Minuten", "10 Minuten", "15 Minuten",
                            "30 Minuten", "1 Stunde", "2 Stunden", "3 Stunden", "4 Stunden",
                            "5 Stunden", "6 Stunden", "12 Stunden", "1 Tag"));
    EXPECT_EQ(form.stsbrTime.PanelText(0), u"ausgewählter Zeitpunkt: ");
    EXPECT_EQ(form.btnOK.Caption(), u"&OK");
    EXPECT_EQ(form.btnCancel.Caption(), u"&Abbrechen");
  });
}

TEST_F(EditorFilling, TheWindowOpensOverItsOwnerAndAnswersItsButtons) {
  Add();
  TForm owner(nullptr, u"owner");
  FHost.Expect<TEditor>([&](TEditor& form) {
    EXPECT_EQ(form.Owner(), &owner);
    EXPECT_EQ(form.Position(), TPosition::poOwnerFormCenter);
    EXPECT_EQ(form.FocusedControl(), &form.cmbxRemindType);
    EXPECT_TRUE(form.edtSoundFile.PressKey(cKeyEscape) || form.btnOK.PressKey(cKeyEscape));
  });
  EXPECT_FALSE(TEditor::Display(&owner, FLst));
  EXPECT_TRUE(Edit([](TEditor& form) { form.cmbxRemindType.PressKey(cKeyReturn); }));
}

TEST_F(EditorFilling, WithNothingToEditThereIsNoWindow) {
  EXPECT_FALSE(TEditor::Display(nullptr, FLst));
  EXPECT_EQ(FHost.ShownCount(), 0);
}

TEST_F(EditorFilling, TheListsAreOnlyChosenFrom) {
  Add();
  Edit([](TEditor& form) {
    EXPECT_FALSE(form.cmbxRemindType.EnterText(u"Fax"));
    EXPECT_FALSE(form.cmbxTimeRelative.EnterText(u"1 Jahr"));
  });
}

TEST_F(EditorFilling, TheKindIsTheRemindersAndAnyGoesBeforeSound) {
  TRemindItemForEdit& item = Add();
  const std::pair<TRemindType, int> places[] = {{rtSound, ekSound},
                                                {rtWindow, ekWindow},
                                                {rtSMS, ekSMS},
                                                {rtOutlook, ekOutlook},
                                                {rtEmail, ekEMail}};
  for (const auto& [type, place] : places) {
    item.SetRemindTypes({type});
    EXPECT_EQ(SeeKind(), place);
    item.SetRemindTypes({rtSound, type});
    EXPECT_EQ(SeeKind(), place);
  }
  item.SetRemindTypes({rtWindow, rtSMS, rtOutlook, rtEmail});
  EXPECT_EQ(SeeKind(), ekEMail) << "from e-mail down";
}

TEST_F(EditorFilling, ANewReminderHasTheKindUsedLast) {
  Add();
  EXPECT_EQ(SeeKind(), ekWindow) << "where none was used yet";
  const int places[] = {ekSound, ekWindow, ekSMS, ekOutlook, ekEMail};
  for (int type = 0; type < 5; ++type) {
    Store(u"RemindType", IntToStr(type));
    EXPECT_EQ(SeeKind(), places[type]);
  }
}

TEST_F(EditorFilling, AnUnknownKindInTheSettingsOpensOnTheWindow) {
  Add();
  for (const TString value : {u"5", u"7", u"20", u"99"}) {
    Store(u"RemindType", value);
    EXPECT_EQ(SeeKind(), ekWindow) << ToUtf8(value);
  }
}

TEST_F(EditorFilling, SettingsThatAreNoNumbersAreTheDefaults) {
  Add();
  for (const TStringView key :
       {u"RemindType", u"RemindTimeSpanOffsetInSecs", u"RemindTimeRelativeIndex"}) {
    Store(key, u"Unsinn");
  }
  EXPECT_EQ(SeeKind(), ekWindow);
  EXPECT_THAT(SeeSpan(), ElementsAre(1, 0, 0));
  EXPECT_EQ(SeeRelative(), 4);
}

TEST_F(EditorFilling, OnlyTheFirstReminderIsShown) {
  Add().SetRemindTypes({rtEmail});
  Add().SetRemindTypes({rtSMS});
  EXPECT_EQ(SeeKind(), ekEMail);
}

TEST_F(EditorFilling, TheRemindersSoundTicksTheBox) {
  Add().LstDetails().Add(std::make_unique<TRemindDetailsSound>(u"/a.wav"));
  Edit([](TEditor& form) {
    EXPECT_TRUE(form.chckbxSoundfile.Checked()) << "also without the kind: the details decide";
    EXPECT_EQ(form.edtSoundFile.Text(), u"/a.wav");
    EXPECT_TRUE(form.edtSoundFile.Enabled());
    EXPECT_TRUE(form.btnSoundfile.Enabled());
  });
}

TEST_F(EditorFilling, WithoutASoundTheSettingsFileIsProposedAndTheBoxIsNotTicked) {
  TRemindItemForEdit& item = Add();
  const auto look = [](const TString& iFile) {
    return [iFile](TEditor& form) {
      EXPECT_FALSE(form.chckbxSoundfile.Checked());
      EXPECT_EQ(form.edtSoundFile.Text(), iFile);
      EXPECT_FALSE(form.edtSoundFile.Enabled());
      EXPECT_FALSE(form.btnSoundfile.Enabled());
    };
  };
  Edit(look(FFolder.File(u"remind.wav")));
  Store(u"SoundFile", u"/b.wav");
  Edit(look(u"/b.wav"));
  item.LstDetails().Add(std::make_unique<TRemindDetailsSound>());
  Edit(look(u"/b.wav"));
}

TEST_F(EditorFilling, TheSpanUsedLastIsSplitAsATimeOfDay) {
  Add();
  EXPECT_THAT(SeeSpan(), ElementsAre(1, 0, 0)) << "where none was used yet";
  const std::pair<TString, std::vector<int>> cases[] = {
      {u"0", {0, 0, 0}},           {u"59", {0, 0, 59}},   {u"3725", {1, 2, 5}},
      {u"86399", {23, 59, 59}},    {u"86400", {0, 0, 0}}, {u"90000", {1, 0, 0}},
      {u"2147483647", {3, 14, 7}}, {u"-3600", {1, 0, 0}}, {u"-2147483648", {3, 14, 8}}};
  for (const auto& [seconds, span] : cases) {
    Store(u"RemindTimeSpanOffsetInSecs", seconds);
    EXPECT_EQ(SeeSpan(), span) << ToUtf8(seconds);
  }
}

TEST_F(EditorFilling, TheRelativeTimeIsTheOneUsedLast) {
  Add();
  EXPECT_EQ(SeeRelative(), 4) << "where none was used yet";
  for (int index = 0; index < 14; ++index) {
    Store(u"RemindTimeRelativeIndex", IntToStr(index));
    EXPECT_EQ(SeeRelative(), index);
  }
}

TEST_F(EditorFilling, ARelativeTimeBeyondTheListIsItsNearerEnd) {
  Add();
  for (const TString value : {u"14", u"99", u"2147483647"}) {
    Store(u"RemindTimeRelativeIndex", value);
    EXPECT_EQ(SeeRelative(), 13) << ToUtf8(value);
  }
  for (const TString value : {u"-1", u"-2147483648"}) {
    Store(u"RemindTimeRelativeIndex", value);
    EXPECT_EQ(SeeRelative(), 0) << ToUtf8(value);
  }
}

TEST_F(EditorFilling, AnEndOfTheAuctionOpensOnTheRelativeChoice) {
  Add();
  Edit([](TEditor& form) {
    EXPECT_TRUE(form.rdbtnTimeRelative.Checked());
    EXPECT_FALSE(form.rdbtnTimeSpan.Checked());
    EXPECT_TRUE(form.rdbtnTimeRelative.CanUse());
    EXPECT_TRUE(form.cmbxTimeRelative.CanUse());
    EXPECT_TRUE(form.lblTimeRelative.CanUse());
  });
}

TEST_F(EditorFilling, WithoutAnEndTheRelativeChoiceIsHidden) {
  Add(0);
  Edit([](TEditor& form) {
    EXPECT_TRUE(form.rdbtnTimeSpan.Checked());
    EXPECT_FALSE(form.rdbtnTimeRelative.Checked());
    EXPECT_FALSE(form.rdbtnTimeRelative.Visible());
    EXPECT_FALSE(form.cmbxTimeRelative.Visible());
    EXPECT_FALSE(form.lblTimeRelative.Visible());
    EXPECT_FALSE(form.rdbtnTimeRelative.Click());
  });
}

TEST_F(EditorFilling, TheOldTimeIsNotShown) {
  Add().SetRemindTime(In(12345));
  Edit([](TEditor& form) { EXPECT_EQ(TimeShown(form), "21.11.2026, 18:15:00"); });
}

TEST_F(EditorFilling, SoundAloneNeedsNoBox) {
  Add();
  Edit([](TEditor& form) {
    EXPECT_TRUE(form.chckbxSoundfile.Visible());
    EXPECT_FALSE(form.edtSoundFile.Enabled());
    form.cmbxRemindType.Select(ekSound);
    EXPECT_FALSE(form.chckbxSoundfile.Visible());
    EXPECT_TRUE(form.edtSoundFile.Enabled());
    EXPECT_TRUE(form.btnSoundfile.Enabled());
    for (const int kind : {ekWindow, ekEMail, ekOutlook, ekSMS}) {
      form.cmbxRemindType.Select(kind);
      EXPECT_TRUE(form.chckbxSoundfile.Visible());
      EXPECT_FALSE(form.edtSoundFile.Enabled());
    }
    EXPECT_TRUE(form.lblSoundfile.CanUse());
  });
}

TEST_F(EditorFilling, AReminderBySoundAloneOpensWithoutTheBox) {
  Add().SetRemindTypes({rtSound});
  Edit([](TEditor& form) {
    EXPECT_FALSE(form.chckbxSoundfile.Visible());
    EXPECT_TRUE(form.edtSoundFile.Enabled());
  });
}

TEST_F(EditorFilling, TheBoxEnablesTheFile) {
  Add();
  Edit([](TEditor& form) {
    form.chckbxSoundfile.Click();
    EXPECT_TRUE(form.edtSoundFile.Enabled());
    EXPECT_TRUE(form.btnSoundfile.Enabled());
    form.chckbxSoundfile.Click();
    EXPECT_FALSE(form.edtSoundFile.Enabled());
    EXPECT_FALSE(form.btnSoundfile.Click());
  });
}

TEST_F(EditorFilling, TheChosenWayToTellTheTimeIsEnabled) {
  Add();
  Edit([](TEditor& form) {
    const std::initializer_list<TControl*> span = {&form.spnedtHours,   &form.lblHours,
                                                   &form.spnedtMinutes, &form.lblMinutes,
                                                   &form.spnedtSeconds, &form.lblSeconds};
    const std::initializer_list<TControl*> relative = {&form.cmbxTimeRelative,
                                                       &form.lblTimeRelative};
    for (TControl* control : span) EXPECT_FALSE(control->Enabled());
    for (TControl* control : relative) EXPECT_TRUE(control->Enabled());
    form.rdbtnTimeSpan.Click();
    for (TControl* control : span) EXPECT_TRUE(control->Enabled());
    for (TControl* control : relative) EXPECT_FALSE(control->Enabled());
    EXPECT_TRUE(form.rdbtnTimeRelative.Visible()) << "only the opening hides it";
    form.rdbtnTimeRelative.Click();
    for (TControl* control : span) EXPECT_FALSE(control->Enabled());
  });
}

TEST_F(EditorFilling, EachChangeShowsTheTimeOfTheFirstReminder) {
  Add();
  Add(60);
  Edit([](TEditor& form) {
    EXPECT_EQ(TimeShown(form), "21.11.2026, 18:15:00");
    form.cmbxTimeRelative.Select(13);
    EXPECT_EQ(TimeShown(form), "20.11.2026, 18:30:00");
    form.rdbtnTimeSpan.Click();
    EXPECT_EQ(TimeShown(form), "20.11.2026, 19:30:00");
    form.spnedtHours.EnterValue(2);
    EXPECT_EQ(TimeShown(form), "20.11.2026, 20:30:00");
    form.spnedtMinutes.EnterValue(-1);
    EXPECT_EQ(TimeShown(form), "20.11.2026, 20:29:00");
    form.spnedtSeconds.EnterText(u"90");
    EXPECT_EQ(TimeShown(form), "20.11.2026, 20:30:30");
    form.rdbtnTimeRelative.Click();
    EXPECT_EQ(TimeShown(form), "20.11.2026, 18:30:00");
  });
}

TEST_F(EditorFilling, EachOfTheRelativeTimesCountsBackFromTheEnd) {
  Add(2 * 24 * 60);
  const int minutes[] = {1, 2, 5, 10, 15, 30, 60, 120, 180, 240, 300, 360, 720, 1440};
  Edit([&](TEditor& form) {
    for (int index = 0; index < 14; ++index) {
      form.cmbxTimeRelative.Select(index);
      const TDateTime time = In((2 * 24 * 60 - minutes[index]) * 60);
      EXPECT_EQ(form.stsbrTime.PanelText(1), DateTimeToStr(time)) << index;
    }
  });
}

TEST_F(EditorFilling, FiguresBeyondAllBoundsStayWithinTheYearsThatAFileHolds) {
  Add(0);
  Edit([](TEditor& form) {
    form.spnedtHours.EnterValue(std::numeric_limits<int>::max());
    EXPECT_EQ(TimeShown(form), "31.12.9999, 23:59:59");
    form.spnedtHours.EnterValue(std::numeric_limits<int>::min());
    EXPECT_EQ(form.stsbrTime.PanelText(1), DateTimeToStr(EncodeDateTime({1, 1, 1, 0, 0, 0, 0})));
  });
}

TEST_F(EditorFilling, TheButtonAsksForAnExistingSoundFile) {
  Add();
  Edit([this](TEditor& form) {
    form.chckbxSoundfile.Click();
    form.edtSoundFile.EnterText(u"/alt.wav");
    FHost.ExpectOpenDialog(u"Bitte Sounddatei auswählen", u"/neu.wav");
    form.btnSoundfile.Click();
    EXPECT_EQ(form.edtSoundFile.Text(), u"/neu.wav");
    EXPECT_EQ(FHost.LastOpenDialog().FileName, u"/alt.wav");
    EXPECT_EQ(FHost.LastOpenDialog().Filter, u"Sounddatei (*.wav)|*.wav");
    EXPECT_TRUE(FHost.LastOpenDialog().FileMustExist);
    FHost.ExpectOpenDialog(u"Bitte Sounddatei auswählen", u"");
    form.btnSoundfile.Click();
    EXPECT_EQ(form.edtSoundFile.Text(), u"/neu.wav") << "a cancel keeps it";
  });
}

}  // namespace
}  // namespace kk
