#pragma once

#include <memory>
#include <vector>

#include "host/contract/IContextMenuExtender.h"
#include "host/contract/ISearchResults.h"
#include "host/results/TResultTable.h"

namespace kk {

/// A result that the user opens.
using TNotifyOpenResult = TDelegate<void(TObject* Sender, const TIntf<ISearchResult>& iResult)>;

/// The result list of a source: a table in a panel, with the extensions of other plug-ins. A source
/// holds one for each of its views and hands the operations of IWatchlistVisualization or
/// ISearchSource on to it.
///
/// Extensions: one with INotifications hears of the results and of each change of the selection,
/// one with IContextMenuExtender has its entries in the popup menu, in the order in which the
/// extensions came and with lines between them, and the columns of one with IAdditionalColumns come
/// into the table by their initial position and their sort order. The results that they are told of
/// are an IResultsOnShow, too. One that fails keeps no other
/// from being asked. IExplorerBarExtender is the business of who shows the view. Main thread.
class TResultView : public TObject, private IResultTableMenu {
 public:
  /// The view's own columns, from the left. iLayoutKey: where the settings file keeps how the user
  /// has laid out the table, in the section "Lists"; it is kept nowhere if that is empty.
  explicit TResultView(std::vector<TResultColumn> iColumns, TStringView iLayoutKey = {});
  ~TResultView() override;

  TResultTable& Table() { return FTable; }
  /// The results on show and the selection among them, which is told from the top down; the same
  /// object always. It is empty when the view is gone.
  const TIntf<ISearchResults>& Results() const { return FResults; }
  /// Entries that are added here stand in front of the popup menu, and can be clicked while a
  /// result has the focus.
  TMenuItem& OwnEntries() { return FOwnEntries; }

  /// The panel that the table stands in; borrowed, null takes it back. Extensions from before the
  /// first panel last until Close.
  void SetContainer(TPanel* iPanel);
  void AddExtensions(const TIntf<IInterfaceList>& iExtensions);
  void AddExtension(const TIntf<IInterface>& iExtension);
  const std::vector<TIntf<IInterface>>& Extensions() const { return FExtensions; }

  void SetResults(const TIntf<IInterfaceList>& iResults) { FTable.SetResults(iResults); }
  void AddResult(const TIntf<ISearchResult>& iResult) { FTable.AddResult(iResult); }
  void RemoveResults(const TIntf<IInterfaceList>& iResults) { FTable.RemoveResults(iResults); }
  void SelectResults(const TIntf<IInterfaceList>& iResults) { FTable.SelectResults(iResults); }
  void RefreshResult(const TIntf<ISearchResult>& iResult) { FTable.RefreshResult(iResult); }

  /// Tells the extensions that the view closes.
  void ReleaseList();
  /// Drops the results, and the extensions that came with the container; those from before, which
  /// nobody adds again, stay. Takes the table out of its panel, and writes its layout if the user
  /// has changed it.
  void ReleaseListData();
  /// Drops everything that others put in, at the end of the program.
  void Close();

  /// Told behind the extensions.
  void SetOnSelectionChanged(TNotifyEvent iEvent) { FOnSelectionChanged = iEvent; }
  /// A double click on a row, or Return.
  void SetOnOpen(TNotifyOpenResult iEvent) { FOnOpen = iEvent; }

 private:
  class TResults;
  struct TMenuPart;

  std::vector<TMenuItem*> GetEntries() override;
  void BeforePopup(int iRow, int iColumn) override;
  void AddColumns(const IInterfaceList& iColumns);
  int PlaceOf(const IAdditionalColumn& iColumn) const;
  void DropExtensions(size_t iFrom);
  void DropAdditionalColumns();
  void ApplyLayout();
  void SaveLayout();
  void DoSelectionChanged(TObject*);
  void DoOpen(TObject*);
  void DoLayoutChanged(TObject*) { FLayoutChanged = true; }

  TResultTable FTable;
  TIntf<TResults> FResultsOfTable;
  TIntf<ISearchResults> FResults;
  std::vector<TIntf<IInterface>> FExtensions;
  size_t FLastingExtensions = 0;
  TMenuItem FOwnEntries;
  std::vector<TMenuPart> FMenuParts;
  TString FLayoutKey;
  TString FLayout;              // as it was read with the first panel
  bool FLayoutChanged = false;  // by the user
  TNotifyEvent FOnSelectionChanged;
  TNotifyOpenResult FOnOpen;
};

}  // namespace kk
