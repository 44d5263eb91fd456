#include "host/search/TfrmSearch.h"

#include "TSearchWorld.h"
#include "host/search/TToolbarButtonSearch.h"
#include "host/search/TfrmSearchProblems.h"
#include "tests/support/TLogRecorder.h"

namespace kk {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

constexpr char cMoreHint[] = "Wählen Sie in der Liste Ergebnisse aus.";

TEST(TToolbarButtonSearch, StandsFirstAndRaisesItsClick) {
  struct TListener {
    void DoClick(TObject* iSender) { Sender = iSender; }
    TObject* Sender = nullptr;
  } listener;
  const auto button = MakeIntf<TToolbarButtonSearch>();
  EXPECT_EQ(button->GetId(), cToolbuttonSearchId);
  EXPECT_EQ(button->GetPluginId(), cSearchPluginId);
  EXPECT_EQ(button->GetSortOrder(), 10);
  EXPECT_EQ(button->GetCaption(), u"Suchen");
  EXPECT_EQ(button->GetHint(), u"Suchen");
  EXPECT_EQ(button->GetImage().ResourceName, u"SEARCHTOOLBARBUTTONIMAGE");
  EXPECT_EQ(button->GetImageSelected().ResourceName, u"SEARCHTOOLBARBUTTONIMAGESELECTED");
  button->Click();
  EXPECT_EQ(listener.Sender, nullptr);
  button->SetOnClick(TNotifyEvent::Of<&TListener::DoClick>(&listener));
  button->Click();
  EXPECT_EQ(listener.Sender, button.Get());
}

TEST_F(TSearchTest, IsASectionOfItsOwn) {
  EXPECT_EQ(Form.GetFormID(), cMainMenuFormIDSearch);
  EXPECT_EQ(Form.GetIniSectionName(), u"Search");
  EXPECT_EQ(Form.Caption(), u"Suchen");
  EXPECT_THAT(Host->Calls, ElementsAre("add", "show"));
  Form.Uninitialize();
  EXPECT_THAT(Host->Calls, ElementsAre("add", "show", "remove"));
}

TEST_F(TSearchTest, HasTheFocusInTheFieldEachTimeItIsShown) {
  EXPECT_EQ(Form.FocusedControl(), &Form.mmText);
  Form.btnSearch.TakeFocus();
  Form.Show();
  EXPECT_EQ(Form.FocusedControl(), &Form.mmText);
}

TEST_F(TSearchTest, ItsToolbarShowsWhereTheUserIs) {
  EXPECT_THAT(Form.tlbrNavigation.Children(), IsEmpty());
  const auto button = MakeIntf<TToolbarButtonSearch>();
  Host->Add(TIntf<IToolbarButton>(button));
  Form.RefreshToolbar();
  ASSERT_EQ(Form.tlbrNavigation.Children().size(), 1u);
  const auto& shown = dynamic_cast<TToolButton&>(*Form.tlbrNavigation.Children()[0]);
  EXPECT_EQ(shown.Caption(), u"Suchen");
  EXPECT_TRUE(shown.Selected());
}

TEST(TfrmSearch, FillsItsToolbarWhenItIsFirstShown) {
  TTestMainLoop loop;
  const auto host = MakeIntf<TFakeSectionHost>();
  host->Add(TIntf<IToolbarButton>(MakeIntf<TToolbarButtonSearch>()));
  TfrmSearch form;
  form.Initialize(TIntf<IApplication>(host));
  EXPECT_THAT(form.tlbrNavigation.Children(), IsEmpty());
  form.Show();
  EXPECT_EQ(form.tlbrNavigation.Children().size(), 1u);
}

TEST(TfrmSearch, SaysSoWithoutASource) {
  TTestMainLoop loop;
  TfrmSearch form;
  form.Show();
  EXPECT_EQ(form.lblPrompt.Caption(), u"Es ist keine Quelle da, in der gesucht werden kann.");
  EXPECT_FALSE(form.mmText.CanUse());
  EXPECT_FALSE(form.btnSearch.Click());
  EXPECT_FALSE(form.lblEmpty.Visible());
  EXPECT_FALSE(form.tbstrpSources.Visible());
  form.SearchFor(u"https://shop.example/1");
  EXPECT_EQ(form.mmText.Lines().GetCount(), 1);
  EXPECT_EQ(form.SelectedTab(), nullptr);
}

TEST_F(TSearchTest, SearchesForTheLinesOfTheField) {
  EXPECT_TRUE(Search(u"https://a.example/1\r\n\r\n  https://b.example/2  \n"));
  EXPECT_THAT(Shop->Texts, ElementsAre("https://a.example/1\nhttps://b.example/2"));
  EXPECT_EQ(Status(), "Es wird gesucht - bisher kein Ergebnis");
  EXPECT_TRUE(Form.btnCancel.CanUse());
}

TEST_F(TSearchTest, TellsHowManyResultsThereAreWhileItSearchesAndAfterIt) {
  Search(u"https://a.example/");
  Shop->Results->Items = {FakeResult(u"Uhr")};
  Loop.Advance(250);
  EXPECT_EQ(Status(), "Es wird gesucht - bisher 1 Ergebnis");
  Shop->Results->Items = {FakeResult(u"Uhr"), FakeResult(u"Lampe")};
  Shop->Finish();
  EXPECT_EQ(Status(), "2 Ergebnisse");
  EXPECT_FALSE(Form.btnCancel.CanUse());
  EXPECT_EQ(Loop.TimerCount(), 0);
  EXPECT_FALSE(Form.pnlProblems.Visible());
}

TEST_F(TSearchTest, TakesAnEndThatComesBeforeTheSearchReturns) {
  Shop->AnswersAtOnce = true;
  Search(u"https://a.example/");
  EXPECT_EQ(Status(), "kein Ergebnis");
  EXPECT_EQ(Loop.TimerCount(), 0);
}

TEST_F(TSearchTest, ReturnInASingleLineSearches) {
  Form.mmText.EnterText(u"https://a.example/");
  EXPECT_TRUE(Form.mmText.PressKey(cKeyReturn));
  EXPECT_EQ(Shop->Texts.size(), 1u);
}

TEST_F(TSearchTest, ReturnBelowASecondLineIsANewLineAndCtrlReturnSearches) {
  Form.mmText.EnterText(u"https://a.example/\nhttps://b.example/");
  EXPECT_TRUE(Form.mmText.PressKey(cKeyReturn));
  EXPECT_THAT(Shop->Texts, IsEmpty());
  EXPECT_TRUE(Form.mmText.PressKey(cKeyCtrlReturn));
  EXPECT_EQ(Shop->Texts.size(), 1u);
}

TEST_F(TSearchTest, OtherKeysAreTheFields) {
  Form.mmText.EnterText(u"https://a.example/");
  EXPECT_FALSE(Form.mmText.PressKey(u'x'));
  EXPECT_THAT(Shop->Texts, IsEmpty());
}

TEST_F(TSearchTest, ReturnElsewhereSearchesAndEscapeCancels) {
  Form.mmText.EnterText(u"https://a.example/");
  EXPECT_TRUE(Form.xplrbr.PressKey(cKeyReturn));
  EXPECT_EQ(Shop->Texts.size(), 1u);
  EXPECT_TRUE(Form.mmText.PressKey(cKeyEscape));
  EXPECT_THAT(Shop->Calls, ElementsAre("cancel"));
}

TEST_F(TSearchTest, AsksForTextBeforeItSearches) {
  Form.btnSearch.TakeFocus();
  EXPECT_TRUE(Search(u"  \n "));
  EXPECT_THAT(Shop->Texts, IsEmpty());
  EXPECT_EQ(Status(), "Geben Sie zuerst etwas ein.");
  EXPECT_EQ(Form.FocusedControl(), &Form.mmText);
  Search(u"https://a.example/");
  EXPECT_EQ(Status(), "Es wird gesucht - bisher kein Ergebnis");
}

TEST_F(TSearchTest, TakesNoTextBeyondItsBound) {
  const std::string tooLong =
      "Das ist zu viel auf einmal: Es werden höchstens 100000 Zeichen genommen.";
  Form.mmText.EnterText(u"https://a.example/");
  Form.SearchFor(TString(TfrmSearch::cMaxText + 1, u'x'));
  EXPECT_EQ(Status(), tooLong);
  EXPECT_EQ(Field(), "https://a.example/\r\n");
  Search(TString(TfrmSearch::cMaxText + 1, u'x'));
  EXPECT_EQ(Status(), tooLong);
  EXPECT_THAT(Shop->Texts, IsEmpty());
  Search(TString(TfrmSearch::cMaxText, u'x'));
  EXPECT_EQ(Shop->Texts.size(), 1u);
}

TEST_F(TSearchTest, PutsTextFromElsewhereIntoTheFieldAndSearches) {
  Form.SearchFor(u"\n https://a.example/1 \r\nhttps://a.example/2\n");
  EXPECT_EQ(Field(), "https://a.example/1\r\nhttps://a.example/2\r\n");
  EXPECT_THAT(Shop->Texts, ElementsAre("https://a.example/1\nhttps://a.example/2"));
}

TEST_F(TSearchTest, CancelKeepsWhatWasFound) {
  Search(u"https://a.example/");
  Shop->Results->Items = {FakeResult(u"Uhr")};
  Form.btnCancel.TakeFocus();
  EXPECT_TRUE(Form.btnCancel.Click());
  EXPECT_THAT(Shop->Calls, ElementsAre("cancel"));
  EXPECT_EQ(Status(), "Abgebrochen - 1 Ergebnis");
  EXPECT_FALSE(Form.btnCancel.CanUse());
  EXPECT_EQ(Form.FocusedControl(), &Form.mmText);
  EXPECT_EQ(Loop.TimerCount(), 0);
  Shop->Finish(u"zu spät");  // against the rule: nobody listens
  EXPECT_EQ(Status(), "Abgebrochen - 1 Ergebnis");
}

TEST_F(TSearchTest, ASourceThatCantCancelIsCancelledAllTheSame) {
  Search(u"https://a.example/");
  Shop->CancelFails = true;
  EXPECT_TRUE(Form.btnCancel.Click());
  EXPECT_EQ(Status(), "Abgebrochen - kein Ergebnis");
}

TEST_F(TSearchTest, ASecondSearchTakesThePlaceOfTheFirst) {
  Search(u"https://a.example/");
  Search(u"https://b.example/");
  EXPECT_THAT(Shop->Texts, ElementsAre("https://a.example/", "https://b.example/"));
  EXPECT_EQ(Loop.TimerCount(), 1);
  Shop->Finish();
  EXPECT_EQ(Status(), "kein Ergebnis");
}

TEST_F(TSearchTest, OneProblemStandsBelowTheList) {
  Search(u"https://a.example/?x=1&y=2");
  Shop->Finish(u"https://a.example/?x=1&y=2: Die Seite gibt es nicht.\n");
  EXPECT_EQ(Status(), "kein Ergebnis, 1 Problem");
  EXPECT_TRUE(Form.pnlProblems.Visible());
  EXPECT_EQ(Problem(), "https://a.example/?x=1&y=2: Die Seite gibt es nicht.");
  EXPECT_FALSE(Form.btnProblems.CanUse());
  Search(u"https://b.example/");
  EXPECT_FALSE(Form.pnlProblems.Visible());
}

TEST_F(TSearchTest, SeveralProblemsCanBeReadInFull) {
  Search(u"a\nb");
  Shop->Finish(u"Die erste Seite gibt es nicht.\n\nDie zweite antwortet nicht.");
  EXPECT_EQ(Status(), "kein Ergebnis, 2 Probleme");
  EXPECT_EQ(Problem(), "Die erste Seite gibt es nicht.");
  EXPECT_EQ(Form.lblMoreProblems.Caption(), u"Und ein weiteres Problem.");
  Forms.Expect<TfrmSearchProblems>([](TfrmSearchProblems& ioForm) {
    EXPECT_EQ(ioForm.Caption(), u"Probleme bei der Suche");
    EXPECT_THAT(ioForm.mmProblems.Lines().Lines(),
                ElementsAre(u"Die erste Seite gibt es nicht.", u"Die zweite antwortet nicht."));
    EXPECT_FALSE(ioForm.mmProblems.EnterText(u"nichts"));
    ioForm.mmProblems.PressKey(cKeyEscape);
  });
  EXPECT_TRUE(Form.btnProblems.Click());
}

TEST_F(TSearchTest, CountsTheProblemsBehindTheFirst) {
  Search(u"a");
  Shop->Finish(u"eins\nzwei\ndrei");
  EXPECT_EQ(Status(), "kein Ergebnis, 3 Probleme");
  EXPECT_EQ(Problem(), "eins");
  EXPECT_EQ(Form.lblMoreProblems.Caption(), u"Und 2 weitere Probleme.");
}

TEST_F(TSearchTest, ALongProblemIsCutBelowTheListAndWholeInTheWindow) {
  const TString text(1000, u'x');
  Search(u"a");
  Shop->Finish(text);
  EXPECT_LT(Form.lblProblem.Caption().size(), 300u);
  EXPECT_EQ(Form.lblMoreProblems.Caption(), u"Der Text ist gekürzt.");
  Forms.Expect<TfrmSearchProblems>([&](TfrmSearchProblems& ioForm) {
    EXPECT_THAT(ioForm.mmProblems.Lines().Lines(), ElementsAre(text));
    ioForm.btnClose.Click();
  });
  EXPECT_TRUE(Form.btnProblems.Click());
}

TEST_F(TSearchTest, ASourceThatRaisesIsAProblemOfTheSearch) {
  Shop->SearchFailure = u"Kein Netz";
  EXPECT_TRUE(Search(u"a"));
  EXPECT_EQ(Status(), "kein Ergebnis, 1 Problem");
  EXPECT_EQ(Problem(), "Kein Netz");
}

TEST_F(TSearchTest, AListThatRaisesCountsAsEmpty) {
  Search(u"a");
  Shop->ResultsFail = true;
  Shop->Finish();
  EXPECT_EQ(Status(), "kein Ergebnis");
  Shop->ResultsFail = false;
  Shop->Results = nullptr;
  Form.SearchFor(u"b");
  EXPECT_EQ(Status(), "Es wird gesucht - bisher kein Ergebnis");
}

TEST_F(TSearchTest, SaysWhatToDoUntilTheFirstSearch) {
  EXPECT_TRUE(Form.pnlEmpty.Visible());
  EXPECT_FALSE(Form.pnlResults.Visible());
  EXPECT_THAT(ToUtf8(Form.lblEmpty.Caption()), HasSubstr("Geben Sie oben ein"));
  Search(u"a");
  EXPECT_FALSE(Form.pnlEmpty.Visible());
  EXPECT_TRUE(Form.pnlResults.Visible());
}

TEST_F(TSearchTest, OffersTheExampleShopIfSomebodyServesIt) {
  struct TShell {
    void DoTry(TObject* iSender) { Form->SearchFor(u"http://127.0.0.1:1/a"), Sender = iSender; }
    TfrmSearch* Form = nullptr;
    TObject* Sender = nullptr;
  } shell;
  shell.Form = &Form;
  EXPECT_FALSE(Form.lblTryExample.Click());
  Form.SetOnTryExample(TNotifyEvent::Of<&TShell::DoTry>(&shell));
  EXPECT_EQ(Form.lblTryExample.Caption(), u"Beispielladen ausprobieren");
  EXPECT_TRUE(Form.lblTryExample.Click());
  EXPECT_EQ(shell.Sender, &Form);
  EXPECT_THAT(Shop->Texts, ElementsAre("http://127.0.0.1:1/a"));
}

TEST_F(TSearchTest, ThePromptIsTheSourcesLetterByLetter) {
  EXPECT_EQ(Form.lblPrompt.Caption(), u"Adressen, eine in jeder Zeile");
  const auto source = AddAuctions();
  source->Prompt = u"Wörter & Zahlen";
  EXPECT_TRUE(Form.tbstrpSources.GetItems(1).Click());
  EXPECT_EQ(Form.lblPrompt.Caption(), u"Wörter && Zahlen");
}

TEST_F(TSearchTest, OneSourceNeedsNoTabs) {
  EXPECT_FALSE(Form.tbstrpSources.Visible());
  AddAuctions();
  EXPECT_TRUE(Form.tbstrpSources.Visible());
  ASSERT_EQ(Form.tbstrpSources.GetCount(), 2);
  EXPECT_EQ(Form.tbstrpSources.GetItems(0).Caption(), u"Seiten");
  EXPECT_EQ(Form.tbstrpSources.GetItems(0).Image().ResourceName, u"Seiten_IMAGE");
  EXPECT_EQ(Form.tbstrpSources.GetItems(0).ImageSelected().ResourceName, u"Seiten_SELECTED");
  EXPECT_TRUE(Form.tbstrpSources.GetItems(0).Selected());
}

TEST_F(TSearchTest, EachTabHasASearchOfItsOwn) {
  const auto auctions = AddAuctions();
  Search(u"a");
  EXPECT_TRUE(Form.tbstrpSources.GetItems(1).Click());
  EXPECT_EQ(Status(), "");
  EXPECT_FALSE(Form.btnCancel.CanUse());
  EXPECT_TRUE(Form.pnlEmpty.Visible());
  EXPECT_TRUE(auctions->Container->Visible());
  EXPECT_FALSE(Shop->Container->Visible());
  Search(u"b");
  Shop->Finish(u"Kein Netz");  // in the background
  EXPECT_EQ(Status(), "Es wird gesucht - bisher kein Ergebnis");
  EXPECT_FALSE(Form.pnlProblems.Visible());
  auctions->Finish();
  EXPECT_THAT(Shop->Texts, ElementsAre("a"));
  EXPECT_THAT(auctions->Texts, ElementsAre("b"));
  EXPECT_TRUE(Form.tbstrpSources.GetItems(0).Click());
  EXPECT_EQ(Status(), "kein Ergebnis, 1 Problem");
  EXPECT_EQ(Problem(), "Kein Netz");
  EXPECT_TRUE(Form.btnCancel.Visible());
}

TEST_F(TSearchTest, ExtensionsReachTheListTheBarAndTheSelection) {
  ASSERT_EQ(Shop->Extensions.size(), 1u);
  EXPECT_TRUE(Extension->Results == TIntf<ISearchResults>(Shop->Results));
  EXPECT_EQ(Extension->PanelsAdded, 1);
  EXPECT_THAT(More(), ElementsAre(cMoreHint));
  const auto clock = FakeResult(u"Uhr");
  Shop->Results->Items = {clock};
  Shop->Select({clock});
  EXPECT_EQ(Extension->Changes, 1);
  EXPECT_THAT(More(), ElementsAre("Artikel beobachten..."));
  Shop->Select({});
  EXPECT_THAT(More(), ElementsAre(cMoreHint));
}

TEST_F(TSearchTest, TheBarShowsTheLinksOfTheSelectedTabAlone) {
  const auto clock = FakeResult(u"Uhr");
  Shop->Results->Items = {clock};
  Shop->Select({clock});
  AddAuctions();
  Form.tbstrpSources.GetItems(1).Click();
  EXPECT_EQ(Extension->PanelsAdded, 0);
  EXPECT_THAT(More(), ElementsAre(cMoreHint));
  Shop->Select({clock});  // in the background
  EXPECT_THAT(More(), ElementsAre(cMoreHint));
  Form.tbstrpSources.GetItems(0).Click();
  EXPECT_THAT(More(), ElementsAre("Artikel beobachten..."));
}

TEST_F(TSearchTest, AnExtensionThatFailsLeavesTheOthersAlone) {
  const TLogRecorder log;
  const auto broken = MakeIntf<TFakeExtension>();
  const auto sound = MakeIntf<TFakeExtension>();
  broken->Fails = true;
  const auto source = MakeIntf<TFakeSearchSource>(u"Auktionen");
  Form.AddSource(TIntf<ISearchSource>(source), {ListOf(broken), ListOf(sound)});
  Form.tbstrpSources.GetItems(1).Click();
  source->Select({FakeResult(u"Uhr")});
  EXPECT_THAT(More(), ElementsAre("Artikel beobachten..."));
  EXPECT_THAT(log.DebugLines(), testing::Contains(HasSubstr("Verweis kaputt")));
}

TEST_F(TSearchTest, ASourceThatCantBeAddedLeavesNothingBehind) {
  const auto source = MakeIntf<TFakeSearchSource>(u"Auktionen");
  source->ExtensionsFail = true;
  EXPECT_THROW(Form.AddSource(TIntf<ISearchSource>(source), {ListOf(Extension)}), Exception);
  EXPECT_EQ(Form.tbstrpSources.GetCount(), 1);
  EXPECT_EQ(source->Container, nullptr);
  EXPECT_FALSE(source->OnSelectionChanged);
  EXPECT_EQ(Form.SelectedTab()->Source(), TIntf<ISearchSource>(Shop));
}

TEST_F(TSearchTest, AtItsEndItLetsGoOfEverything) {
  Search(u"a");
  Form.Uninitialize();
  EXPECT_THAT(Shop->Calls, ElementsAre("cancel", "release"));
  EXPECT_EQ(Shop->Container, nullptr);
  EXPECT_FALSE(Shop->OnSelectionChanged);
  EXPECT_EQ(Extension->PanelsAdded, 0);
  EXPECT_THAT(Form.xplrbr.Groups(), IsEmpty());
  EXPECT_EQ(Form.tbstrpSources.GetCount(), 0);
  EXPECT_EQ(Form.SelectedTab(), nullptr);
  EXPECT_EQ(Loop.TimerCount(), 0);
}

}  // namespace
}  // namespace kk
