#include "plugin/UnitKKPluginWatchlist.h"

#include "TPluginWorld.h"
#include "host/contract/IPluginDataPublisher.h"
#include "host/contract/ISettingsPublisher.h"
#include "host/contract/TPlugins.h"
#include "plugin/TSearchLocationIntegrationWatchlist.h"
#include "plugin/TfrmWaitForThreads.h"
#include "reminders/TRemindHandler.h"

namespace kk {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class TPluginWatchlistTest : public testing::Test, public TPluginWorld {
 protected:
  // Where the results of "-rem" go without a question.
  static void AskNothing() { TIniFileSectionWatchlist().SetShowAddDialog(false); }
  static TIntf<IIntegrationInfo> ViewOf(const TGuid& iId) {
    return MakeIntf<TPluginIntegrationInfo>(iId, TGroupIdentification{1});
  }
  template <class I>
  TIntf<I> Ask() {
    return Supports<I>(TIntf<IPlugin>(Plugin));
  }
  bool Shown() { return Form().Visible(); }
};

// Identity.

TEST_F(TPluginWatchlistTest, IdentityIsFixed) {
  EXPECT_EQ(GUIDToString(Plugin->GetId()), u"{FC3B5C09-B3C7-43DF-BBFE-DFE2158FFCE2}");
  EXPECT_EQ(static_cast<int>(Plugin->GetGroup()), 3);
  EXPECT_EQ(Plugin->GetAttributes(), 3U);
  EXPECT_EQ(Plugin->GetSignature(), u"CRC von Datei + Id");
  EXPECT_EQ(Plugin->GetDescription(), u"Beobachten");
  EXPECT_EQ(Plugin->GetLongDescription(), u"?");
  bool allowed = true;
  Plugin->MinimizeToTrayQuery(allowed);
  EXPECT_TRUE(allowed);
  Plugin->InitHelpAgent();
}

TEST_F(TPluginWatchlistTest, QueryAnswersTheInterfacesOfTheRoot) {
  Initialize();
  EXPECT_TRUE(Ask<IPlugin>());
  EXPECT_TRUE(Ask<IMultiThreadPlugin>());
  EXPECT_TRUE(Ask<ISearchLocationIntegration>());
  EXPECT_TRUE(Ask<IPluginDataPublisher>());
  EXPECT_TRUE(Ask<ISettingsExtender>());
  EXPECT_TRUE(Ask<ISettingsKeys>());
  EXPECT_EQ(Ask<IPluginIntegration>(), Plugin->GetIntegration());
  EXPECT_TRUE(Ask<IToolbarExtender>());
  EXPECT_TRUE(Ask<IWatchlistAccess>());
  EXPECT_TRUE(Ask<ISettingsPublisher>());
  EXPECT_FALSE(Ask<IWatchlist>());
}

TEST_F(TPluginWatchlistTest, WhatInitializeMakesIsNotThereBefore) {
  EXPECT_FALSE(Ask<IToolbarExtender>());
  EXPECT_FALSE(Ask<IWatchlistAccess>());
  EXPECT_EQ(Plugin->DoGetForm(nullptr), nullptr);
  Plugin->MinimizeToTray();
  Plugin->RestoreFromTray();
}

TEST_F(TPluginWatchlistTest, SettingsKeysNeedNoInitialize) {
  const std::vector<TSettingsKeyInfo> keys = Plugin->GetSettingsKeys();
  ASSERT_FALSE(keys.empty());
  EXPECT_EQ(keys.front().Section, u"Watchlist");
}

TEST_F(TPluginWatchlistTest, DataPublisherIsOneAndSettingsExtenderIsNewEachTime) {
  EXPECT_EQ(Plugin->GetDataPublisher(), Plugin->GetDataPublisher());
  EXPECT_EQ(Ask<IPluginDataPublisher>(), Plugin->GetDataPublisher());
  const TIntf<ISettingsExtender> first = Plugin->GetSettingsExtender();
  const TIntf<ISettingsExtender> second = Plugin->GetSettingsExtender();
  EXPECT_FALSE(first == second);
  EXPECT_EQ(first->GetCount(), 1);
}

TEST_F(TPluginWatchlistTest, SettingsAreExchangedAsTextWithoutInitialize) {
  const auto publisher = Ask<ISettingsPublisher>();
  EXPECT_EQ(publisher->GetSettingsNode(), u"Watchlist");
  EXPECT_EQ(publisher->GetSettingsName(), u"Beobachten");
  const TStringList& list = publisher->GetSettings();
  EXPECT_EQ(list.GetCount(), 16);
  EXPECT_EQ(list.Get(0), u"[Watchlist]");
  EXPECT_EQ(list.Get(1), u"Name=Beobachten");
  EXPECT_EQ(list.GetValue(u"UpdateOnStartup"), u"0");
  publisher->SetSettings({u"UpdateOnStartup=-1"});
  EXPECT_TRUE(TIniFileSectionWatchlist().GetUpdateOnStartup());
  EXPECT_EQ(list.GetValue(u"UpdateOnStartup"), u"0") << "until the next call";
  EXPECT_EQ(&publisher->GetSettings(), &list) << "it is the plug-in's own";
  EXPECT_EQ(list.GetCount(), 16);
  EXPECT_EQ(list.GetValue(u"UpdateOnStartup"), u"-1");
}

// Life cycle.

TEST_F(TPluginWatchlistTest, RegistrationMakesOnePlugin) {
  Plugin->Uninitialize();
  Plugin = nullptr;
  RegisterWatchlist();
  RegisterWatchlist();
  ASSERT_EQ(Plugins().GetCount(), 1);
  EXPECT_EQ(Plugins().GetItems(0)->GetId(), cPluginId);
  ASSERT_NE(Handler(), nullptr);
  EXPECT_EQ(Handler()->Plugin(), Plugins().GetItems(0));
  Plugins().GetItems(0)->Uninitialize();
  Plugins().Clear();
  EXPECT_EQ(Handler(), nullptr);
}

TEST_F(TPluginWatchlistTest, HandlerExistsEmptyBeforeInitialize) {
  ASSERT_NE(Handler(), nullptr);
  EXPECT_EQ(Handler()->LstIntegration().GetCount(), 0);
  EXPECT_EQ(Tree().GetCount(), 0);
  EXPECT_EQ(Handler()->Plugin(), TIntf<IPlugin>(Plugin));
}

TEST_F(TPluginWatchlistTest, InitializeRegistersTheSourcesInOrderAndPassesOverTheRest) {
  Plugin->GetIntegration()->AddIntegration(TIntf<IApplication>(MakeIntf<TFakeApplication>()));
  Plugin->GetIntegration()->AddIntegration({});
  Plugin->Initialize(MakeIntf<TFakeApplication>());
  ASSERT_EQ(Handler()->LstIntegration().GetCount(), 2);
  EXPECT_EQ(Handler()->LstIntegration().IndexOfId(Auction->GetId()), 0);
  EXPECT_EQ(Handler()->LstIntegration().IndexOfId(Shop->GetId()), 1);
  const auto line = [](const TIntf<TFakeSource>& source) {
    return "info Plugin: Integration erkannt: " + ToUtf8(source->GetName()) + " [" +
           ToUtf8(GUIDToString(source->GetId())) + "]";
  };
  const TLines lines = Log.Lines();
  ASSERT_GE(lines.size(), 3U);
  EXPECT_EQ(lines[0], line(Auction));
  EXPECT_EQ(lines[1], line(Shop));
  EXPECT_THAT(lines[2], testing::HasSubstr("Datei nicht vorhanden")) << "the handler comes after";
}

TEST_F(TPluginWatchlistTest, InitializeGivesTheSourcesListsTheSameColumns) {
  Initialize();
  ASSERT_EQ(Auction->Extensions().size(), 1U);
  EXPECT_EQ(Auction->Extensions(), Shop->Extensions());
  const auto columns = Supports<IAdditionalColumns>(Auction->Extensions()[0])->GetColumns();
  ASSERT_EQ(columns->GetCount(), 2);
  EXPECT_EQ(GetAs<IAdditionalColumn>(*columns, 0)->GetCaption(), u"Erinnerung");
  EXPECT_EQ(GetAs<IAdditionalColumn>(*columns, 1)->GetCaption(), u"Daten vom");
}

TEST_F(TPluginWatchlistTest, InitializeLoadsTheFileBeforeItMakesTheForm) {
  Initialize();
  EXPECT_EQ(Tree().GetCount(), 1);
  ASSERT_NE(Plugin->DoGetForm(nullptr), nullptr);
  EXPECT_FALSE(Shown());
}

TEST_F(TPluginWatchlistTest, ToolbarButtonShowsTheSection) {
  Initialize();
  const auto toolbar = Ask<IToolbarExtender>();
  ASSERT_EQ(toolbar->GetCount(), 1);
  const TIntf<IToolbarButton> button = toolbar->GetItems(0);
  EXPECT_EQ(button->GetId(), cToolbuttonId);
  button->Click();
  EXPECT_TRUE(Shown());
  Plugin->Uninitialize();
  button->Click();  // the host still has it
  Plugin = nullptr;
  button->Click();
}

TEST_F(TPluginWatchlistTest, TrayIsForwardedToTheSection) {
  Initialize();
  Plugin->MinimizeToTray();
  Plugin->RestoreFromTray();
  EXPECT_FALSE(Shown());
}

TEST_F(TPluginWatchlistTest, UninitializeSavesAndLetsGoOfEverything) {
  Initialize();
  Item(Unassigned(), Auction, u"Faust");
  Record(Auction).SetChangedItems(true);
  const TIntf<IPluginIntegration> door = Plugin->GetIntegration();
  Plugin->Uninitialize();
  EXPECT_TRUE(Folder.Has(cWatchlistFileName));
  EXPECT_EQ(Handler(), nullptr);
  EXPECT_EQ(Plugin->DoGetForm(nullptr), nullptr);
  EXPECT_FALSE(Plugin->GetIntegration());
  EXPECT_FALSE(Ask<IPluginIntegration>());
  EXPECT_FALSE(Ask<IToolbarExtender>());
  EXPECT_FALSE(Ask<IWatchlistAccess>());
}

TEST_F(TPluginWatchlistTest, SourceThatFailsAtTheEndIsToldOfAndNothingIsLeftBehind) {
  Initialize();
  Item(Unassigned(), Auction, u"Faust");
  Form().InitializeWithDelay();
  Form().Show();
  const auto access = Ask<IWatchlistAccess>();
  Auction->SetFailingViewCall("HideList");
  EXPECT_THROW(Plugin->Uninitialize(), Exception);
  EXPECT_TRUE(Folder.Has(cWatchlistFileName));
  EXPECT_EQ(Handler(), nullptr);
  EXPECT_EQ(Plugin->DoGetForm(nullptr), nullptr);
  EXPECT_FALSE(Ask<IToolbarExtender>());
  EXPECT_THROW(access->GetTree(), Exception);
}

TEST_F(TPluginWatchlistTest, CallsBehindUninitializeDoNothing) {
  Initialize();
  Plugin->Uninitialize();
  EXPECT_EQ(Plugin->ThreadCount(), 0);
  Plugin->TerminateThreads();
  Plugin->MinimizeToTray();
  Plugin->ProcessCdmLineParams(u"kaufkobolde -rem fake:Faust -remimport liste.wch");
  EXPECT_EQ(Plugin->GetIntegrations(ViewOf(Auction->GetId()))->GetCount(), 0);
  Plugin->Uninitialize();
  EXPECT_THROW(Plugin->Initialize(MakeIntf<TFakeApplication>()), Exception)
      << "it can't be initialised again";
}

TEST_F(TPluginWatchlistTest, AccessThatOutlivesTheSectionRefuses) {
  Initialize();
  const auto access = Ask<IWatchlistAccess>();
  EXPECT_EQ(access->GetTree().Categories.size(), 1U);
  Plugin->Uninitialize();
  EXPECT_THROW(access->GetTree(), Exception);
}

TEST_F(TPluginWatchlistTest, PluginThatWasNeverInitialisedSavesNothing) {
  Folder.Write(cWatchlistFileName, "the user's list");
  Plugin->Uninitialize();
  EXPECT_EQ(Folder.Read(cWatchlistFileName), "the user's list");
  EXPECT_EQ(Handler(), nullptr);
}

TEST_F(TPluginWatchlistTest, FailedInitializePassesToTheHostAndSavesNothing) {
  class TFailingSource : public TFakeSource {
   public:
    using TFakeSource::TFakeSource;
    TString GetName() const override { throw Exception(u"Kein Name"); }
  };
  Folder.Write(cWatchlistFileName, "the user's list");
  Plugin->GetIntegration()->AddIntegration(MakeIntf<TFailingSource>(u"Kaputt"));
  EXPECT_THROW(Plugin->Initialize(MakeIntf<TFakeApplication>()), Exception);
  Plugin->Uninitialize();
  EXPECT_EQ(Folder.Read(cWatchlistFileName), "the user's list");
}

TEST_F(TPluginWatchlistTest, PluginDroppedWithoutUninitializeFreesItsForm) {
  Initialize();
  FreeHandler();
  Drop();
  EXPECT_EQ(Handler(), nullptr);
}

TEST_F(TPluginWatchlistTest, NothingIsLeftWhenThePluginIsGone) {
  Initialize();
  Item(Unassigned(), Auction, u"Faust");
  Plugin->Uninitialize();
  EXPECT_GT(LiveObjectCount(), 3) << "the tree is not destroyed at the end of the run";
  Drop();
  for (const auto& source : {Auction, Shop}) source->Extensions().clear();
  EXPECT_EQ(LiveObjectCount(), 2) << "the test's own sources";
}

// Threads.

TEST_F(TPluginWatchlistTest, ThreadCountCountsRunningRefreshes) {
  Initialize();
  EXPECT_EQ(Plugin->ThreadCount(), 0);
  Item(Unassigned(), Auction, u"Faust");
  Form().Updates().UpdateAll();
  EXPECT_EQ(Plugin->ThreadCount(), 1);
  Auction->Finish(true);
  EXPECT_EQ(Plugin->ThreadCount(), 0);
}

TEST_F(TPluginWatchlistTest, TerminateThreadsStopsWithoutWaiting) {
  Initialize();
  Item(Unassigned(), Auction, u"Faust");
  Item(Unassigned(), Auction, u"Emma");
  Form().Updates().UpdateAll();
  Plugin->TerminateThreads();
  EXPECT_EQ(Auction->Requests().size(), 1U) << "it did not wait";
  Auction->Finish(true);
  EXPECT_THAT(Auction->Requests(), IsEmpty()) << "no other is started";
}

TEST_F(TPluginWatchlistTest, ShutdownWithoutARunningRefreshShowsNoWindow) {
  Initialize();
  Plugin->Uninitialize();
  EXPECT_EQ(User.ShownCount(), 0);
}

TEST_F(TPluginWatchlistTest, ShutdownWaitsForRunningRefreshes) {
  Initialize();
  Item(Unassigned(), Auction, u"Faust");
  Item(Unassigned(), Auction, u"Emma");
  Item(Unassigned(), Shop, u"Wecker");
  Form().Updates().UpdateAll();
  TLines seen;
  User.Expect<TfrmWaitForThreads>([&](TfrmWaitForThreads& window) {
    EXPECT_EQ(window.prgrsbarWait.Maximum(), 2);
    Loop.Post([&] {
      Shop->Finish(true);
      Loop.Post([&] {
        Auction->Finish(true);
        EXPECT_THAT(Auction->Requests(), IsEmpty()) << "it is not fed any more";
        Loop.Post([&] { seen.push_back(std::to_string(window.prgrsbarWait.Progress())); });
      });
    });
  });
  Plugin->Uninitialize();
  EXPECT_THAT(seen, ElementsAre("2"));
}

TEST_F(TPluginWatchlistTest, RefreshThatNobodyCouldWaitForReachesNoForm) {
  Initialize();
  AskNothing();
  Plugin->ProcessCdmLineParams(u"kaufkobolde -rem fake:Faust");
  ASSERT_THAT(Queued(Auction), ElementsAre("Faust"));
  IFormHost* const host = SetFormHost(nullptr);  // the window that waits can't be shown
  // The handler's end waits for the request with the loop alive; the form has gone by then.
  const auto timer = Loop.StartTimer(1, [this] {
    if (!Auction->Requests().empty()) Auction->Finish(true);
  });
  Plugin->Uninitialize();
  Loop.StopTimer(timer);
  SetFormHost(host);
  EXPECT_THAT(Auction->Requests(), IsEmpty());
  EXPECT_TRUE(Folder.Has(cWatchlistFileName)) << "saved all the same";
}

// Command line.

TEST_F(TPluginWatchlistTest, RemAddsAndShowsTheSection) {
  Initialize();
  ExpectQuestion(u"Bücher");
  Plugin->ProcessCdmLineParams(u"kaufkobolde -rem fake:Faust");
  EXPECT_THAT(
      Log.Lines(),
      testing::Contains("info Plugin: Importiere neuen Eintrag über Kommandozeile: fake:Faust"));
  EXPECT_THAT(Queued(Auction), ElementsAre("Faust"));
  EXPECT_TRUE(Shown());
  Auction->Finish(true);
  const TWatchlistCategory* books = Tree().FindCategoryByName(u"Bücher");
  ASSERT_NE(books, nullptr);
  EXPECT_THAT(Names(books->LstPlugin().GetItems(0).LstItem()), ElementsAre("Faust"));
}

TEST_F(TPluginWatchlistTest, FirstRemThatSucceedsEndsTheWork) {
  Initialize();
  AskNothing();
  Plugin->ProcessCdmLineParams(u"kaufkobolde -rem fake:Faust -rem fake:Emma -remimport x.wch");
  EXPECT_THAT(Queued(Auction), ElementsAre("Faust"));
  EXPECT_TRUE(Shown());
  EXPECT_THAT(Log.Lines(), testing::Not(testing::Contains(testing::HasSubstr("Emma"))));
  EXPECT_THAT(Log.Lines(), testing::Not(testing::Contains(testing::HasSubstr("x.wch"))));
}

TEST_F(TPluginWatchlistTest, RemThatFailedDoesNotStopTheNext) {
  Initialize();
  AskNothing();
  Plugin->ProcessCdmLineParams(u"kaufkobolde -rem quatsch -x y -rem fake:Emma");
  EXPECT_THAT(Queued(Auction), ElementsAre("Emma"));
  EXPECT_TRUE(Shown());
}

TEST_F(TPluginWatchlistTest, ParameterNamesDoNotRegardCase) {
  Initialize();
  AskNothing();
  Plugin->ProcessCdmLineParams(u"kaufkobolde -REM fake:Faust");
  EXPECT_THAT(Queued(Auction), ElementsAre("Faust"));
}

TEST_F(TPluginWatchlistTest, ValueThatNoSourceUnderstandsIsPassedOver) {
  Initialize();
  Plugin->ProcessCdmLineParams(u"kaufkobolde -rem quatsch");
  EXPECT_FALSE(Shown());
  EXPECT_EQ(Rebuilds.Count, 0);
  EXPECT_TRUE(Log.Contains("info Plugin: Importiere neuen Eintrag über Kommandozeile: quatsch"));
}

TEST_F(TPluginWatchlistTest, CancelledQuestionShowsNothing) {
  Initialize();
  ExpectQuestion(u"Bücher", &TfrmWatchlistAddSearchResults::btnCancel);
  Plugin->ProcessCdmLineParams(u"kaufkobolde -rem fake:Faust");
  EXPECT_FALSE(Shown());
  EXPECT_THAT(Queued(Auction), IsEmpty());
}

TEST_F(TPluginWatchlistTest, SourcesWithoutAViewTakeNoPartInRem) {
  class TSilentSource : public TFakeSource {
   public:
    TSilentSource() : TFakeSource(u"Stumm", NewGuid(), TFakeAbilities{true, false}) {}
  };
  const auto plugin = MakeIntf<TSilentSource>();
  Plugin->GetIntegration()->AddIntegration(plugin);
  Initialize();
  AskNothing();
  Handler()->LstIntegration().Move(2, 0);
  Plugin->ProcessCdmLineParams(u"kaufkobolde -rem fake:Faust");
  EXPECT_THAT(Queued(Auction), ElementsAre("Faust")) << "the next one with a view";
}

TEST_F(TPluginWatchlistTest, OtherParametersAreLeftToOthers) {
  Initialize();
  Plugin->ProcessCdmLineParams(u"kaufkobolde -minimized -remind fake:Faust");
  EXPECT_FALSE(Shown());
  EXPECT_THAT(Log.Lines(), IsEmpty());
}

class TFakeImport : public TWatchlistImport {
 public:
  bool ExecuteInBackground(TStringView iFileName) override {
    FileNames.push_back(ToUtf8(iFileName));
    if (Fails) throw Exception(u"Beschädigt");
    return Answer;
  }
  TLines FileNames;
  bool Answer = true;
  bool Fails = false;
};

TEST_F(TPluginWatchlistTest, RemimportOfAMissingFileIsFalseWithoutADialog) {
  Initialize();
  TFakeImport import;
  Form().SetImport(&import);
  Plugin->ProcessCdmLineParams(u"kaufkobolde -remimport /fehlt/liste.wch");
  EXPECT_FALSE(Shown());
  EXPECT_EQ(User.ShownCount(), 0);
  EXPECT_THAT(import.FileNames, IsEmpty());
  EXPECT_THAT(
      Log.Lines(),
      ElementsAre("info Plugin: Importiere aus Datei über Kommandozeile: /fehlt/liste.wch"));
}

TEST_F(TPluginWatchlistTest, RemimportOfAMissingFileDoesNotHideAnotherParameter) {
  Initialize();
  AskNothing();
  Plugin->ProcessCdmLineParams(u"kaufkobolde -remimport /fehlt/liste.wch -rem fake:Faust");
  EXPECT_TRUE(Shown());
}

TEST_F(TPluginWatchlistTest, RemimportThatSucceedsSavesAndShows) {
  Initialize();
  TFakeImport import;
  Form().SetImport(&import);
  Folder.Write(u"liste.wch", "x");
  const TString name = Folder.File(u"liste.wch");
  Plugin->ProcessCdmLineParams(u"kaufkobolde -REMIMPORT " + name + u" -remimport " + name);
  EXPECT_THAT(import.FileNames, ElementsAre(ToUtf8(name)));
  EXPECT_TRUE(Folder.Has(cWatchlistFileName));
  EXPECT_EQ(Rebuilds.Count, 1);
  EXPECT_TRUE(Shown());
}

TEST_F(TPluginWatchlistTest, RemimportThatFailsIsFalseAndQuiet) {
  Initialize();
  TFakeImport import;
  Form().SetImport(&import);
  Folder.Write(u"liste.wch", "x");
  const TString line = u"kaufkobolde -remimport " + Folder.File(u"liste.wch");
  import.Fails = true;
  Plugin->ProcessCdmLineParams(line);
  import.Fails = false;
  import.Answer = false;
  Plugin->ProcessCdmLineParams(line);
  EXPECT_FALSE(Shown());
  EXPECT_EQ(import.FileNames.size(), 2U);
  EXPECT_EQ(Log.Lines().size(), 2U) << "no more than the two that tell of the attempts";
  EXPECT_FALSE(Folder.Has(cWatchlistFileName));
  EXPECT_EQ(Rebuilds.Count, 0);
}

TEST_F(TPluginWatchlistTest, RemimportBringsAnExportedListBack) {
  Initialize();
  Category(u"Uhren");
  Item(Unassigned(), Auction, u"Faust");
  Handler()->SaveAll();
  Folder.Write(u"liste.wch", Folder.Read(cWatchlistFileName));
  Tree().DeleteCategory(*Tree().FindCategoryByName(u"Uhren"));
  Plugin->ProcessCdmLineParams(u"kaufkobolde -remimport " + Folder.File(u"liste.wch"));
  EXPECT_TRUE(Shown());
  EXPECT_NE(Tree().FindCategoryByName(u"Uhren"), nullptr);
  EXPECT_EQ(Unassigned().GetItemCount(true), 1) << "what is there already stays out";
}

// The data publisher's way into the form.

TEST_F(TPluginWatchlistTest, PublisherCallbacksNeedAForm) {
  TMemoryStream stream;
  EXPECT_FALSE(Plugin->DoDataPublisherImportFromFile(nullptr, u"liste.wch"));
  EXPECT_FALSE(Plugin->DoDataPublisherImportFromKKMobile(nullptr, stream));
  Initialize();
  TFakeImport import;
  Form().SetImport(&import);
  const auto publisher = Plugin->GetDataPublisher();
  EXPECT_TRUE(publisher->SetDataStream(cDataStreamID, stream));
  EXPECT_EQ(import.FileNames.size(), 1U);
}

TEST_F(TPluginWatchlistTest, PublisherSavesNothingOverAListThatIsNotLoaded) {
  Folder.Write(cWatchlistFileName, "the user's list");
  TMemoryStream stream;
  EXPECT_FALSE(Plugin->GetDataPublisher()->GetHasDataForExport(0));
  EXPECT_FALSE(Plugin->GetDataPublisher()->GetDataStream(cDataStreamID, stream));
  EXPECT_FALSE(Plugin->GetDataPublisher()->GetDataStream(cDataStreamIDMobile, stream));
  EXPECT_EQ(Folder.Read(cWatchlistFileName), "the user's list");
}

TEST_F(TPluginWatchlistTest, PublisherThatOutlivesThePluginHasNothing) {
  const auto publisher = Plugin->GetDataPublisher();
  Initialize();
  Item(Unassigned(), Auction, u"Faust");
  EXPECT_TRUE(publisher->GetHasDataForExport(0)) << "made before, and ready now";
  Plugin->Uninitialize();
  EXPECT_FALSE(publisher == Plugin->GetDataPublisher());
  Drop();
  TMemoryStream stream;
  EXPECT_FALSE(publisher->GetHasDataForExport(0));
  EXPECT_FALSE(publisher->GetDataStream(cDataStreamID, stream));
  EXPECT_FALSE(publisher->SetDataStream(cDataStreamID, stream));
  EXPECT_FALSE(publisher->SetDataStream(cDataStreamIDMobile, stream));
}

TEST_F(TPluginWatchlistTest, PublisherOffersTwoStreams) {
  Initialize();
  const TIntf<IPluginDataPublisher> publisher = Plugin->GetDataPublisher();
  TMemoryStream stream;
  EXPECT_EQ(publisher->GetDataStreamCount(), 2);
  EXPECT_TRUE(publisher->GetDataStream(cDataStreamID, stream));
  EXPECT_EQ(stream.Bytes(), Folder.Read(cWatchlistFileName));
}

// Extensions of other plug-ins' views.

TEST_F(TPluginWatchlistTest, ViewOfARegisteredSourceGetsOneExtension) {
  Initialize();
  const auto integrations = Plugin->GetIntegrations(ViewOf(Auction->GetId()));
  ASSERT_EQ(integrations->GetCount(), 1);
  const auto menu = GetAs<IContextMenuExtender>(*integrations, 0);
  ASSERT_TRUE(menu);
  EXPECT_EQ(menu->GetCount(), 1);
  EXPECT_EQ(Supports<IAdditionalColumns>(menu)->GetColumns()->GetCount(), 1);
}

TEST_F(TPluginWatchlistTest, AffiliateDecidesWhetherAViewIsExtended) {
  Shop->SetAffiliateId(NewGuid());
  Initialize();
  EXPECT_EQ(Plugin->GetIntegrations(ViewOf(Shop->GetId()))->GetCount(), 0);
  Shop->SetAffiliateId(Auction->GetId());
  EXPECT_EQ(Plugin->GetIntegrations(ViewOf(Shop->GetId()))->GetCount(), 1);
  EXPECT_EQ(Plugin->GetIntegrations(ViewOf(NewGuid()))->GetCount(), 0);
  EXPECT_EQ(Plugin->GetIntegrations({})->GetCount(), 0);
}

TEST_F(TPluginWatchlistTest, ShoppingCartIsExtendedAlthoughItHoldsNoItems) {
  Initialize();
  const auto integrations = Plugin->GetIntegrations(ViewOf(cShoppingCartPluginId));
  ASSERT_EQ(integrations->GetCount(), 1);
  const auto extension = GetAs<INotifications>(*integrations, 0);
  auto& object = dynamic_cast<TSearchLocationIntegrationWatchlist&>(*extension);
  EXPECT_EQ(object.PluginId(), cPluginId);
  EXPECT_EQ(object.GetItems(0).Caption(), u"Artikel beobachten...");
  const auto list = NewInterfaceList();
  list->Add(FakeResult(u"Faust"));
  object.AddSearchResults(list);
  EXPECT_THAT(Log.Lines(), IsEmpty());
  EXPECT_EQ(Rebuilds.Count, 0);
}

}  // namespace
}  // namespace kk
