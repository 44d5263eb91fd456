#pragma once

#include "host/contract/ISearchResult.h"
#include "host/controls/TCommonExplorerBarItem.h"
#include "host/controls/TKK5SkinExplorerGroup.h"

namespace kk {

class TRemindItem;

/// The group "Erinnerung" of the explorer bar: the reminder of the focused result, and the links to
/// add, edit and delete it. Main thread; the handler stands while there is a result.
class TExplorerBarGroupReminderDetails : public TKK5SkinExplorerGroup {
 public:
  explicit TExplorerBarGroupReminderDetails(TExplorerBar* iBar);
  ~TExplorerBarGroupReminderDetails() override;

  /// Keeps the result, which may be absent, and shows it. What the result raises passes through,
  /// here and below.
  void SetSelection(const TIntf<ISearchResult>& iResult);
  const TIntf<ISearchResult>& Selection() const { return FResult; }
  /// Shows the result's reminder as it is now.
  void RefreshDisplay();
  /// Only if the result is the one on show, by its id.
  void RefreshDisplayIfEquals(const TIntf<ISearchResult>& iResult);

  TNotifyEvent GetOnClickAdd() const { return FOnClickAdd; }
  /// The sender of all three is the group.
  void SetOnClickAdd(TNotifyEvent iEvent) { FOnClickAdd = iEvent; }
  TNotifyEvent GetOnClickEdit() const { return FOnClickEdit; }
  void SetOnClickEdit(TNotifyEvent iEvent) { FOnClickEdit = iEvent; }
  TNotifyEvent GetOnClickDelete() const { return FOnClickDelete; }
  void SetOnClickDelete(TNotifyEvent iEvent) { FOnClickDelete = iEvent; }

 private:
  /// Null for no reminder.
  void ShowReminder(const TRemindItem* iReminder);
  bool CanAdd() const;
  void DoClickAdd(TObject* Sender);
  void DoClickEdit(TObject* Sender);
  void DoClickDelete(TObject* Sender);

  TIntf<TCommonExplorerBarLink> FAdd;
  TIntf<TCommonExplorerBarLink> FEdit;
  TIntf<TCommonExplorerBarLink> FDelete;
  TIntf<TCommonExplorerBarCaptionAndValue> FType;
  TIntf<TCommonExplorerBarCaptionAndValue> FSound;
  TIntf<TCommonExplorerBarCaptionAndValue> FDate;
  TIntf<TCommonExplorerBarCaptionAndValue> FTime;
  TIntf<ISearchResult> FResult;
  TNotifyEvent FOnClickAdd;
  TNotifyEvent FOnClickEdit;
  TNotifyEvent FOnClickDelete;
};

}  // namespace kk
