#include "host/results/TResultLayout.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "ResultsWorld.h"
#include "host/contract/IAdditionalColumns.h"
#include "host/results/TResultView.h"
#include "tests/support/TTempFolder.h"
#include "tests/support/TTestIniFile.h"

namespace kk {
namespace {

using testing::ElementsAre;

constexpr TGuid cThirdColumn = GuidLiteral("{33333333-0000-0000-0000-000000000000}");
constexpr TStringView cName = u"{11111111-0000-0000-0000-000000000000}";
constexpr TStringView cLength = u"{22222222-0000-0000-0000-000000000000}";
constexpr TStringView cThird = u"{33333333-0000-0000-0000-000000000000}";

std::vector<TResultColumn> ThreeColumns() {
  const auto names = std::make_shared<TNameContent>();
  return {OwnColumn(cNameColumn, u"Name", names), OwnColumn(cLengthColumn, u"Länge", names),
          OwnColumn(cThirdColumn, u"Drei", names)};
}

TString Look(TStringView iId, TStringView iRest) { return TString(iId) + TString(iRest); }

class ResultLayout : public testing::Test {
 protected:
  ResultLayout() {
    for (auto& column : ThreeColumns()) Table.AddColumn(column, Table.ColumnCount());
  }
  void Apply(const TString& iText) { TResultLayout::Apply(iText, Table); }

  TTestMainLoop Loop;
  TResultTable Table{nullptr};
};

TEST_F(ResultLayout, IsWrittenAndReadBack) {
  Table.SetColumnWidth(0, 300);
  Table.SetColumnVisible(1, false);
  Table.MoveColumn(2, 0);
  Table.SetSort(1, true);
  const TString text = TResultLayout::TextOf(Table);
  EXPECT_EQ(text, u"-" + TString(cLength) + u"|" + Look(cThird, u":100:1|") +
                      Look(cName, u":300:1|") + Look(cLength, u":100:0"));
  TResultTable other(nullptr);
  for (auto& column : ThreeColumns()) other.AddColumn(column, 0);
  TResultLayout::Apply(text, other);
  EXPECT_EQ(TResultLayout::TextOf(other), text);
  Table.SetSort(1, false);
  EXPECT_EQ(TResultLayout::TextOf(Table)[0], u'+');
  Table.SetSort(-1, false);
  EXPECT_EQ(TResultLayout::TextOf(Table)[0], u'{');
}

TEST_F(ResultLayout, UnknownColumnsKeepTheirPlaces) {
  Apply(Look(cThird, u":50:1|") + GUIDToString(NewGuid()) + u":70:1|" + Look(cName, u":60:1"));
  EXPECT_THAT(Table.ColumnOrder(), ElementsAre(2, 1, 0));
  EXPECT_EQ(Table.Columns(2).Width, 50);
  EXPECT_EQ(Table.Columns(1).Width, 100);
}

TEST_F(ResultLayout, WhatCanNotBeUnderstoodIsPassedOver) {
  const TString before = TResultLayout::TextOf(Table);
  for (const TString& text :
       {TString(u""), TString(u"|||"), TString(u"+"), TString(u"Unsinn"), TString(u"a:b:c"),
        TString(u"+") + GUIDToString(NewGuid()), Look(cName, u":breit:1"), Look(cName, u":1"),
        Look(cName, u":1:1:1")}) {
    Apply(text);
    EXPECT_EQ(TResultLayout::TextOf(Table), before) << ToUtf8(text);
  }
  Apply(Look(cName, u":99999999999:1|") + Look(cLength, u":-5:1|") + Look(cName, u":50:1"));
  EXPECT_EQ(Table.Columns(0).Width, TResultColumn::cMaxWidth);
  EXPECT_EQ(Table.Columns(1).Width, TResultColumn::cMinWidth);
}

TEST_F(ResultLayout, OneColumnAlwaysShows) {
  Apply(Look(cThird, u":50:0|") + Look(cName, u":50:0|") + Look(cLength, u":50:0"));
  EXPECT_TRUE(Table.Columns(2).Visible);
  EXPECT_FALSE(Table.Columns(0).Visible);
  TResultTable none(nullptr);
  TResultLayout::Apply(u"", none);
}

/// A view whose layout the settings file keeps.
class ResultViewLayout : public testing::Test {
 public:
  TIntf<IInterface> Extension() const {
    class TSet : public TInterfaced<IAdditionalColumns> {
     public:
      explicit TSet(const TIntf<IInterface>& iColumn) { FColumns->Add(iColumn); }
      TIntf<IInterfaceList> GetColumns() const override { return FColumns; }

     private:
      TIntf<IInterfaceList> FColumns = NewInterfaceList();
    };
    return MakeIntf<TSet>(FColumn);
  }
  void Show(TResultView& ioView) {
    ioView.AddExtension(Extension());
    ioView.SetContainer(&FPanel);
  }

  TTestMainLoop FLoop;
  TTempFolder FFolder;
  TTestIniFile FIni{FFolder.File(u"kk.ini")};
  TPanel FPanel{nullptr};
  TIntf<TForeignColumn> FColumn =
      MakeIntf<TForeignColumn>(u"Fremd", TAdditionalColumnInitialPosition::BehindName, 0);
};

TEST_F(ResultViewLayout, UsersLayoutIsThereInTheNextRun) {
  {
    TResultView view(ThreeColumns(), u"Test");
    Show(view);
    view.Table().DragColumnWidth(0, 222);
    view.Table().DragColumn(3, 0);
    view.Table().ClickHeader(1);
    view.ReleaseListData();
  }
  TResultView view(ThreeColumns(), u"Test");
  view.SetContainer(&FPanel);
  EXPECT_EQ(view.Table().Columns(0).Width, 222);
  EXPECT_EQ(view.Table().SortColumn(), 1);
  view.AddExtension(Extension());  // a column that comes later finds its place, too
  EXPECT_THAT(view.Table().ColumnOrder(), ElementsAre(3, 0, 1, 2));
  // What the program does is not the user's wish.
  view.Table().SetColumnWidth(0, 50);
  view.Close();
  TResultView third(ThreeColumns(), u"Test");
  Show(third);
  EXPECT_EQ(third.Table().Columns(0).Width, 222);
  // Without a key nothing is kept.
  TResultView other(ThreeColumns());
  Show(other);
  EXPECT_EQ(other.Table().Columns(0).Width, 100);
  other.Table().DragColumnWidth(0, 50);
  other.Close();
  EXPECT_FALSE(FIni.HasKey(u"Lists", u""));
}

TEST_F(ResultViewLayout, WhatTheUserDidSinceCountsMoreThanTheFile) {
  FIni.WriteString(u"Lists", u"Test", Look(cName, u":222:1"));
  TResultView view(ThreeColumns(), u"Test");
  view.SetContainer(&FPanel);
  view.Table().DragColumnWidth(0, 77);
  view.AddExtension(Extension());
  EXPECT_EQ(view.Table().Columns(0).Width, 77);
}

TEST_F(ResultViewLayout, WorksWithoutASettingsFile) {
  TKKIniFile* const before = SetIniFile(nullptr);
  TResultView view(ThreeColumns(), u"Test");
  Show(view);
  view.Table().DragColumnWidth(0, 50);
  view.Close();
  SetIniFile(before);
  EXPECT_FALSE(FIni.HasKey(u"Lists", u"Test"));
}

}  // namespace
}  // namespace kk
