#include "persistence/exchange/TfrmKKWatchlistExport.h"

#include <chrono>
#include <thread>

#include "TExchangeWorld.h"
#include "host/common/TFileHelper.h"
#include "host/common/TIniFileSectionBase.h"

namespace kk {
namespace {

using TNames = std::set<std::string>;

class TfrmKKWatchlistExportTest : public TExchangeTest {
 protected:
  using TForm = TfrmKKWatchlistExport;
  bool Export(std::function<void(TForm&)> iStep) {
    User.Expect<TForm>(std::move(iStep));
    return TForm::Display(nullptr);
  }
  void Save(TForm& ioForm) {
    User.ExpectOpenDialog(_resExportCaption, ExportFile());
    EXPECT_TRUE(ioForm.btnOK.Click());
  }
  static TVirtualNode& Row(TForm& ioForm, int iIndex) {
    return ioForm.vstIntegrations.Root().GetItems(iIndex);
  }
};

TEST_F(TfrmKKWatchlistExportTest, ShowsWhatThereIs) {
  Item(Category(u"Küche"), Shop, u"Lampe");
  Remind(Item(Category(u"Regal", Tree().FindCategoryByName(u"Küche")), Shop, u"Sieb"));
  EXPECT_FALSE(Export([](TForm& form) {
    EXPECT_EQ(form.Caption(), u"Beobachten (Export)");
    EXPECT_EQ(form.lblQuestion.Caption(), u"Welche Daten sollen exportiert werden?");
    ASSERT_EQ(form.vstIntegrations.Root().GetCount(), 1);
    EXPECT_EQ(form.vstIntegrations.Text(Row(form, 0)), u"Laden [2 Einträge vorhanden]");
    EXPECT_TRUE(Row(form, 0).Checked());
    EXPECT_EQ(form.chckbxRemindItems.Caption(), u"Erinnerungen (1 vorhanden)");
    EXPECT_TRUE(form.chckbxRemindItems.Checked() && form.chckbxRemindItems.Enabled());
    EXPECT_EQ(form.chckbxCategories.Caption(), u"Kategorien (3 vorhanden)");
    EXPECT_TRUE(form.chckbxCategories.Checked());
    EXPECT_EQ(form.btnOK.Caption(), u"&OK");
    EXPECT_TRUE(form.btnCancel.Click());
  }));
}

TEST_F(TfrmKKWatchlistExportTest, WithoutAnyItemThereIsAMessageInstead) {
  Category(u"Küche");
  User.ExpectMessage(u"Es liegen keine Einträge vor, die exportiert werden können.");
  EXPECT_FALSE(TForm::Display(nullptr));
}

TEST_F(TfrmKKWatchlistExportTest, WritesWhatIsTicked) {
  Remind(Item(Category(u"Küche"), Shop, u"Lampe"));
  Item(Unassigned(), Auction, u"Uhr");
  EXPECT_TRUE(Export([this](TForm& form) {
    EXPECT_TRUE(form.vstIntegrations.CheckNode(Row(form, 0)));
    Save(form);
  }));
  EXPECT_EQ(Entries(), (TNames{"version", "categories", "remind", "itemsLaden", "Laden"}));
}

TEST_F(TfrmKKWatchlistExportTest, WithCategoriesAloneOKIsEnabled) {
  Remind(Item(Category(u"Küche"), Shop, u"Lampe"));
  EXPECT_TRUE(Export([this](TForm& form) {
    EXPECT_TRUE(form.vstIntegrations.CheckNode(Row(form, 0)));
    EXPECT_TRUE(form.chckbxRemindItems.Checked());
    EXPECT_FALSE(form.chckbxRemindItems.Enabled());
    Save(form);
  }));
  // A box that is ticked and disabled counts as not chosen.
  EXPECT_EQ(Entries(), (TNames{"version", "categories"}));
}

TEST_F(TfrmKKWatchlistExportTest, WithNothingTickedOKIsDisabled) {
  Item(Category(u"Küche"), Shop, u"Lampe");
  EXPECT_FALSE(Export([](TForm& form) {
    EXPECT_TRUE(form.chckbxCategories.Click());
    EXPECT_TRUE(form.btnOK.Enabled());
    EXPECT_TRUE(form.vstIntegrations.CheckNode(Row(form, 0)));
    EXPECT_FALSE(form.btnOK.Enabled());
    EXPECT_TRUE(form.btnCancel.Click());
  }));
}

TEST_F(TfrmKKWatchlistExportTest, AsksForTheFileAndRemembersItsFolder) {
  Item(Category(u"Küche"), Shop, u"Lampe");
  EXPECT_TRUE(Export([this](TForm& form) { Save(form); }));
  const TOpenDialog& asked = User.LastOpenDialog();
  EXPECT_EQ(asked.Filter, u"Beobachten-Dateien (*.wch)|*.wch|Alle Dateien (*.*)|*.*");
  EXPECT_TRUE(asked.ForSaving);
  EXPECT_TRUE(asked.FileName.ends_with(u"/Beobachten.wch"));
  EXPECT_EQ(TIniFileSectionCommon().PathToLastImExport() + u"/Liste.wch", ExportFile());
  EXPECT_TRUE(Export([this](TForm& form) { Save(form); }));
  EXPECT_EQ(User.LastOpenDialog().FileName,
            TIniFileSectionCommon().PathToLastImExport() + u"/Beobachten.wch");
}

TEST_F(TfrmKKWatchlistExportTest, ACancelledFileDialogLeavesItOpen) {
  Item(Category(u"Küche"), Shop, u"Lampe");
  EXPECT_FALSE(Export([this](TForm& form) {
    User.ExpectOpenDialog(_resExportCaption, {});
    EXPECT_TRUE(form.btnOK.Click());
    EXPECT_TRUE(form.Visible());
    EXPECT_TRUE(form.btnCancel.Click());
  }));
  EXPECT_FALSE(FileExists(ExportFile()));
}

TEST_F(TfrmKKWatchlistExportTest, AFileThatCantBeReplacedIsTold) {
  Item(Category(u"Küche"), Shop, u"Lampe");
  EXPECT_TRUE(Export([this](TForm& form) {
    User.ExpectOpenDialog(_resExportCaption, Folder.File(u"fehlt/Liste.wch"));
    EXPECT_TRUE(form.btnOK.Click());
  }));
  EXPECT_TRUE(std::ranges::any_of(
      Log.Lines(), [](const std::string& iLine) { return iLine.starts_with("error"); }));
}

TEST_F(TfrmKKWatchlistExportTest, TheWatchListsOwnFileIsRefusedWithAMessage) {
  Item(Category(u"Küche"), Shop, u"Lampe");
  Handler()->SaveAll();
  const std::string before = ReadFileBytes(Handler()->GetFileName());
  EXPECT_FALSE(Export([this](TForm& form) {
    EXPECT_TRUE(form.chckbxCategories.Click());
    User.ExpectOpenDialog(_resExportCaption, Handler()->GetFileName());
    User.ExpectMessage(Format(_resExportOwnFile, {Handler()->GetFileName()}));
    EXPECT_TRUE(form.btnOK.Click());
    EXPECT_TRUE(form.Visible());
    EXPECT_TRUE(form.btnCancel.Click());
  }));
  EXPECT_EQ(ReadFileBytes(Handler()->GetFileName()), before);
}

TEST_F(TfrmKKWatchlistExportTest, WithoutRemindersTheirBoxIsUntickedAndStaysDisabled) {
  Item(Category(u"Küche"), Shop, u"Lampe");
  EXPECT_FALSE(Export([](TForm& form) {
    EXPECT_EQ(form.chckbxRemindItems.Caption(), u"Erinnerungen (0 vorhanden)");
    EXPECT_FALSE(form.chckbxRemindItems.Checked() || form.chckbxRemindItems.Enabled());
    EXPECT_TRUE(form.chckbxCategories.Click());
    EXPECT_FALSE(form.chckbxRemindItems.Enabled());
    EXPECT_TRUE(form.btnCancel.Click());
  }));
}

TEST_F(TfrmKKWatchlistExportTest, AsksInTheDocumentsAtFirst) {
  Item(Category(u"Küche"), Shop, u"Lampe");
  EXPECT_TRUE(Export([this](TForm& form) { Save(form); }));
  EXPECT_EQ(User.LastOpenDialog().FileName,
            GetSpecialFolder(cSpecialFolderDocuments, false) + u"/Beobachten.wch");
}

/// Notes whether the live reminders could be changed while it is saved.
class TLockedSource : public TFakeSource {
 public:
  using TFakeSource::TFakeSource;
  void SaveSearchResults(const IInterfaceList& iList, TStream& ioStream) override {
    TLstRemindItemSync& reminders = Handler()->LstRemind();
    Writer = std::thread([&reminders] { const TLstRemindItemSync::TWriting writing(reminders); });
    const auto limit = std::chrono::steady_clock::now() + std::chrono::seconds(10);
    while (reminders.Sync().WaitingWriters() == 0 && std::chrono::steady_clock::now() < limit) {
      std::this_thread::yield();
    }
    WriterWaits = reminders.Sync().WaitingWriters() == 1;
    TFakeSource::SaveSearchResults(iList, ioStream);
  }
  bool WriterWaits = false;
  std::thread Writer;
};

TEST_F(TfrmKKWatchlistExportTest, NobodyChangesTheRemindersMeanwhile) {
  const auto source = MakeIntf<TLockedSource>(u"Schloss");
  Handler()->LstIntegration().Add(source);
  Item(Category(u"Küche"), source, u"Lampe");
  EXPECT_TRUE(Export([this](TForm& form) { Save(form); }));
  ASSERT_TRUE(source->Writer.joinable());
  source->Writer.join();
  EXPECT_TRUE(source->WriterWaits);
}

}  // namespace
}  // namespace kk
