#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <rapidcheck.h>

#include <tuple>

#include "reminders/TLstRemindItemSync.h"
#include "reminders/TRemindDetailsEMail.h"
#include "reminders/TRemindDetailsOutlook.h"
#include "reminders/TRemindDetailsSMS.h"
#include "reminders/TRemindDetailsSound.h"
#include "reminders/TRemindDetailsWindow.h"
#include "reminders/TRemindItemLoader.h"
#include "reminders/TRemindItemSaver.h"
#include "tests/support/TLogRecorder.h"
#include "tests/support/TTestClock.h"

namespace kk {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr TGuid cId = GuidLiteral("{FC3B5C09-B3C7-43DF-BBFE-DFE2158FFCE2}");
constexpr std::string_view cByteOrderMark = "\xEF\xBB\xBF";
const TDateTime cTime = EncodeDateTime({2026, 11, 24, 9, 0, 0, 0});

TRemindItem& AddTo(TLstRemindItem& ioLst, TRemindTypes iTypes = {}, const TGuid& iId = cId) {
  auto item = std::make_unique<TRemindItem>(iId);
  item->SetRemindTime(cTime);
  item->SetRemindTypes(iTypes);
  TRemindItem& added = *item;
  ioLst.Add(std::move(item));
  return added;
}

std::string Saved(const TLstRemindItem& iLst) {
  TMemoryStream stream;
  TRemindItemSaver::SaveToStream(stream, iLst);
  return stream.Bytes();
}

void Load(std::string_view iBytes, TLstRemindItem& ioLst) {
  TMemoryStream stream{std::string(iBytes)};
  TRemindItemLoader::LoadFromStream(stream, ioLst, false);
}

// One reminder with this inside of its element.
std::string Item(const std::string& iInside) {
  return "<Item><Id>{FC3B5C09-B3C7-43DF-BBFE-DFE2158FFCE2}</Id>" + iInside + "</Item>";
}

const std::string cSoundDetails = "<Details><Sound><SoundFile>a.wav</SoundFile></Sound></Details>";

// Details that the stream does not know.
class TStrange : public TRemindDetails<TStrange> {
 public:
  static constexpr const char16_t* cClassName = u"TStrange";
  std::tuple<> Strings() const { return {}; }
};

std::vector<TString> ClassNames(const TRemindItem& iItem) {
  std::vector<TString> names;
  for (const TRemindDetailsBase* details : iItem.LstDetails())
    names.push_back(details->ClassName());
  return names;
}

TEST(TRemindItemSaver, AnEmptyListGivesAnEmptyStream) {
  EXPECT_EQ(Saved(TLstRemindItem(true)), "");
}

TEST(TRemindItemSaver, WritesTheDocument) {
  TLstRemindItem list(true);
  TRemindItem& item = AddTo(list, {rtWindow, rtSound});
  item.LstDetails().Add(std::make_unique<TRemindDetailsWindow>(u"Uhr & Co", u"endet", u"link"));
  item.LstDetails().Add(std::make_unique<TRemindDetailsSound>(u"/tmp/a.wav"));
  EXPECT_EQ(Saved(list), std::string(cByteOrderMark) +
                             "<Items>\r\n"
                             "  <Item>\r\n"
                             "    <Id>{FC3B5C09-B3C7-43DF-BBFE-DFE2158FFCE2}</Id>\r\n"
                             "    <Time>2026-11-24T09:00:00</Time>\r\n"
                             "    <Types>0|1</Types>\r\n"
                             "    <Details>\r\n"
                             "      <Window>\r\n"
                             "        <Caption>Uhr &amp; Co</Caption>\r\n"
                             "        <Text>endet</Text>\r\n"
                             "        <Link>link</Link>\r\n"
                             "      </Window>\r\n"
                             "      <Sound>\r\n"
                             "        <SoundFile>/tmp/a.wav</SoundFile>\r\n"
                             "      </Sound>\r\n"
                             "    </Details>\r\n"
                             "  </Item>\r\n"
                             "</Items>\r\n");
}

TEST(TRemindItemSaver, LeavesDetailsOutIfThereAreNone) {
  TLstRemindItem list(true);
  AddTo(list, {rtEmail});
  EXPECT_EQ(Saved(list).find("Details"), std::string::npos);
  EXPECT_NE(Saved(list).find("<Types>4</Types>"), std::string::npos);
}

TEST(TRemindItemSaver, PassesOverDetailsOfAnotherClass) {
  TLstRemindItem list(true);
  TRemindItem& item = AddTo(list);
  item.LstDetails().Add(std::make_unique<TStrange>());
  item.LstDetails().Add(std::make_unique<TRemindDetailsSMS>(u"Text"));
  TLstRemindItem again(true);
  Load(Saved(list), again);
  EXPECT_THAT(ClassNames(again.First()), ElementsAre(u"TRemindDetailsSMS"));
}

TEST(TRemindItemSaver, WritesTheOutlookEntryIdUnderItsRequiredName) {
  TLstRemindItem list(true);
  auto outlook = std::make_unique<TRemindDetailsOutlook>(u"c", u"t", u"l");
  outlook->SetEntryId(u"00AF");
  AddTo(list, {rtOutlook}).LstDetails().Add(std::move(outlook));
  EXPECT_NE(Saved(list).find("<EnryID>00AF</EnryID>"), std::string::npos);
  TLstRemindItem again(true);
  Load(Saved(list), again);
  EXPECT_EQ(dynamic_cast<TRemindDetailsOutlook&>(again.First().LstDetails().First()).EntryId(),
            u"00AF");
}

TEST(TRemindItemLoader, AFileWithAnotherNameForTheEntryIdGivesNone) {
  TLstRemindItem list(true);
  Load("<Items>" + Item("<Details><Outlook><EntryID>00AF</EntryID></Outlook></Details>") +
           "</Items>",
       list);
  EXPECT_EQ(dynamic_cast<TRemindDetailsOutlook&>(list.First().LstDetails().First()).EntryId(), u"");
}

TEST(TRemindItemSaver, WritesTheLiveListToo) {
  TLstRemindItemSync list(true);
  AddTo(list).LstDetails().Add(std::make_unique<TRemindDetailsSound>(u"a"));
  const TLstRemindItemSync::TReading reading(list);
  EXPECT_NE(Saved(list), "");
}

TEST(RemindStream, AllKindsComeBackWithTheirTexts) {
  TLstRemindItem list(true);
  TLstRemindDetails& details = AddTo(list, {rtSMS}).LstDetails();
  details.Add(std::make_unique<TRemindDetailsOutlook>(u"oc", u"ot", u"ol"));
  details.Add(std::make_unique<TRemindDetailsWindow>(u"wc", u"wt", u"wl"));
  details.Add(std::make_unique<TRemindDetailsSMS>(u"st"));
  details.Add(std::make_unique<TRemindDetailsEMail>(u"ec", u"et", u"el"));
  details.Add(std::make_unique<TRemindDetailsSound>(u"file"));
  TLstRemindItem again(true);
  Load(Saved(list), again);
  ASSERT_EQ(again.Count(), 1);
  const TLstRemindDetails& loaded = again.First().LstDetails();
  EXPECT_EQ(dynamic_cast<TRemindDetailsSound*>(loaded.ItemByType(rtSound))->SoundFile(), u"file");
  EXPECT_EQ(dynamic_cast<TRemindDetailsSMS*>(loaded.ItemByType(rtSMS))->Text(), u"st");
  const auto* window = dynamic_cast<TRemindDetailsWindow*>(loaded.ItemByType(rtWindow));
  EXPECT_EQ(window->Caption() + window->Text() + window->Link(), u"wcwtwl");
  const auto* email = dynamic_cast<TRemindDetailsEMail*>(loaded.ItemByType(rtEmail));
  EXPECT_EQ(email->Caption() + email->Text() + email->Link(), u"ecetel");
  const auto* outlook = dynamic_cast<TRemindDetailsOutlook*>(loaded.ItemByType(rtOutlook));
  EXPECT_EQ(outlook->Caption() + outlook->Text() + outlook->Link(), u"ocotol");
}

TEST(RemindStream, TheOrderOfDetailsAfterALoadIsFixed) {
  TLstRemindItem list(true);
  TLstRemindDetails& details = AddTo(list).LstDetails();
  for (const TRemindType type : {rtOutlook, rtWindow, rtSMS, rtEmail, rtSound}) {
    details.Add(RemindTypeDetailsClass(type).Create());
  }
  TLstRemindItem again(true);
  Load(Saved(list), again);
  EXPECT_THAT(ClassNames(again.First()),
              ElementsAre(u"TRemindDetailsSound", u"TRemindDetailsEMail", u"TRemindDetailsSMS",
                          u"TRemindDetailsWindow", u"TRemindDetailsOutlook"));
}

TEST(RemindStream, KindsAndDetailsAreKeptAsTheyStandEvenIfTheyDisagree) {
  TLstRemindItem list(true);
  AddTo(list, {rtEmail}).LstDetails().Add(std::make_unique<TRemindDetailsSound>(u"a"));
  TLstRemindItem again(true);
  Load(Saved(list), again);
  EXPECT_EQ(again.First().RemindTypes(), TRemindTypes{rtEmail});
  EXPECT_THAT(ClassNames(again.First()), ElementsAre(u"TRemindDetailsSound"));
}

TEST(RemindStream, OrderIdsAndTimesOfRemindersComeBack) {
  TLstRemindItem list(true);
  const TGuid ids[] = {NewGuid(), NewGuid(), NewGuid()};
  for (const TGuid& id : ids) {
    AddTo(list, {}, id).LstDetails().Add(std::make_unique<TRemindDetailsSound>(u""));
  }
  list.GetItems(1).SetRemindTime({});
  list.GetItems(2).SetRemindTime(cTime.PlusMs(250));
  TLstRemindItem again(true);
  Load(Saved(list), again);
  ASSERT_EQ(again.Count(), 3);
  for (int i = 0; i < 3; ++i) {
    EXPECT_EQ(again.GetItems(i).Id(), ids[i]);
    EXPECT_EQ(again.GetItems(i).RemindTime(), list.GetItems(i).RemindTime());
  }
}

TEST(RemindStream, EveryTextSurvives) {
  EXPECT_TRUE(rc::check("captions", [] {
    TString text;
    for (const int number : *rc::gen::container<std::vector<int>>(rc::gen::inRange(0x20, 0xD7FF))) {
      text += static_cast<char16_t>(number);
    }
    TLstRemindItem list(true);
    const TString ends = u" \r\n" + text + u"\t ";
    AddTo(list).LstDetails().Add(std::make_unique<TRemindDetailsWindow>(text, ends, u"<&>"));
    TLstRemindItem again(true);
    Load(Saved(list), again);
    const auto& window = dynamic_cast<TRemindDetailsWindow&>(again.First().LstDetails().First());
    RC_ASSERT(window.Caption() == text);
    RC_ASSERT(window.Text() == ends);
    RC_ASSERT(window.Link() == TString(u"<&>"));
  }));
}

TEST(TRemindItemLoader, AnEmptyStreamHasNoReminders) {
  TLstRemindItem list(true);
  Load("", list);
  EXPECT_EQ(list.Count(), 0);
}

TEST(TRemindItemLoader, AppendsToWhatIsThere) {
  TLstRemindItem list(true);
  AddTo(list);
  Load("<Items>" + Item(cSoundDetails) + "</Items>", list);
  EXPECT_EQ(list.Count(), 2);
}

TEST(TRemindItemLoader, TakesTheRootAndItsChildrenWhateverTheirNames) {
  TLstRemindItem list(true);
  Load("<Wurzel><Kind><Id>{FC3B5C09-B3C7-43DF-BBFE-DFE2158FFCE2}</Id>" + cSoundDetails +
           "</Kind></Wurzel>",
       list);
  EXPECT_EQ(list.Count(), 1);
}

TEST(TRemindItemLoader, AReminderWithKindsButWithoutDetailsIsDroppedAndTheOthersStay) {
  TLstRemindItem list(true);
  Load("<Items>" + Item("<Types>0|1</Types>") + Item("<Types>0</Types><Details/>") +
           Item("<Types>1</Types>" + cSoundDetails) + "</Items>",
       list);
  ASSERT_EQ(list.Count(), 1);
  EXPECT_EQ(list.First().RemindTypes(), TRemindTypes{rtWindow});
}

TEST(TRemindItemLoader, OtherNumbersThanThoseOfKindsAreIgnored) {
  TLstRemindItem list(true);
  Load("<Items>" + Item("<Types>9|0|x|04||4</Types>" + cSoundDetails) + "</Items>", list);
  EXPECT_EQ(list.First().RemindTypes(), (TRemindTypes{rtSound, rtEmail}));
}

TEST(TRemindItemLoader, AReminderWithABadIdIsSkippedWithoutALogEntryAndTheFollowingOnesLoad) {
  const TLogRecorder log;
  TLstRemindItem list(true);
  Load("<Items><Item><Id>kaputt</Id>" + cSoundDetails + "</Item><Item>" + cSoundDetails +
           "</Item>" + Item(cSoundDetails) + "</Items>",
       list);
  EXPECT_EQ(list.Count(), 1);
  EXPECT_THAT(log.Lines(), IsEmpty());
  EXPECT_EQ(log.DebugLines().size(), 2u);
}

TEST(TRemindItemLoader, MissingStringsReadAsEmptyOnes) {
  TLstRemindItem list(true);
  Load("<Items>" +
           Item("<Details><Sound/><EMail/><SMS/><Window><Link>l</Link></Window></Details>") +
           "</Items>",
       list);
  const TLstRemindDetails& details = list.First().LstDetails();
  ASSERT_EQ(details.GetCount(), 4);
  EXPECT_EQ(dynamic_cast<TRemindDetailsSound*>(details.ItemByType(rtSound))->SoundFile(), u"");
  const auto* window = dynamic_cast<TRemindDetailsWindow*>(details.ItemByType(rtWindow));
  EXPECT_EQ(window->Caption() + window->Text() + u"-" + window->Link(), u"-l");
  EXPECT_TRUE(list.First().RemindTime().IsZero());
  EXPECT_TRUE(list.First().RemindTypes().IsEmpty());
}

TEST(TRemindItemLoader, AReminderInThePastLoadsLikeAnyOtherAndIsDue) {
  const TTestClock clock;
  TLstRemindItem list(true);
  Load("<Items>" + Item("<Time>2001-01-01T00:00:00</Time>" + cSoundDetails) + "</Items>", list);
  EXPECT_EQ(list.First().RemindTime(), EncodeDateTime({2001, 1, 1}));
  EXPECT_TRUE(list.HasElapsedItems());
}

TEST(TRemindItemLoader, TextThatIsNoXmlRaises) {
  TLstRemindItem list(true);
  EXPECT_THROW(Load("kein XML <", list), EConvertError);
  EXPECT_EQ(list.Count(), 0);
}

TEST(TRemindItemLoader, ReadsFromTheStreamsPositionOn) {
  TMemoryStream stream("Müll<Items>" + Item(cSoundDetails) + "</Items>");
  stream.SetPosition(5);
  TLstRemindItem list(true);
  TRemindItemLoader::LoadFromStream(stream, list, true);
  EXPECT_EQ(list.Count(), 1);
}

TEST(TRemindItemLoader, TheFlagDecidesHowBytesAreRead) {
  const std::string text = "<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?><Items>" +
                           Item("<Details><SMS><Text>gr\xC3\xBC\xC3\x9F</Text></SMS></Details>") +
                           "</Items>";
  const auto load = [&](bool iDecodeUTF8) {
    TMemoryStream stream(text);
    TLstRemindItem list(true);
    TRemindItemLoader::LoadFromStream(stream, list, iDecodeUTF8);
    return dynamic_cast<TRemindDetailsSMS&>(list.First().LstDetails().First()).Text();
  };
  EXPECT_EQ(load(true), u"grüß");
  EXPECT_NE(load(false), u"grüß");
}

}  // namespace
}  // namespace kk
