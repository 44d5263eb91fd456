#pragma once

#include <functional>
#include <string>

#include "host/contract/IMultiThreadPlugin.h"
#include "host/contract/ISettingsKeys.h"
#include "host/contract/IWatchlist.h"
#include "host/contract/IWatchlistAccess.h"
#include "host/contract/IWatchlistIntegration.h"
#include "host/contract/TCommonPlugin.h"
#include "host/contract/TPluginIntegration.h"

namespace kk {

/// A plug-in that behaves as the watch list does at its edge: it holds plain values, records its
/// calls and asks as the real one would.
class TFakeWatchlistPlugin : public TCommonPlugin<IMultiThreadPlugin, IPluginIntegration,
                                                  IWatchlistAccess, IWatchlist, ISettingsKeys> {
 public:
  TFakeWatchlistPlugin();

  TGuid GetId() const override { return FId; }
  TGroupIdentification GetGroup() const override { return TGroupIdentification{3}; }
  TPluginAttributes GetAttributes() const override { return 3; }
  TString GetSignature() const override { return {}; }
  TString GetDescription() const override { return u"Beobachten"; }
  TString GetLongDescription() const override { return {}; }
  void Initialize(const TIntf<IApplication>& iApplication) override;
  void Uninitialize() override;
  void ProcessCdmLineParams(TStringView iParamsAsStr) override;

  int ThreadCount() const override { return 0; }
  void TerminateThreads() override;

  void AddIntegration(const TIntf<IInterface>&) override {}
  void AddIntegrations(const TIntf<IInterfaceList>& iIntegrations) override;
  TIntf<IIntegrationInfo> GetIntegrationInfo() const override;
  TIntf<IInterfaceList> GetIntegrations(const TIntf<IIntegrationInfo>& iInfo) override;

  bool AddItem(const TGuid& iTargetPluginId, const TIntf<ISearchResult>& iSearchResult) override;
  bool HasItem(const TGuid& iTargetPluginId, const TIntf<ISearchResult>& iSearchResult) override;

  TWatchlistInfo GetTree() const override { return Tree; }
  TGuid AddCategory(const std::optional<TGuid>& iParent, TStringView iName,
                    const std::vector<TString>& iDescription) override;
  void RenameCategory(const TGuid& iCategory, TStringView iName) override;
  void DescribeCategory(const TGuid& iCategory, const std::vector<TString>& iLines) override;
  void MoveCategory(const TGuid& iCategory, const std::optional<TGuid>& iTarget) override;
  bool DeleteCategory(const TGuid& iCategory) override;
  void MoveItems(const std::vector<TGuid>& iItems, const TGuid& iTarget) override;
  bool DeleteItems(const std::vector<TGuid>& iItems) override;
  bool SetNote(const std::vector<TGuid>& iItems, const std::vector<TString>& iLines) override;
  void EditReminders(const std::vector<TGuid>& iItems) override;
  bool DeleteReminders(const std::vector<TGuid>& iItems) override;
  void SetOnReminderDue(TNotifyEventReminder iEvent) override { FOnDue = iEvent; }
  bool HasUnsavedReminders() const override { return UnsavedReminders; }
  int RefreshAll() override;
  int RefreshCategory(const TGuid& iCategory) override;
  int RefreshItems(const std::vector<TGuid>& iItems) override;
  int OpenUpdates() const override { return static_cast<int>(FOpen.size()); }
  void CancelUpdates() override { Note("CancelUpdates"); }
  void SetOnUpdateFinished(TNotifyEventSearchResult iEvent) override { FOnFinished = iEvent; }
  bool Save() override;
  bool ExportToFile(TStringView iFileName, const TWatchlistExportChoice& iChoice) override;
  bool ImportFromFile(TStringView iFileName, TStringView iCategoryName) override;
  bool OfferImport(TStringView iFileName) override;
  void ExportToMobile(TStringView iFileName) override;
  bool ImportFromMobile(TStringView iFileName) override;
  /// One page with the names, for each group.
  void PrintCategory(const TGuid& iCategory) override;

  std::vector<TSettingsKeyInfo> GetSettingsKeys() const override { return Keys; }

  /// The top-level category of this name; made if it is missing.
  TWatchlistCategoryInfo& Category(TStringView iName);
  /// A new item in a top-level category.
  TWatchlistItemInfo& Item(TStringView iCategory, TStringView iName, const TGuid& iSource = {});
  /// A new reminder of an item, or of one that is gone.
  TWatchlistReminderInfo& Reminder(const TGuid& iItem, TDateTime iTime);
  /// As the thread of the reminders: the first one leaves the list and is told of.
  void DeliverFirst();
  /// The same in two steps, for what happens between them.
  TWatchlistReminderInfo ExtractFirst();
  void Deliver(const TWatchlistReminderInfo& iReminder);
  const TIntf<IApplication>& Host() const { return Application(); }

  TWatchlistInfo Tree;
  std::vector<TSettingsKeyInfo> Keys;
  std::vector<std::string> Calls;  ///< "RenameCategory Alt Neu", ids as the names they belong to
  bool ShowsDialog = true;
  bool NeverEnds = false;           ///< refreshes stay open
  std::vector<TString> Failing;     ///< names whose refresh fails
  std::function<void()> OnRequest;  ///< called when a refresh begins
  TString UninitializeFailure;      ///< what Uninitialize raises
  bool UnsavedReminders = false;
  bool SaveFails = false;
  bool ExchangeFails = false;      ///< exports and imports
  std::function<void()> OnImport;  ///< what an import takes over
  int64_t EditorStartsLate = 0;    ///< ms before now at which the editor was opened
  bool ReminderIsLost = false;     ///< the editor's reminder does not come into the list
  bool SourceHasNoText = false;    ///< the reminder comes without a kind

 private:
  struct TOpen {
    TIntf<ISearchResult> Result;
    TGuid Source;
    TGuid Target;  ///< for an add
    bool IsAdd;
  };
  void Note(const std::string& iCall) { Calls.push_back(iCall); }
  std::string NameOf(const TGuid& iId) const;
  bool Ask(TStringView iText);
  bool Import(const std::string& iCall);
  bool AskForCategory(TGuid& oTarget);
  void Queue(TOpen iOpen);
  void EndFirst();
  int QueueItems(const std::vector<TWatchlistCategoryInfo>& iCategories);

  const TGuid FId = NewGuid();
  std::vector<TIntf<IWatchlistIntegration>> FSources;
  std::vector<TOpen> FOpen;
  TNotifyEventSearchResult FOnFinished;
  TNotifyEventReminder FOnDue;
};

}  // namespace kk
