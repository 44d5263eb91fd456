#pragma once

#include <string>
#include <vector>

#include "host/base/Exception.h"
#include "host/controls/TPanel.h"
#include "host/results/TResultTable.h"
#include "tests/support/TFakeSource.h"
#include "tests/support/TTestMainLoop.h"

namespace kk {

inline TIntf<ISearchResult> Plain(TStringView iName) { return FakeResult(iName); }

inline TIntf<IInterfaceList> Plains(const std::vector<TIntf<ISearchResult>>& iResults) {
  const auto list = NewInterfaceList();
  for (const auto& result : iResults) list->Add(result);
  return list;
}

/// The name; one that is "kaputt" raises.
class TNameContent : public IResultColumnContent {
 public:
  TResultCell GetCell(const TIntf<ISearchResult>& iResult) const override {
    Check(iResult);
    return {iResult->GetName(), {u"BILD"}, u"Hinweis zu " + iResult->GetName()};
  }
  TResultSortKey GetSortKey(const TIntf<ISearchResult>& iResult) const override {
    ++Keys;
    Check(iResult);
    return TResultSortKey::OfText(iResult->GetName());
  }

  mutable int Keys = 0;

 private:
  static void Check(const TIntf<ISearchResult>& iResult) {
    if (iResult->GetName() == u"kaputt") throw Exception(u"Spalte kaputt");
  }
};

/// How long the name is.
class TLengthContent : public IResultColumnContent {
 public:
  TResultCell GetCell(const TIntf<ISearchResult>& iResult) const override {
    return {IntToStr(static_cast<int64_t>(iResult->GetName().size())), {}, {}};
  }
  TResultSortKey GetSortKey(const TIntf<ISearchResult>& iResult) const override {
    return TResultSortKey::OfNumber(static_cast<double>(iResult->GetName().size()));
  }
};

inline TResultColumn OwnColumn(const TGuid& iId, TStringView iCaption,
                               std::shared_ptr<const IResultColumnContent> iContent) {
  TResultColumn column;
  column.Id = iId;
  column.Caption = iCaption;
  column.Content = std::move(iContent);
  return column;
}

inline constexpr TGuid cNameColumn = GuidLiteral("{11111111-0000-0000-0000-000000000000}");
inline constexpr TGuid cLengthColumn = GuidLiteral("{22222222-0000-0000-0000-000000000000}");

/// A column of an extension: sorts by the last letter, writes the name, and notes what it hears.
class TForeignColumn : public TInterfaced<IAdditionalColumn>, public ITreeViewCellPainter {
 public:
  TForeignColumn(TString iCaption, TAdditionalColumnInitialPosition iPosition, int iSortOrder)
      : FCaption(std::move(iCaption)), FPosition(iPosition), FSortOrder(iSortOrder) {}

  TGuid GetId() const override { return FId; }
  TString GetCaption() const override { return FCaption; }
  int GetWidth() const override { return 30; }
  int GetSortOrder() const override { return FSortOrder; }
  TAdditionalColumnInitialPosition GetInitialPosition() const override { return FPosition; }
  ITreeViewCellPainter& GetCellPainter() override { return *this; }
  void Click(const TIntf<ICellMouseInfo>& iInfo) override { Note("click", iInfo); }
  void MouseMove(const TIntf<ICellMouseInfo>& iInfo) override {
    Note("move", iInfo);
    iInfo->SetCursor(cCursorHandPoint);
    if (Fails) throw Exception(u"Maus kaputt");
  }
  bool IsMouseOverBitmap(const TIntf<ICellMouseInfo>&) const override { return true; }
  int CompareNodes(int iSortColumn, const TIntf<ISearchResult>& iA,
                   const TIntf<ISearchResult>& iB) const override {
    SortColumn = iSortColumn;
    if (Fails) throw Exception(u"Vergleich kaputt");
    if (Contradicts) return 1;
    return iA->GetName().back() - iB->GetName().back();
  }
  void Paint(const TIntf<ICellPaintInfo>& iInfo) override {
    if (Fails) throw Exception(u"Bild kaputt");
    iInfo->GetCanvas().DrawText(iInfo->GetCellRect(), iInfo->GetSearchResult()->GetName());
  }

  std::vector<std::string> Calls;
  mutable int SortColumn = -1;
  bool Fails = false;
  bool Contradicts = false;

 private:
  void Note(const std::string& iWhat, const TIntf<ICellMouseInfo>& iInfo) {
    Calls.push_back(iWhat + " " + ToUtf8(iInfo->GetSearchResult()->GetName()) + " " +
                    std::to_string(iInfo->GetMousePos().X) + "," +
                    std::to_string(iInfo->GetMousePos().Y));
  }

  TGuid FId = NewGuid();
  TString FCaption;
  TAdditionalColumnInitialPosition FPosition;
  int FSortOrder;
};

/// Writes down what a table tells, and looks at it as an item model would: before a change the
/// table is as it was, after it as it is said to be.
class TTableWatcher : public IResultTableObserver {
 public:
  explicit TTableWatcher(TResultTable& ioTable) : FTable(ioTable) { FTable.SetTableObserver(this); }
  ~TTableWatcher() override { FTable.SetTableObserver(nullptr); }

  void BeforeTableChange(const TResultTableChange& iChange) override {
    FBefore = iChange;
    FCountBefore = FTable.GetCount();
  }
  void AfterTableChange(const TResultTableChange& iChange) override {
    using TKind = TResultTableChange::TKind;
    EXPECT_EQ(iChange, FBefore);
    int count = FCountBefore;
    std::string call = "reset";
    if (iChange.Kind == TKind::rcInsert) {
      count += iChange.Count;
      call = "insert " + Of(iChange);
    } else if (iChange.Kind == TKind::rcRemove) {
      count -= iChange.Count;
      call = "remove " + Of(iChange);
    } else if (iChange.Kind == TKind::rcSort) {
      call = "sort";
    }
    if (iChange.Kind == TKind::rcReset) count = FTable.GetCount();
    EXPECT_EQ(FTable.GetCount(), count);
    Calls.push_back(call);
  }
  void RowChanged(int iRow) override { Calls.push_back("row " + std::to_string(iRow)); }
  void ScrollIntoView(int iRow) override { Calls.push_back("scroll " + std::to_string(iRow)); }

  std::vector<std::string> TakeCalls() { return std::exchange(Calls, {}); }
  std::vector<std::string> Calls;

 private:
  static std::string Of(const TResultTableChange& iChange) {
    return std::to_string(iChange.Row) + "+" + std::to_string(iChange.Count);
  }

  TResultTable& FTable;
  TResultTableChange FBefore;
  int FCountBefore = 0;
};

/// The names in the rows, joined.
inline std::string NamesOf(const TResultTable& iTable) {
  std::string names;
  for (int row = 0; row < iTable.GetCount(); ++row) {
    if (!names.empty()) names += " ";
    names += ToUtf8(iTable.Results(row)->GetName());
  }
  return names;
}

}  // namespace kk
