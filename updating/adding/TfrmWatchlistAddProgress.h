#pragma once

#include "host/controls/TButton.h"
#include "host/controls/TGauge.h"
#include "host/controls/TLabel.h"
#include "host/controls/TPanel.h"
#include "plugin/texts/UnitKKPluginWatchlistResourceStrings.h"
#include "updating/adding/IAddProgressOwner.h"
#include "updating/adding/TLstAddItem.h"

namespace kk {

/// All updates of an add are through. No operation uses it.
using TNotifyFinishedAllUpdates =
    TDelegate<void(TObject* Sender, const TIntf<IInterfaceList>& iList)>;

/// Adds new results through a first refresh: only what its source could refresh becomes an item.
/// Shows how far it has come, and saves behind the last one. A failed refresh, and a result whose
/// item can't be made, disappears without a word.
///
/// It is a panel over the section, made once, and lives as long as the section. Either it is hidden
/// with no batch open, or visible with some. Main thread; it pumps the main loop, so all of it may
/// run inside another of its operations.
class TfrmWatchlistAddProgress : public TPanel {
 public:
  /// Owner and parent are the section; the owner is borrowed.
  TfrmWatchlistAddProgress(IAddProgressOwner& iOwner, TControl* iParent);

  /// Queues the results in front of the source's queue, in their order. The list is kept and
  /// changed: what can't be queued, because its id is queued already, goes, and later what is done.
  void AddWithUpdate(const TIntf<IInterfaceList>& iList, TWatchlistIntegration& iIntegration,
                     TWatchlistCategory& iTargetCategory);
  /// The end of a refresh, from the updater. Raises EListError as TLstAddItem::RemoveItemById does.
  void DoUpdaterFinishedItem(TObject* Sender, const TIntf<ISearchResult>& iSearchResult,
                             bool iSucceeded);
  /// Forgets the open batches: what is refreshed later is not added any more. What was added stays.
  void btnCancelClick(TObject* Sender);
  void ShowMe();

  const TLstAddItem& LstAddItem() const { return FLstAddItem; }

  TLabel lblInfo{this, u"lblInfo", _resAddProgressInfo};
  TKK5SkinGauge prgrsbarAdd{this, u"prgrsbarAdd"};
  TButton btnCancel{this, u"btnCancel", _resAddProgressCancel};

 private:
  /// Takes what can't be queued out of the list.
  void Queue(IInterfaceList& ioList, TWatchlistItemUpdater& ioUpdater);
  void Announce(int iCount);
  void AddItem(const TIntf<ISearchResult>& iSearchResult);
  void FinishAdd();

  IAddProgressOwner& FOwner;
  TLstAddItem FLstAddItem{true};
};

}  // namespace kk
