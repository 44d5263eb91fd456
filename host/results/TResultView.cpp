#include "host/results/TResultView.h"

#include <algorithm>

#include "host/base/Guard.h"
#include "host/common/TKKIniFile.h"
#include "host/contract/IAdditionalColumns.h"
#include "host/contract/INotifications.h"
#include "host/contract/IResultsOnShow.h"
#include "host/results/TResultLayout.h"

namespace kk {

namespace {

constexpr TStringView cLayoutSection = u"Lists";
// Texts are that much wider than those for which extensions measure their columns.
constexpr int cTextWidth = 3;
constexpr int cSmallTextWidth = 2;

// One that fails keeps no other from being asked; one may add or drop some meanwhile.
template <class I, class Function>
void ForEachWith(const std::vector<TIntf<IInterface>>& iExtensions, TStringView iPlace,
                 Function iFunction) {
  const std::vector<TIntf<IInterface>> extensions = iExtensions;
  for (const auto& extension : extensions) {
    if (const auto found = Supports<I>(extension)) {
      Guarded(iPlace, [&] { iFunction(*found); });
    }
  }
}

bool ShowsAnything(const std::vector<TMenuItem*>& iEntries) {
  return std::any_of(iEntries.begin(), iEntries.end(), [](const TMenuItem* iEntry) {
    return iEntry->Visible() && !iEntry->IsSeparator();
  });
}

}  // namespace

// What others hold; the view may be gone before them.
class TResultView::TResults : public TInterfaced<ISearchResults, IResultsOnShow> {
 public:
  explicit TResults(TResultTable& iTable) : FTable(&iTable) {}
  void Detach() { FTable = nullptr; }

  int GetCount() const override { return FTable != nullptr ? FTable->GetCount() : 0; }
  int GetSelectedCount() const override { return FTable != nullptr ? FTable->SelectedCount() : 0; }
  TIntf<ISearchResult> GetItems(int iIndex) const override {
    (void)CheckedIndex(iIndex, static_cast<size_t>(GetCount()));
    return FTable->Results(iIndex);
  }
  TIntf<ISearchResult> GetSelectedItems(int iIndex) const override {
    const size_t index = CheckedIndex(iIndex, static_cast<size_t>(GetSelectedCount()));
    return FTable->Results(FTable->SelectedRows()[index]);
  }
  TIntf<ISearchResult> GetFocused() const override {
    if (FTable == nullptr || FTable->FocusedRow() < 0) return {};
    return FTable->Results(FTable->FocusedRow());
  }
  void Repaint() override {
    if (FTable != nullptr) FTable->Invalidate();
  }

 private:
  TResultTable* FTable;
};

// The entries of one extension, and the line above them.
struct TResultView::TMenuPart {
  TIntf<IContextMenuExtender> Extender;
  std::unique_ptr<TMenuItem> Line;
  /// It couldn't say which of its entries can be clicked, so they are not shown.
  bool Failed = false;
};

TResultView::TResultView(std::vector<TResultColumn> iColumns, TStringView iLayoutKey)
    : FTable(nullptr, u"tblResults"),
      FResultsOfTable(MakeIntf<TResults>(FTable)),
      FResults(FResultsOfTable),
      FLayoutKey(iLayoutKey) {
  for (TResultColumn& column : iColumns) {
    FTable.AddColumn(std::move(column), FTable.ColumnCount());
  }
  FTable.SetMenu(this);
  FTable.SetOnSelectionChanged(TNotifyEvent::Of<&TResultView::DoSelectionChanged>(this));
  FTable.SetOnOpen(TNotifyEvent::Of<&TResultView::DoOpen>(this));
  FTable.SetOnLayoutChanged(TNotifyEvent::Of<&TResultView::DoLayoutChanged>(this));
}

TResultView::~TResultView() { FResultsOfTable->Detach(); }

void TResultView::SetContainer(TPanel* iPanel) {
  FTable.SetContainer(iPanel);
  if (iPanel == nullptr) return;
  FLastingExtensions = FExtensions.size();
  if (FLayoutKey.empty()) return;
  Guarded(u"TResultView.SetContainer",
          [this] { FLayout = IniFile().ReadString(cLayoutSection, FLayoutKey, {}); });
  ApplyLayout();
}

void TResultView::ApplyLayout() {
  // What the user did since counts more.
  if (!FLayout.empty() && !FLayoutChanged) TResultLayout::Apply(FLayout, FTable);
}

void TResultView::SaveLayout() {
  if (FLayoutKey.empty() || !std::exchange(FLayoutChanged, false)) return;
  FLayout = TResultLayout::TextOf(FTable);
  Guarded(u"TResultView.SaveLayout",
          [this] { IniFile().WriteString(cLayoutSection, FLayoutKey, FLayout); });
}

void TResultView::AddExtensions(const TIntf<IInterfaceList>& iExtensions) {
  if (!iExtensions) return;
  for (int i = 0; i < iExtensions->GetCount(); ++i) AddExtension(iExtensions->Get(i));
}

void TResultView::AddExtension(const TIntf<IInterface>& iExtension) {
  if (!iExtension) return;
  FExtensions.push_back(iExtension);
  if (const auto notifications = Supports<INotifications>(iExtension)) {
    notifications->SetSearchResults(FResults);
  }
  if (auto extender = Supports<IContextMenuExtender>(iExtension)) {
    FMenuParts.push_back({std::move(extender), std::make_unique<TMenuItem>(TMenuItem::cSeparator)});
  }
  if (const auto additional = Supports<IAdditionalColumns>(iExtension)) {
    if (const auto columns = additional->GetColumns()) AddColumns(*columns);
  }
}

void TResultView::AddColumns(const IInterfaceList& iColumns) {
  for (int i = 0; i < iColumns.GetCount(); ++i) {
    const auto additional = GetAs<IAdditionalColumn>(iColumns, i);
    if (!additional || FTable.IndexOfColumn(additional->GetId()) >= 0) continue;
    TResultColumn column;
    column.Id = additional->GetId();
    column.Caption = additional->GetCaption();
    column.Width = additional->GetWidth() * cTextWidth / cSmallTextWidth;
    column.Additional = additional;
    FTable.AddColumn(std::move(column), PlaceOf(*additional));
  }
  ApplyLayout();
}

// In front of the first column that has to stand to the right of it.
int TResultView::PlaceOf(const IAdditionalColumn& iColumn) const {
  // The view's own columns were there first, the one that names the row as the first of all.
  const auto rank = [](int iIndex, const IAdditionalColumn* iOther) {
    if (iOther == nullptr) return iIndex == 0 ? 1 : 3;
    return iOther->GetInitialPosition() == TAdditionalColumnInitialPosition::BeforeOwn ? 0 : 2;
  };
  const int wanted = rank(-1, &iColumn);
  const std::vector<int>& order = FTable.ColumnOrder();
  const auto next = std::find_if(order.begin(), order.end(), [&](int iIndex) {
    const IAdditionalColumn* other = FTable.Columns(iIndex).Additional.Get();
    if (rank(iIndex, other) != wanted) return rank(iIndex, other) > wanted;
    return other->GetSortOrder() > iColumn.GetSortOrder();
  });
  return static_cast<int>(next - order.begin());
}

std::vector<TMenuItem*> TResultView::GetEntries() {
  std::vector<TMenuItem*> entries;
  for (int i = 0; i < FOwnEntries.GetCount(); ++i) entries.push_back(&FOwnEntries.GetItems(i));
  bool showsAnything = ShowsAnything(entries);
  for (const TMenuPart& part : FMenuParts) {
    if (part.Failed) continue;
    std::vector<TMenuItem*> added;
    for (int i = 0; i < part.Extender->GetCount(); ++i) {
      added.push_back(&part.Extender->GetItems(i));
    }
    const bool shows = ShowsAnything(added);
    part.Line->SetVisible(shows && showsAnything);
    showsAnything = showsAnything || shows;
    if (!added.empty() && !entries.empty()) entries.push_back(part.Line.get());
    entries.insert(entries.end(), added.begin(), added.end());
  }
  return entries;
}

void TResultView::BeforePopup(int iRow, int iColumn) {
  const TIntf<ISearchResult> result = iRow >= 0 ? FTable.Results(iRow) : TIntf<ISearchResult>();
  const TGuid column = iColumn >= 0 ? FTable.Columns(iColumn).Id : cEmptyGuid;
  for (int i = 0; i < FOwnEntries.GetCount(); ++i) {
    FOwnEntries.GetItems(i).SetEnabled(FTable.FocusedRow() >= 0);
  }
  for (TMenuPart& part : FMenuParts) {
    part.Failed = !Guarded(u"TResultView.BeforePopup",
                           [&] { part.Extender->BeforeContextMenuPopup(result, column); });
  }
}

void TResultView::DoSelectionChanged(TObject*) {
  ForEachWith<INotifications>(FExtensions, u"TResultView.SelectionChanged",
                              [](INotifications& iOne) { iOne.SelectionChanged(); });
  if (FOnSelectionChanged) FOnSelectionChanged(this);
}

void TResultView::DoOpen(TObject*) {
  const TIntf<ISearchResult> focused = FResults->GetFocused();
  if (FOnOpen && focused) FOnOpen(this, focused);
}

void TResultView::ReleaseList() {
  ForEachWith<INotifications>(FExtensions, u"TResultView.ReleaseList", [](INotifications& iOne) {
    iOne.Close();
    iOne.WaitFor();
  });
}

void TResultView::ReleaseListData() {
  SaveLayout();
  DropExtensions(FLastingExtensions);
  FTable.SetResults(nullptr);
  FTable.SetContainer(nullptr);
}

void TResultView::Close() {
  FLastingExtensions = 0;
  ReleaseListData();
}

void TResultView::DropExtensions(size_t iFrom) {
  std::vector<TIntf<IInterface>> kept = std::move(FExtensions);
  FExtensions.clear();
  FMenuParts.clear();
  DropAdditionalColumns();
  const size_t from = std::min(iFrom, kept.size());
  const std::vector<TIntf<IInterface>> dropped(kept.begin() + static_cast<ptrdiff_t>(from),
                                               kept.end());
  kept.resize(from);
  for (const auto& extension : kept) AddExtension(extension);
  ForEachWith<INotifications>(dropped, u"TResultView.DropExtensions",
                              [](INotifications& iOne) { iOne.SetSearchResults(nullptr); });
}

void TResultView::DropAdditionalColumns() {
  for (int i = FTable.ColumnCount() - 1; i >= 0; --i) {
    if (FTable.Columns(i).Additional) FTable.DeleteColumn(i);
  }
}

}  // namespace kk
