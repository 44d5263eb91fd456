#pragma once

#include "TExchangeWorld.h"
#include "host/common/TFileHelper.h"
#include "host/controls/TfrmMessageDlg.h"
#include "persistence/exchange/TfrmKKWatchlistImport.h"
#include "tests/support/TRawZip.h"

namespace kk {

/// A user who closes each window that comes up.
class TClosingFormHost : public IFormHost {
 public:
  TClosingFormHost() : FBefore(SetFormHost(this)) {}
  ~TClosingFormHost() override { SetFormHost(FBefore); }
  void ShowModal(TForm& ioForm) override {
    if (const auto* box = dynamic_cast<TfrmMessageDlg*>(&ioForm)) Messages.push_back(box->Text());
    ioForm.SetModalResult(cModalCancel);
    ioForm.EndModalIfDone();
  }
  bool ShowOpenDialog(TOpenDialog&) override { return false; }

  std::vector<TString> Messages;

 private:
  IFormHost* FBefore;
};

/// A list that somebody needs, into which comes what is damaged or made to harm.
class THostileImportTest : public TExchangeTest {
 protected:
  THostileImportTest() { FillLive(); }

  void FillLive() {
    RemindBySound(Item(Category(u"Küche"), Shop, u"Sieb"), u"ton.wav", Later);
    Item(Unassigned(), Auction, u"Uhr");
  }
  /// Imports these bytes; what was there before is there afterwards.
  bool Import(const std::string& iBytes) {
    Folder.Write(u"Liste.wch", iBytes);
    const bool done = TfrmKKWatchlistImport::ExecuteInBackground(ExportFile());
    ExpectLiveKept();
    return done;
  }
  bool Import(const TRawZip& iZip) { return Import(iZip.ToBytes()); }
  bool ImportMobile(const std::string& iText) {
    TMemoryStream stream(iText);
    const bool done = TfrmKKWatchlistImport::ExecuteInBackgroundFromKKMobileStream(stream);
    ExpectLiveKept();
    return done;
  }
  void ExpectLiveKept() {
    const TWatchlistCategory* kitchen = Tree().FindCategoryByName(u"Küche");
    ASSERT_NE(kitchen, nullptr);
    const TLstWatchlistItem& sieves = kitchen->LstPlugin().FindById(Shop->GetId())->LstItem();
    ASSERT_GE(sieves.GetCount(), 1);
    EXPECT_EQ(sieves.GetItems(0).GetName(), u"Sieb");
    EXPECT_TRUE(HasReminder(sieves.GetItems(0).SearchResultId()));
    const TLstWatchlistItem& watches =
        Unassigned().LstPlugin().FindById(Auction->GetId())->LstItem();
    EXPECT_EQ(watches.GetItems(0).GetName(), u"Uhr");
  }
  /// An archive with these categories, and items and results of the shop.
  TRawZip Zip(const std::string& iCategories, const std::string& iItems = {},
              const std::string& iResults = {}) const {
    TRawZip zip;
    zip.AddStored("version", "2");
    zip.AddStored("categories", iCategories);
    const std::string source = ToUtf8(GUIDToString(Shop->GetId()));
    if (!iItems.empty()) zip.AddStored("items" + source, "<Items>" + iItems + "</Items>");
    if (!iResults.empty()) zip.AddStored(source, iResults);
    return zip;
  }
  /// What another installation has exported.
  std::string ForeignFile() {
    RemindBySound(Item(Category(u"Regal"), Shop, u"Lampe"), u"ton.wav", Later);
    ExportAll();
    const std::string bytes = ReadFileBytes(ExportFile());
    StartElsewhere();
    FillLive();
    return bytes;
  }
  std::string LastError() const {
    std::string last;
    for (const std::string& line : Log.Lines()) {
      if (line.starts_with("error")) last = line;
    }
    return last;
  }

  const TDateTime Later = TDateTime::FromMs(60000 * TDateTime::cMsPerDay);
  const std::string Live = "<Keiner Kategorie zugewiesen>(Auktion: Uhr) Küche(Laden: Sieb)";
  TClosingFormHost Closing;
};

}  // namespace kk
