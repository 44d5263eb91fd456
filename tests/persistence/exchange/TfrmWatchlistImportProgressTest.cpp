#include "persistence/exchange/TfrmWatchlistImportProgress.h"

#include "TExchangeWorld.h"
#include "persistence/exchange/TWatchlistFileLoaderImport.h"

namespace kk {
namespace {

constexpr TDateTime cLater = TDateTime::FromMs(60000 * TDateTime::cMsPerDay);

/// The window over a file that another installation has written, watched from the main loop, which
/// turns at least once in each phase.
class TfrmWatchlistImportProgressTest : public TExchangeTest {
 protected:
  using TForm = TfrmWatchlistImportProgress;
  void ExportElsewhere(bool iReminder = false) {
    const TWatchlistItem& lamp = Item(Category(u"Regal", &Category(u"Küche")), Shop, u"Lampe");
    if (iReminder) RemindBySound(lamp, u"ton.wav", cLater);
    ExportAll();
    StartElsewhere();
  }
  bool Run(TStringView iNewCategory = {}) {
    TLstWatchlistCategory categories(true);
    TLstRemindItem reminders(true);
    TWatchlistFileLoaderImport loader(ExportFile());
    EXPECT_TRUE(loader.LoadFromFile(categories, reminders, Handler()->LstIntegration()));
    TImportData data;
    data.LstCategory = &categories;
    data.LstRemindItem = &reminders;
    data.LstIntegration = &Handler()->LstIntegration();
    data.NewCategoryName = iNewCategory;
    User.Expect<TForm>([this](TForm& form) {
      EXPECT_EQ(form.Caption(), u"Import");
      Watch(form);
      Loop.ProcessMessages();
    });
    return TForm::Display(nullptr, data, false);
  }
  void Watch(TForm& ioForm) {
    Loop.Post([this, &ioForm] {
      if (!ioForm.Visible() || ioForm.ModalResult() != cModalNone) return;
      const std::string phase = ToUtf8(ioForm.lblAction.Caption());
      const bool isNew = !phase.empty() && (Phases.empty() || Phases.back() != phase);
      if (isNew) Phases.push_back(phase);
      if (isNew && OnPhase) OnPhase(ioForm);
      Watch(ioForm);
    });
  }
  /// Does this once, when the items are about to come in.
  void BeforeItems(std::function<void(TForm&)> iStep) {
    OnPhase = [step = std::move(iStep)](TForm& form) {
      if (form.lblAction.Caption() == u"Übernehme Einträge...") step(form);
    };
  }

  TLines Phases;
  std::function<void(TForm&)> OnPhase;
};

TEST_F(TfrmWatchlistImportProgressTest, TellsWhatItDoes) {
  ExportElsewhere(true);
  EXPECT_TRUE(Run());
  EXPECT_EQ(Phases, (TLines{"Ermittle Schritte...", "Übernehme Kategoriestruktur...",
                            "Übernehme Einträge...", "Übernehme Erinnerungen..."}));
}

TEST_F(TfrmWatchlistImportProgressTest, TellsThatItMovesItemsIntoANewCategory) {
  ExportElsewhere();
  EXPECT_TRUE(Run(u"Neues"));
  EXPECT_EQ(Phases, (TLines{"Ermittle Schritte...", "Verschiebe Einträge in neue Kategorie...",
                            "Übernehme Kategoriestruktur...", "Übernehme Einträge..."}));
}

TEST_F(TfrmWatchlistImportProgressTest, CantBeClosedBeforeItsEnd) {
  ExportElsewhere();
  bool closed = true;
  BeforeItems([&closed](TForm& form) {
    form.Close();
    closed = form.EndModalIfDone();
  });
  EXPECT_TRUE(Run());
  EXPECT_FALSE(closed);
  EXPECT_EQ(Outline(), "<Keiner Kategorie zugewiesen> Küche(Regal(Laden: Lampe))");
}

TEST_F(TfrmWatchlistImportProgressTest, ItemsWhoseCategoryIsGoneMeanwhileGoToTheCatchAll) {
  ExportElsewhere();
  BeforeItems([](TForm&) { Tree().DeleteCategory(*Tree().FindCategoryByName(u"Küche")); });
  EXPECT_TRUE(Run());
  EXPECT_EQ(Outline(), "<Keiner Kategorie zugewiesen>(Laden: Lampe)");
  EXPECT_EQ(Unassigned().LstPlugin().GetItems(0).LstItem().GetItems(0).ParentCategoryId(),
            cEmptyGuid);
}

TEST_F(TfrmWatchlistImportProgressTest, WithoutEvenACatchAllTheyStayOut) {
  ExportElsewhere();
  BeforeItems([](TForm&) { Tree().Clear(); });
  EXPECT_TRUE(Run());
  EXPECT_EQ(Outline(), "");
}

TEST_F(TfrmWatchlistImportProgressTest, ClosedBeforeItBeganItImportsNothing) {
  ExportElsewhere();
  TLstWatchlistCategory categories(true);
  TImportData data;
  data.LstCategory = &categories;
  data.LstIntegration = &Handler()->LstIntegration();
  User.Expect<TForm>([](TForm& form) { form.Close(); });
  EXPECT_FALSE(TForm::Display(nullptr, data, false));
  Loop.ProcessMessages();  // what the window had posted to itself finds it gone
  EXPECT_EQ(Outline(), "<Keiner Kategorie zugewiesen>");
}

}  // namespace
}  // namespace kk
