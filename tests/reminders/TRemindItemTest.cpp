#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "host/base/TLocale.h"
#include "reminders/TLstRemindItemForEdit.h"
#include "reminders/TRemindDetailsSound.h"
#include "reminders/TRemindDetailsWindow.h"
#include "tests/support/TLogRecorder.h"

namespace kk {
namespace {

using testing::ElementsAre;

constexpr TGuid cId = GuidLiteral("{FC3B5C09-B3C7-43DF-BBFE-DFE2158FFCE2}");
const TDateTime cTime = EncodeDateTime({2026, 11, 24, 9, 5, 7, 0});

void Fill(TRemindItem& ioItem) {
  ioItem.SetRemindTime(cTime);
  ioItem.SetRemindTypes({rtSound, rtWindow});
  ioItem.LstDetails().Add(std::make_unique<TRemindDetailsWindow>(u"Uhr", u"endet", u"link"));
  ioItem.LstDetails().Add(std::make_unique<TRemindDetailsSound>(u"/tmp/a.wav"));
}

TEST(TRemindItem, IsEmptyButForItsIdAtFirst) {
  const TRemindItem item(cId);
  EXPECT_EQ(item.Id(), cId);
  EXPECT_TRUE(item.RemindTime().IsZero());
  EXPECT_TRUE(item.RemindTypes().IsEmpty());
  EXPECT_EQ(item.LstDetails().GetCount(), 0);
}

TEST(TRemindItem, CloneHasTheSameContentInObjectsOfItsOwn) {
  TRemindItem item(cId);
  Fill(item);
  const auto clone = item.Clone();
  EXPECT_EQ(clone->Id(), cId);
  EXPECT_EQ(clone->RemindTime(), cTime);
  EXPECT_EQ(clone->RemindTypes(), (TRemindTypes{rtSound, rtWindow}));
  ASSERT_EQ(clone->LstDetails().GetCount(), 2);
  EXPECT_NE(&clone->LstDetails().First(), &item.LstDetails().First());
  const auto& window = dynamic_cast<TRemindDetailsWindow&>(clone->LstDetails().GetItems(0));
  EXPECT_EQ(window.Caption(), u"Uhr");
  const auto& sound = dynamic_cast<TRemindDetailsSound&>(clone->LstDetails().GetItems(1));
  EXPECT_EQ(sound.SoundFile(), u"/tmp/a.wav");
}

TEST(TRemindItem, CopyReplacesAllThatWasThere) {
  TRemindItem source(cId);
  Fill(source);
  TRemindItem item(NewGuid());
  item.LstDetails().Add(std::make_unique<TRemindDetailsSound>(u"alt"));
  item.Copy(source);
  EXPECT_EQ(item.Id(), cId);
  EXPECT_EQ(item.LstDetails().GetCount(), 2);
  item.Copy(item);
  EXPECT_EQ(item.LstDetails().GetCount(), 2);
}

TEST(TRemindItem, CloneOfOneForEditingIsAPlainOne) {
  TRemindItemForEdit edit(cId);
  Fill(edit);
  edit.SetEndDate(cTime);
  const auto clone = edit.Clone();
  EXPECT_EQ(dynamic_cast<TRemindItemForEdit*>(clone.get()), nullptr);
  EXPECT_EQ(clone->RemindTime(), cTime);
}

TEST(TRemindItemForEdit, CopyLeavesTheEndAlone) {
  TRemindItemForEdit source(cId);
  source.SetEndDate(cTime);
  TRemindItemForEdit item(cId);
  EXPECT_TRUE(item.EndDate().IsZero());
  item.SetEndDate(cTime.PlusMs(1));
  item.Copy(source);
  EXPECT_EQ(item.EndDate(), cTime.PlusMs(1));
}

TEST(TRemindItem, DumpParamsWritesThreeDetailLines) {
  SetLocaleName("de_DE");
  const TLogRecorder log;
  TRemindItem item(cId);
  Fill(item);
  item.DumpParams();
  EXPECT_THAT(log.Lines(), ElementsAre("details Id = {FC3B5C09-B3C7-43DF-BBFE-DFE2158FFCE2}",
                                       "details RemindTime = 24.11.2026, 09:05:07",
                                       "details RemindTypes: Sound, Meldungsfenster"));
  SetLocaleName("");
}

TEST(TRemindItem, DumpParamsNamesTheKindsInTheirOrderAndNotTheDetails) {
  const TLogRecorder log;
  TRemindItem item(cId);
  item.SetRemindTypes({rtEmail, rtOutlook, rtSMS});
  item.DumpParams();
  EXPECT_TRUE(log.Contains("details RemindTypes: SMS, Outlook, E-Mail"));
  item.SetRemindTypes({});
  item.DumpParams();
  EXPECT_TRUE(log.Contains("details RemindTypes: "));
}

TEST(TLstRemindItemForEdit, AddsACopyOfAReminder) {
  TRemindItem item(cId);
  Fill(item);
  TLstRemindItemForEdit list;
  TRemindItemForEdit& added = list.Add(item);
  EXPECT_EQ(&added, &list.GetItems(0));
  EXPECT_EQ(added.Id(), cId);
  EXPECT_EQ(added.RemindTime(), cTime);
  EXPECT_EQ(added.LstDetails().GetCount(), 2);
  EXPECT_TRUE(added.EndDate().IsZero());
}

TEST(TLstRemindItemForEdit, AddsAReadyObject) {
  TLstRemindItemForEdit list;
  auto item = std::make_unique<TRemindItemForEdit>(cId);
  const TRemindItemForEdit* object = item.get();
  EXPECT_EQ(&list.Add(std::move(item)), object);
  EXPECT_TRUE(list.OwnsObjects());
  EXPECT_THROW(list.GetItems(1), EListError);
}

}  // namespace
}  // namespace kk
