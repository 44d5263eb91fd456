#pragma once

#include "host/base/TNotifyEventList.h"
#include "host/contract/IAdditionalColumns.h"
#include "host/contract/IPlugin.h"
#include "model/IWatchlistModelRoot.h"
#include "model/TLstWatchlistCategory.h"
#include "model/TLstWatchlistIntegration.h"
#include "persistence/TLstStreamForCompression.h"

namespace kk {

class TLstRemindItemSync;
class TRemindHandler;

/// The owner of the watch list's data: the tree, the registered sources, the reminders, and the
/// columns of this run. There is one, between CreateHandler and FreeHandler. It loads the file once
/// and saves it at the end and on demand; what goes wrong there is logged, and the data stay in
/// memory. Main thread.
class TWatchlistHandler : public TObject, public IWatchlistModelRoot {
 public:
  explicit TWatchlistHandler(const TIntf<IPlugin>& iPlugin);
  /// Categories and items are not freed, on purpose: see the source.
  ~TWatchlistHandler() override;

  TRemindHandler& RemindHandler() const { return *FRemindHandler; }
  TRemindHandler& GetRemindHandler() const { return *FRemindHandler; }
  const TIntf<IPlugin>& Plugin() const { return FPlugin; }
  TLstWatchlistIntegration& LstIntegration() const { return *FLstIntegration; }
  TLstWatchlistCategory& LstCategory() const { return *FLstCategory; }
  TLstWatchlistCategory& RootCategories() override { return *FLstCategory; }
  TLstRemindItemSync& LstRemind() const { return GetLstRemind(); }
  TLstRemindItemSync& GetLstRemind() const;
  TString FileName() const { return GetFileName(); }
  TString GetFileName() const;
  /// The columns that the sources' views were given; empty before Initialize and where there are
  /// none.
  const TIntf<IAdditionalColumns>& AdditionalColumns() const { return FAdditionalColumns; }
  /// Raised when the reminder column is clicked; may be empty.
  TNotifyEvent OnAdditionalColumnEditClick() const { return FOnAdditionalColumnEditClick; }
  void SetOnAdditionalColumnEditClick(TNotifyEvent iEvent) {
    FOnAdditionalColumnEditClick = iEvent;
  }

  /// Once, when the sources are registered: starts the reminders, gives the sources' views what the
  /// watch list and other plug-ins add to them, loads the file.
  void Initialize(const TIntf<IApplication>& iApplication);
  /// Ends the reminders, waits for running refreshes, saves, and forgets the listeners.
  void Uninitialize();

  /// A file that is there and can't be loaded leaves the catch-all category alone in the tree, and
  /// a copy of the file is put aside.
  void LoadFromFile();
  /// Everything counts as saved afterwards, whether or not that went well; see LastSaveFailed.
  void SaveToFile();
  void SaveAll() { SaveToFile(); }
  /// Kept in the interface and without effect, as required.
  void SaveCategoriesOnly() {}
  /// Writes the document for the program on the telephone; raises what its saver does.
  void SaveAllForMobileExport(TStringView iFileName) const;
  /// Whether the last save of this run did not go through; what it logged says why.
  bool LastSaveFailed() const { return FLastSaveFailed; }
  /// The saver's rule on this file. Nothing calls it.
  void MakeBackup() const;
  /// The saver's operation on this file. Nothing calls it.
  void GetAllStreamsInFile(TLstStreamForCompression& ioLst) const;

  /// Over the whole tree, in each category only the group of that source; the stored results are
  /// asked whether they are the same.
  bool HasSearchResult(const TGuid& iPluginId, const TIntf<ISearchResult>& iSearchResult) const;
  /// Empty if there is none.
  TIntf<ISearchResult> FindSameSearchResult(const TGuid& iPluginId,
                                            const TIntf<ISearchResult>& iSearchResult) const;
  int GetItemCount() const;

  /// Listeners get the item as the sender: when it has got a search result, and when it is about to
  /// die.
  void AddNotificationItem(const TNotifyEvent& iCallbackAdd, const TNotifyEvent& iCallbackDelete);
  void RemoveNotificationItem(const TNotifyEvent& iCallbackAdd,
                              const TNotifyEvent& iCallbackDelete);
  void NotifyItemAdd(TWatchlistItem& iItem) override;
  void NotifyItemDelete(TWatchlistItem& iItem) override;

  /// Ends the reminders' thread and stops the updaters without waiting for them.
  void TerminateThreads();
  /// Updaters with a request under way. The reminders' thread does not count.
  int ThreadCount() const;

 private:
  void WaitForThreads();
  bool WriteFile();
  void SetIntegrationsUnchanged();

  TIntf<IPlugin> FPlugin;
  std::unique_ptr<TLstWatchlistIntegration> FLstIntegration;
  std::unique_ptr<TLstWatchlistCategory> FLstCategory;
  std::unique_ptr<TNotifyEventListSecure> FLstNotifyItemAdd;
  std::unique_ptr<TNotifyEventListSecure> FLstNotifyItemDelete;
  std::unique_ptr<TRemindHandler> FRemindHandler;
  TIntf<IAdditionalColumns> FAdditionalColumns;
  TNotifyEvent FOnAdditionalColumnEditClick;
  bool FLastSaveFailed = false;
  IWatchlistModelRoot* FModelRootBefore;
};

/// The one handler; null before CreateHandler and after FreeHandler. Main thread, as all of these.
TWatchlistHandler* Handler();
/// A second call keeps the first handler.
void CreateHandler(const TIntf<IPlugin>& iPlugin);
/// No effect if there is none. The categories and what they hold are not freed, on purpose.
void FreeHandler();
/// Frees the categories that handlers have left, without telling anyone: what their items refer to
/// belongs to other packages, and is let go before these are unloaded. No effect while there is a
/// model's root.
void FreeBuriedCategories();

}  // namespace kk
