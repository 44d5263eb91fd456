#pragma once

#include <vector>

#include "host/contract/IExplorerBarExtender.h"
#include "host/contract/ISearchSource.h"
#include "host/controls/TKK5SkinHeaderItemTabExt.h"
#include "host/controls/TPanel.h"
#include "host/controls/TTabStrip.h"

namespace kk {

/// How the last search of a source stands.
enum class TSearchState { ssNone, ssRunning, ssDone, ssCancelled };

/// A source in the section "Suchen": its head in the strip, the panel with its list, what other
/// plug-ins add to the view, and its search. Each event has the tab as its sender. Main thread.
class TSearchTab : public TObject {
 public:
  /// The results and the extensions of other plug-ins, each a list that its GetIntegrations
  /// returned; empty ones are passed over. The panel is hidden at first. What the source raises
  /// passes on, and it has its panel no more then.
  TSearchTab(TIntf<ISearchSource> iSource, const std::vector<TIntf<IInterfaceList>>& iExtensions,
             TTabStrip& ioStrip, TPanel& ioResults);
  /// Ends the search and lets the source drop its list; what that raises is swallowed.
  ~TSearchTab() override;

  const TIntf<ISearchSource>& Source() const { return FSource; }
  TKK5SkinHeaderItemTabExt& Head() { return FHead; }
  TPanel& Container() { return FContainer; }

  /// A search that runs is given up first. What the source raises is a problem of the search.
  void Search(TStringView iText);
  /// No effect if none runs.
  void Cancel();
  TSearchState State() const { return FState; }
  /// What went wrong in the last search, one line each.
  const std::vector<TString>& Problems() const { return FProblems; }
  /// 0 where the source does not say.
  int ResultCount() const;

  /// What the extensions have for the explorer bar goes into it, or out of it again. What one
  /// raises keeps no other from it.
  void AddTo(IExplorerBar& ioBar);
  void DeleteFrom(IExplorerBar& ioBar);

  void SetOnSelect(TNotifyEvent iEvent) { FOnSelect = iEvent; }
  /// The search has begun or come to its end.
  void SetOnState(TNotifyEvent iEvent) { FOnState = iEvent; }
  /// The selection in the list is another one, and the source has told the extensions.
  void SetOnSelectionChanged(TNotifyEvent iEvent) { FOnSelectionChanged = iEvent; }

 private:
  TSearchTab(TIntf<ISearchSource> iSource, TTabStrip& ioStrip, TPanel& ioResults);
  void AddExtensions(const TIntf<IInterfaceList>& iExtensions);
  void SetState(TSearchState iState);
  void AddProblems(TStringView iText);
  void DoHeadClick(TObject* Sender);
  void DoSearchFinished(TObject* Sender, TStringView iProblem);
  void DoSelectionChanged(TObject* Sender);

  TIntf<ISearchSource> FSource;
  TKK5SkinHeaderItemTabExt FHead;
  TPanel FContainer;
  std::vector<TIntf<IExplorerBarExtender>> FExplorerBarExtenders;
  TSearchState FState = TSearchState::ssNone;
  std::vector<TString> FProblems;
  TNotifyEvent FOnSelect;
  TNotifyEvent FOnState;
  TNotifyEvent FOnSelectionChanged;
};

}  // namespace kk
