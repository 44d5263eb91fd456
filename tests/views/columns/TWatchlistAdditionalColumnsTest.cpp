#include "views/columns/TWatchlistAdditionalColumns.h"

#include "TColumnWorld.h"
#include "views/columns/TAdditionalColumnReminder.h"

namespace kk {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

struct TListener {
  void DoEdit(TObject* iSender) { Senders.push_back(iSender); }
  std::vector<TObject*> Senders;
};

// The columns of the section's lists, and an article in one of them.
class TWatchlistAdditionalColumnsTest : public TColumnTest {
 protected:
  void Remind(std::initializer_list<TRemindType> iTypes) {
    auto reminder = std::make_unique<TRemindItem>(Faust.SearchResultId());
    reminder->SetRemindTypes(iTypes);
    Handler()->LstRemind().Add(std::move(reminder));
  }
  void Listen() {
    Handler()->SetOnAdditionalColumnEditClick(TNotifyEvent::Of<&TListener::DoEdit>(&Listener));
  }
  // No row has a result that can be asked.
  static TIntf<TWatchedResult> Broken() {
    const auto result = MakeIntf<TWatchedResult>(u"Faust");
    result->IdFails = true;
    return result;
  }

  TWatchlistItem& Faust = Item(Category(u"Bücher"), Auction, u"Faust");
  TIntf<ISearchResult> Row = Faust.SearchResult();
  TListener Listener;
  TIntf<TWatchlistAdditionalColumns> Columns = MakeIntf<TWatchlistAdditionalColumns>();
  TFakeColumnView Reminder{*Columns, 0};
  TFakeColumnView Date{*Columns, 1};
};

TEST_F(TWatchlistAdditionalColumnsTest, HoldsReminderAndThenDate) {
  ASSERT_EQ(Columns->GetColumns()->GetCount(), 2);
  EXPECT_EQ(GUIDToString(Reminder.Column->GetId()), u"{2C02CA49-B3D5-4E45-8926-78BAD9DBAA6C}");
  EXPECT_EQ(Reminder.Column->GetCaption(), u"Erinnerung");
  EXPECT_EQ(Reminder.Column->GetWidth(), 30);
  EXPECT_EQ(GUIDToString(Date.Column->GetId()), u"{1438EDE5-EAB5-4281-A6AC-B1CD1B3F272D}");
  EXPECT_EQ(Date.Column->GetCaption(), u"Daten vom");
  EXPECT_EQ(Date.Column->GetWidth(), 60);
  for (const TFakeColumnView* view : {&Reminder, &Date}) {
    EXPECT_EQ(view->Column->GetSortOrder(), 0);
    EXPECT_EQ(static_cast<int>(view->Column->GetInitialPosition()), 1);
    EXPECT_EQ(view->Column->CompareNodes(0, Row, FakeResult(u"Emma")), 0);
  }
}

// The reminder column.

TEST_F(TWatchlistAdditionalColumnsTest, ReminderImagesStandInTheOrderOfTheKinds) {
  const auto column = MakeIntf<TAdditionalColumnReminder>();
  EXPECT_THAT(column->GetCellPainter().Images(),
              ElementsAre(TBitmap{u"REMINDIMAGESOUND"}, TBitmap{u"REMINDIMAGEWINDOW"},
                          TBitmap{u"REMINDIMAGESMS"}, TBitmap{u"REMINDIMAGEOUTLOOK"},
                          TBitmap{u"REMINDIMAGEEMAIL"}));
}

TEST_F(TWatchlistAdditionalColumnsTest, EachKindHasItsImage) {
  const std::vector<std::pair<TRemindType, std::string>> images = {
      {rtSound, "REMINDIMAGESOUND"},
      {rtWindow, "REMINDIMAGEWINDOW"},
      {rtSMS, "REMINDIMAGESMS"},
      {rtOutlook, "REMINDIMAGEOUTLOOK"},
      {rtEmail, "REMINDIMAGEEMAIL"}};
  for (const auto& [type, name] : images) {
    Handler()->LstRemind().Clear();
    Remind({type});
    EXPECT_THAT(Reminder.Paint(Row), ElementsAre("Bitmap 7,1,23,17 " + name));
  }
}

TEST_F(TWatchlistAdditionalColumnsTest, SoundShowsOnlyWithoutAnotherKind) {
  Remind({rtWindow, rtSound});
  EXPECT_THAT(Reminder.Paint(Row), ElementsAre("Bitmap 7,1,23,17 REMINDIMAGEWINDOW"));
}

TEST_F(TWatchlistAdditionalColumnsTest, LastKindOfAReminderWins) {
  Remind({rtSound, rtWindow, rtSMS, rtOutlook, rtEmail});
  EXPECT_THAT(Reminder.Paint(Row), ElementsAre("Bitmap 7,1,23,17 REMINDIMAGEEMAIL"));
}

TEST_F(TWatchlistAdditionalColumnsTest, CellWithoutAReminderOrAResultStaysEmpty) {
  EXPECT_THAT(Reminder.Paint(Row), IsEmpty());
  EXPECT_THAT(Reminder.Paint({}), IsEmpty());
  EXPECT_THAT(Swallowed(), IsEmpty());
}

TEST_F(TWatchlistAdditionalColumnsTest, ReminderOfAResultThatFailsLeavesTheCellEmpty) {
  Remind({rtWindow});
  EXPECT_THAT(Reminder.Paint(Broken()), IsEmpty());
  EXPECT_THAT(Swallowed(), ElementsAre("debug TTreeViewCellPainterReminder.Paint: Kennung kaputt"));
  Reminder.Canvas.Fails = true;
  EXPECT_THAT(Reminder.Paint(Row), IsEmpty());
}

TEST_F(TWatchlistAdditionalColumnsTest, HandInvitesToClickAReminderWhereItIsDrawn) {
  Remind({rtWindow});
  EXPECT_THAT(Reminder.Move(Row), ElementsAre(cCursorDefault)) << "nothing was drawn yet";
  Reminder.Paint(Row);
  EXPECT_THAT(Reminder.Move(Row), ElementsAre(cCursorHandPoint));
  EXPECT_THAT(Reminder.Move(Row, {23, 9}), ElementsAre(cCursorDefault));
  EXPECT_TRUE(Reminder.Column->IsMouseOverBitmap(MakeIntf<TFakeCellMouseInfo>(Row)));
}

TEST_F(TWatchlistAdditionalColumnsTest, ClickOnAReminderRaisesTheEventWithTheColumnAsTheSender) {
  Remind({rtWindow});
  Reminder.Paint(Row);
  Reminder.Click(Row);  // nobody listens
  Listen();
  Reminder.Click(Row);
  ASSERT_EQ(Listener.Senders.size(), 1U);
  EXPECT_EQ(dynamic_cast<TAdditionalColumnReminder*>(Listener.Senders[0]),
            dynamic_cast<TAdditionalColumnReminder*>(Reminder.Column.Get()));
  Reminder.Click(Row, {23, 9});
  EXPECT_EQ(Listener.Senders.size(), 1U) << "beside the image";
}

TEST_F(TWatchlistAdditionalColumnsTest, RowWithoutAReminderIsNotClickedWhereAnImageWouldBe) {
  Remind({rtWindow});
  Listen();
  Reminder.Paint(Row);
  for (const TIntf<ISearchResult>& row : {FakeResult(u"Emma"), TIntf<ISearchResult>()}) {
    EXPECT_THAT(Reminder.Move(row), ElementsAre(cCursorDefault));
    Reminder.Click(row);
  }
  EXPECT_THAT(Listener.Senders, IsEmpty());
  EXPECT_THAT(Swallowed(), IsEmpty());
}

TEST_F(TWatchlistAdditionalColumnsTest, WhatFailsUnderTheMouseIsNoReminder) {
  Remind({rtWindow});
  Listen();
  Reminder.Paint(Row);
  EXPECT_THAT(Reminder.Move(Broken()), ElementsAre(cCursorDefault));
  Reminder.Click(Broken());
  EXPECT_THAT(Listener.Senders, IsEmpty());
  EXPECT_THAT(Swallowed(),
              ElementsAre("debug TAdditionalColumnReminder.IsMouseOverBitmap: Kennung kaputt",
                          "debug TAdditionalColumnReminder.IsMouseOverBitmap: Kennung kaputt"));
  const auto info = MakeIntf<TFakeCellMouseInfo>(Row);
  info->CursorFails = true;
  Reminder.Column->MouseMove(info);
  EXPECT_EQ(Swallowed().back(), "debug TAdditionalColumnReminder.MouseMove: Mauszeiger kaputt");
}

TEST_F(TWatchlistAdditionalColumnsTest, ClickPassesOnWhatTheEventRaises) {
  struct TFailing {
    void DoEdit(TObject*) { throw Exception(u"Editor kaputt"); }
  } failing;
  Remind({rtWindow});
  Handler()->SetOnAdditionalColumnEditClick(TNotifyEvent::Of<&TFailing::DoEdit>(&failing));
  Reminder.Paint(Row);
  EXPECT_THROW(Reminder.Click(Row), Exception);
}

// The date column.

TEST_F(TWatchlistAdditionalColumnsTest, DateIsTheDayOfTheLastRefresh) {
  Faust.SetLastUpdateDate(EncodeDateTime({2026, 3, 9, 23, 59, 59, 999}));
  EXPECT_THAT(Date.Paint(Row), ElementsAre("Colors", "Text 0,0,30,18 09.03.2026"));
}

TEST_F(TWatchlistAdditionalColumnsTest, ItemThatWasNeverRefreshedShowsTheFirstOfAllDays) {
  EXPECT_THAT(Date.Paint(Row), ElementsAre("Colors", "Text 0,0,30,18 30.12.1899"));
}

TEST_F(TWatchlistAdditionalColumnsTest, DateOfARowWithoutAResultStaysEmpty) {
  EXPECT_THAT(Date.Paint({}), IsEmpty());
}

TEST_F(TWatchlistAdditionalColumnsTest, DatePassesOnWhatFails) {
  EXPECT_THROW(Date.Paint(Broken()), Exception);
  const TGuid id = GuidLiteral("{5E000000-0000-0000-0000-000000000001}");
  try {
    Date.Paint(MakeIntf<TFakeSearchResult>(u"Emma", id));
    FAIL() << "a row without an item";
  } catch (const Exception& e) {
    EXPECT_EQ(e.Message(),
              u"Es gibt keinen Eintrag mit der Id {5E000000-0000-0000-0000-000000000001}.");
  }
  EXPECT_THAT(Date.Canvas.Calls, ElementsAre("Colors")) << "the colours come first";
}

TEST_F(TWatchlistAdditionalColumnsTest, DateColumnKeepsItsPainter) {
  EXPECT_EQ(&Date.Column->GetCellPainter(), &Date.Column->GetCellPainter());
  EXPECT_THAT(Date.Move(Row), IsEmpty());
  Date.Click(Row);
}

// A list may paint on when the watch list is gone.

TEST_F(TWatchlistAdditionalColumnsTest, ColumnsThatOutliveTheHandlerAreEmpty) {
  Remind({rtWindow});
  Reminder.Paint(Row);
  FreeHandler();
  EXPECT_THAT(Reminder.Paint(Row), IsEmpty());
  EXPECT_THAT(Reminder.Move(Row), ElementsAre(cCursorDefault));
  Reminder.Click(Row);
  EXPECT_THROW(Date.Paint(Row), Exception);
}

}  // namespace
}  // namespace kk
