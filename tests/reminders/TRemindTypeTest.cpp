#include "reminders/TRemindType.h"

#include <gtest/gtest.h>

#include "reminders/TRemindDetailsEMail.h"
#include "reminders/TRemindDetailsOutlook.h"
#include "reminders/TRemindDetailsSMS.h"
#include "reminders/TRemindDetailsSound.h"
#include "reminders/TRemindDetailsWindow.h"

namespace kk {
namespace {

TEST(TRemindType, HasTheNumbersThatFilesStore) {
  EXPECT_EQ(static_cast<int>(rtSound), 0);
  EXPECT_EQ(static_cast<int>(rtWindow), 1);
  EXPECT_EQ(static_cast<int>(rtSMS), 2);
  EXPECT_EQ(static_cast<int>(rtOutlook), 3);
  EXPECT_EQ(static_cast<int>(rtEmail), 4);
  EXPECT_EQ(cRemindTypes.front(), rtSound);
  EXPECT_EQ(cRemindTypes.back(), rtEmail);
}

TEST(TRemindType, EachKindHasItsText) {
  EXPECT_EQ(RemindTypeText(rtSound), u"Sound");
  EXPECT_EQ(RemindTypeText(rtWindow), u"Meldungsfenster");
  EXPECT_EQ(RemindTypeText(rtSMS), u"SMS");
  EXPECT_EQ(RemindTypeText(rtOutlook), u"Outlook");
  EXPECT_EQ(RemindTypeText(rtEmail), u"E-Mail");
}

TEST(TRemindType, EachKindHasItsImage) {
  EXPECT_EQ(RemindTypeImage(rtSound).ResourceName, u"REMINDIMAGESOUND");
  EXPECT_EQ(RemindTypeImage(rtWindow).ResourceName, u"REMINDIMAGEWINDOW");
  EXPECT_EQ(RemindTypeImage(rtSMS).ResourceName, u"REMINDIMAGESMS");
  EXPECT_EQ(RemindTypeImage(rtOutlook).ResourceName, u"REMINDIMAGEOUTLOOK");
  EXPECT_EQ(RemindTypeImage(rtEmail).ResourceName, u"REMINDIMAGEEMAIL");
}

TEST(TRemindType, TheEditorsListHasAnOrderOfItsOwn) {
  EXPECT_EQ(RemindTypeEditorIndex(rtSound), 0);
  EXPECT_EQ(RemindTypeEditorIndex(rtWindow), 1);
  EXPECT_EQ(RemindTypeEditorIndex(rtSMS), 4);
  EXPECT_EQ(RemindTypeEditorIndex(rtOutlook), 3);
  EXPECT_EQ(RemindTypeEditorIndex(rtEmail), 2);
}

template <class Details>
void ExpectClassOf(TRemindType iType, TStringView iName) {
  const TRemindDetailsBaseClass& details = RemindTypeDetailsClass(iType);
  EXPECT_EQ(details.ClassName, iName);
  const auto made = details.Create();
  EXPECT_EQ(made->ClassName(), iName);
  EXPECT_NE(dynamic_cast<Details*>(made.get()), nullptr);
  for (const TRemindType other : cRemindTypes) {
    EXPECT_EQ(RemindTypeDetailsClass(other).IsClassOf(*made), other == iType);
  }
}

TEST(TRemindType, EachKindHasItsClassOfDetails) {
  ExpectClassOf<TRemindDetailsSound>(rtSound, u"TRemindDetailsSound");
  ExpectClassOf<TRemindDetailsWindow>(rtWindow, u"TRemindDetailsWindow");
  ExpectClassOf<TRemindDetailsSMS>(rtSMS, u"TRemindDetailsSMS");
  ExpectClassOf<TRemindDetailsOutlook>(rtOutlook, u"TRemindDetailsOutlook");
  ExpectClassOf<TRemindDetailsEMail>(rtEmail, u"TRemindDetailsEMail");
}

TEST(TRemindTypes, HoldsBitNForValueN) {
  EXPECT_TRUE(TRemindTypes().IsEmpty());
  EXPECT_EQ(TRemindTypes({rtSound}).Bits(), 1);
  EXPECT_EQ(TRemindTypes({rtEmail}).Bits(), 16);
  EXPECT_EQ(TRemindTypes({rtSound, rtWindow, rtSMS, rtOutlook, rtEmail}).Bits(), 31);
}

TEST(TRemindTypes, TheHighestKindStandsForAll) {
  EXPECT_EQ(TRemindTypes({rtSound, rtEmail}).Highest(), rtEmail);
  EXPECT_EQ(TRemindTypes({rtSound, rtWindow}).Highest(), rtWindow);
  EXPECT_EQ(TRemindTypes({rtSound}).Highest(), rtSound);
  EXPECT_FALSE(TRemindTypes().Highest());
}

TEST(TRemindTypes, TakesKindsInAndOut) {
  TRemindTypes types{rtSound, rtOutlook};
  EXPECT_TRUE(types.Has(rtSound));
  EXPECT_FALSE(types.Has(rtWindow));
  types.Exclude(rtSound);
  types.Exclude(rtEmail);
  types.Include(rtOutlook);
  EXPECT_EQ(types, TRemindTypes{rtOutlook});
  types.Exclude(rtOutlook);
  EXPECT_TRUE(types.IsEmpty());
}

}  // namespace
}  // namespace kk
