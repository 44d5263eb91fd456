#pragma once

#include "host/controls/TGauge.h"
#include "host/controls/TLabel.h"
#include "host/controls/TfrmKKCommonBase.h"
#include "model/TLstWatchlistIntegration.h"
#include "persistence/exchange/TSameSearchResults.h"
#include "persistence/exchange/TWatchlistCategoryMerge.h"
#include "plugin/texts/UnitKKPluginWatchlistResourceStrings.h"
#include "reminders/TLstRemindItem.h"

namespace kk {

/// What of an import file goes into the watch list.
struct TImportData {
  /// Changed by the import: what it takes goes out of it.
  TLstWatchlistCategory* LstCategory = nullptr;
  /// Changed likewise; null for no reminders.
  TLstRemindItem* LstRemindItem = nullptr;
  /// The chosen records, those of the handler.
  const TLstWatchlistIntegration* LstIntegration = nullptr;
  /// Into which category all items go, by its name; empty for the structure of the file.
  TString NewCategoryName;
};

/// Takes imported data over into the watch list and shows how far it has come. What is there
/// already, in the eyes of its source, is left out. Nothing is rolled back: what was taken over
/// before a failure stays. Linear in categories and items if the results tell their keys
/// (ISearchResultSameKey). Main thread; it pumps the main loop while the window stands.
class TfrmWatchlistImportProgress final : public TfrmKKCommonBase {
 public:
  /// True if all went through; a failure has been told in a message box. In the background there is
  /// no window. The data are borrowed.
  static bool Display(TForm* iOwner, const TImportData& iData, bool iInBackground);
  ~TfrmWatchlistImportProgress() override;

  TLabel lblAction{this, u"lblAction"};
  TKK5SkinGauge prgrsbarAdd{this, u"prgrsbarAdd"};

 protected:
  void Loaded() override { SetWhiteBackground(true); }
  void UserMessage(int iMessage) override;

 private:
  TfrmWatchlistImportProgress(TForm* iOwner, const TImportData& iData, bool iInBackground);
  void ExecuteImport();
  void RunPhases();
  void Begin(TStringView iPhase);
  void CalcTotalSteps();
  void PrepareImportDataWithNewCategory(TStringView iName);
  void ImportItems();
  void ImportItem(TSameSearchResults& ioLive, const TIntf<IWatchlistIntegration>& iIntegration,
                  const TWatchlistItem& iItem);
  TWatchlistCategory* LiveCategoryOf(const TWatchlistItem& iItem) const;
  void ImportRemindItems();
  /// Takes it over, if it is one to be.
  bool ImportRemindItem(std::unique_ptr<TRemindItem>& ioReminder);
  void DoProgress(TObject* Sender);
  void DoStep(TObject* Sender);
  /// Of the main loop, if one is due.
  void Turn();
  void CloseQuery(TObject* Sender, bool& ioCanClose);
  /// The records of the handler that were chosen, in the handler's order.
  std::vector<TWatchlistIntegration*> ChosenIntegrations() const;

  TString FNewCategoryName;
  bool FOwnsCategoryList = false;
  TLstWatchlistCategory* FLstCategory;
  TLstRemindItem* FLstRemindItem;
  const TLstWatchlistIntegration& FLstIntegration;
  TWatchlistCategoryMerge FCategoryMerge;
  THashedStringList FSLItemIdTranslation;
  const bool FInBackground;
  bool FRunning = false;
  int64_t FNextTurn = 0;  // of the main loop, by SteadyMs
};

}  // namespace kk
