#pragma once

#include "host/contract/ISearchResult.h"
#include "host/controls/TCommonExplorerBarItem.h"
#include "host/controls/TCommonExplorerBarPanel.h"

namespace kk {

class TWatchlistItem;

/// The panel "Details" of the explorer bar: the note and the last refresh of the focused result,
/// above which sources put details of their own. Main thread; the handler stands while there is a
/// result.
class TExplorerBarPanelItemDetails : public TCommonExplorerBarPanel {
 public:
  TExplorerBarPanelItemDetails();
  ~TExplorerBarPanelItemDetails() override;

  /// Puts its items in.
  void Init();

  /// Keeps the result, which may be absent, and shows it. Failures are swallowed, here and below;
  /// after one, no refresh is on offer.
  void SetSelection(const TIntf<ISearchResult>& iResult);
  const TIntf<ISearchResult>& Selection() const { return FResult; }
  /// Shows what the model holds of the result now.
  void RefreshDisplay();
  /// Only if the result is the one on show, by its id.
  void RefreshDisplayIfEquals(const TIntf<ISearchResult>& iResult);

  TNotifyEvent GetOnClickUpdate() const { return FOnClickUpdate; }
  /// The sender of both is the panel.
  void SetOnClickUpdate(TNotifyEvent iEvent) { FOnClickUpdate = iEvent; }
  TNotifyEvent GetOnClickEditDescription() const { return FOnClickEditDescription; }
  void SetOnClickEditDescription(TNotifyEvent iEvent) { FOnClickEditDescription = iEvent; }

 private:
  void ShowResult();
  /// Null for no item, here and below.
  void ShowNote(const TWatchlistItem* iItem);
  void ShowUpdate(const TWatchlistItem* iItem);
  void DoClickUpdate(TObject* Sender);
  void DoClickEditDescription(TObject* Sender);

  TIntf<TCommonExplorerBarText> FDescriptionTitle;
  TIntf<TCommonExplorerBarLink> FDescription;
  TIntf<TCommonExplorerBarCaptionAndValue> FUpdateDateTime;
  TIntf<TCommonExplorerBarLink> FUpdate;
  TIntf<TCommonExplorerBarText> FUpdateNotIfFinished;
  TIntf<ISearchResult> FResult;
  TNotifyEvent FOnClickUpdate;
  TNotifyEvent FOnClickEditDescription;
};

}  // namespace kk
