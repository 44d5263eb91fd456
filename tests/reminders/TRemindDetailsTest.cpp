#include <gtest/gtest.h>

#include "reminders/TLstRemindDetails.h"
#include "reminders/TRemindDetailsEMail.h"
#include "reminders/TRemindDetailsOutlook.h"
#include "reminders/TRemindDetailsSMS.h"
#include "reminders/TRemindDetailsSound.h"
#include "reminders/TRemindDetailsWindow.h"

namespace kk {
namespace {

template <class Details>
class TRemindDetailsWithTexts : public testing::Test {};
using TClassesWithTexts =
    testing::Types<TRemindDetailsWindow, TRemindDetailsOutlook, TRemindDetailsEMail>;
TYPED_TEST_SUITE(TRemindDetailsWithTexts, TClassesWithTexts);

TYPED_TEST(TRemindDetailsWithTexts, HaveCaptionTextAndLink) {
  TypeParam details(u"Uhr", u"Endet bald", u"https://example.org/1");
  EXPECT_EQ(details.Caption(), u"Uhr");
  EXPECT_EQ(details.Text(), u"Endet bald");
  EXPECT_EQ(details.Link(), u"https://example.org/1");
  details.SetCaption(u"a");
  details.SetText(u"b");
  details.SetLink(u"c");
  const auto clone = details.Clone();
  const auto& copy = dynamic_cast<const TypeParam&>(*clone);
  EXPECT_EQ(copy.Caption(), u"a");
  EXPECT_EQ(copy.Text(), u"b");
  EXPECT_EQ(copy.Link(), u"c");
}

TYPED_TEST(TRemindDetailsWithTexts, AreEmptyAtFirst) {
  const TypeParam details;
  EXPECT_EQ(details.Caption() + details.Text() + details.Link(), u"");
}

TEST(TRemindDetailsOutlook, HasNoEntryIdAtFirst) {
  EXPECT_EQ(TRemindDetailsOutlook(u"a", u"b", u"c").EntryId(), u"");
}

TEST(TRemindDetailsOutlook, ClonesItsEntryId) {
  TRemindDetailsOutlook details(u"a", u"b", u"c");
  details.SetEntryId(u"00AF");
  const auto clone = details.Clone();
  EXPECT_EQ(dynamic_cast<const TRemindDetailsOutlook&>(*clone).EntryId(), u"00AF");
}

TEST(TRemindDetailsSound, ClonesItsFile) {
  TRemindDetailsSound details(u"/tmp/a.wav");
  EXPECT_EQ(details.SoundFile(), u"/tmp/a.wav");
  details.SetSoundFile(u"/tmp/b.wav");
  const auto clone = details.Clone();
  EXPECT_EQ(dynamic_cast<const TRemindDetailsSound&>(*clone).SoundFile(), u"/tmp/b.wav");
  EXPECT_EQ(TRemindDetailsSound().SoundFile(), u"");
}

TEST(TRemindDetailsSMS, ClonesItsText) {
  TRemindDetailsSMS details(u"a");
  EXPECT_EQ(details.Text(), u"a");
  details.SetText(u"b");
  const auto clone = details.Clone();
  EXPECT_EQ(dynamic_cast<const TRemindDetailsSMS&>(*clone).Text(), u"b");
  EXPECT_EQ(TRemindDetailsSMS().Text(), u"");
}

TEST(TRemindDetails, CopyTakesAllStringsOver) {
  TRemindDetailsSound sound(u"alt");
  sound.Copy(TRemindDetailsSound(u"neu"));
  EXPECT_EQ(sound.SoundFile(), u"neu");
  sound.Copy(sound);
  EXPECT_EQ(sound.SoundFile(), u"neu");
}

TEST(TRemindDetails, CopyFromAnotherClassRaisesWithTheReceiversName) {
  const TRemindDetailsSound sound;
  for (const TRemindType type : {rtWindow, rtSMS, rtOutlook, rtEmail}) {
    const auto receiver = RemindTypeDetailsClass(type).Create();
    try {
      receiver->Copy(sound);
      FAIL() << ToUtf8(receiver->ClassName());
    } catch (const EInvalidCast& e) {
      EXPECT_EQ(e.Message(), receiver->ClassName() + u".Copy");
    }
  }
  try {
    TRemindDetailsSound().Copy(TRemindDetailsSMS());
    FAIL();
  } catch (const EInvalidCast& e) {
    EXPECT_EQ(e.Message(), u"TRemindDetailsSound.Copy");
  }
}

TEST(TRemindDetails, ClassesWithTheSameTextsAreNotTheSame) {
  EXPECT_THROW(TRemindDetailsWindow().Copy(TRemindDetailsEMail(u"a", u"b", u"c")), EInvalidCast);
}

TEST(TLstRemindDetails, FindsTheFirstOfAKind) {
  TLstRemindDetails list;
  list.Add(std::make_unique<TRemindDetailsSound>(u"1"));
  list.Add(std::make_unique<TRemindDetailsEMail>(u"c", u"t", u"l"));
  list.Add(std::make_unique<TRemindDetailsSound>(u"2"));
  EXPECT_EQ(list.IndexOfType(rtSound), 0);
  EXPECT_EQ(list.IndexOfType(rtEmail), 1);
  EXPECT_EQ(list.IndexOfType(rtWindow), -1);
  EXPECT_EQ(list.ItemByType(rtEmail), &list.GetItems(1));
  EXPECT_EQ(list.ItemByType(rtOutlook), nullptr);
  EXPECT_EQ(&list.First(), &list.GetItems(0));
}

TEST(TLstRemindDetails, OwnsItsDetails) {
  TLstRemindDetails list;
  EXPECT_TRUE(list.OwnsObjects());
  EXPECT_THROW(list.First(), EListError);
  EXPECT_THROW(list.GetItems(0), EListError);
}

}  // namespace
}  // namespace kk
