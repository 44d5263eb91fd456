#pragma once

#include "host/contract/IWatchlistAccess.h"
#include "views/TfrmKKWatchlist.h"

namespace kk {

/// The section's commands by ids: looks up what is meant, asks the section's questions and calls
/// its commands. The section is borrowed until Detach; from then on, every operation raises
/// Exception. Main thread.
class TWatchlistAccess : public TInterfaced<IWatchlistAccess> {
 public:
  explicit TWatchlistAccess(TfrmKKWatchlist& iForm) : FForm(&iForm) {}
  void Detach();

  TWatchlistInfo GetTree() const override;

  TGuid AddCategory(const std::optional<TGuid>& iParent, TStringView iName,
                    const std::vector<TString>& iDescription) override;
  void RenameCategory(const TGuid& iCategory, TStringView iName) override;
  void DescribeCategory(const TGuid& iCategory, const std::vector<TString>& iLines) override;
  void MoveCategory(const TGuid& iCategory, const std::optional<TGuid>& iTarget) override;
  bool DeleteCategory(const TGuid& iCategory) override;

  /// Items that stand in the target already stay as they are, and the others move.
  void MoveItems(const std::vector<TGuid>& iItems, const TGuid& iTarget) override;
  bool DeleteItems(const std::vector<TGuid>& iItems) override;
  bool SetNote(const std::vector<TGuid>& iItems, const std::vector<TString>& iLines) override;
  /// One editor for items of any sources, with the first that has not ended as the pattern.
  void EditReminders(const std::vector<TGuid>& iItems) override;
  bool DeleteReminders(const std::vector<TGuid>& iItems) override;
  void SetOnReminderDue(TNotifyEventReminder iEvent) override;
  bool HasUnsavedReminders() const override;

  int RefreshAll() override;
  int RefreshCategory(const TGuid& iCategory) override;
  int RefreshItems(const std::vector<TGuid>& iItems) override;
  int OpenUpdates() const override;
  void CancelUpdates() override;
  void SetOnUpdateFinished(TNotifyEventSearchResult iEvent) override;

  bool Save() override;

  bool ExportToFile(TStringView iFileName, const TWatchlistExportChoice& iChoice) override;
  bool ImportFromFile(TStringView iFileName, TStringView iCategoryName) override;
  bool OfferImport(TStringView iFileName) override;
  void ExportToMobile(TStringView iFileName) override;
  bool ImportFromMobile(TStringView iFileName) override;
  void PrintCategory(const TGuid& iCategory) override;

 private:
  /// The section, running; raises Exception behind Detach.
  TfrmKKWatchlist& Form() const;
  TfrmKKWatchlist& BeforeImport();
  bool Imported(bool iDone);
  void DoReminderDue(TObject* Sender, TRemindItem& iItem);

  TfrmKKWatchlist* FForm;
  TNotifyEventReminder FOnReminderDue;
};

}  // namespace kk
