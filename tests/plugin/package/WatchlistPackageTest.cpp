#include <dlfcn.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <atomic>
#include <filesystem>

#include "host/base/Exception.h"
#include "host/common/PlaySound.h"
#include "host/common/TPackageLoader.h"
#include "host/contract/IMultiThreadPlugin.h"
#include "host/contract/IToolbarExtender.h"
#include "host/contract/IWatchlist.h"
#include "host/contract/IWatchlistAccess.h"
#include "host/contract/PackageEntry.h"
#include "host/contract/TCommonPlugin.h"
#include "host/contract/TPluginIntegration.h"
#include "host/controls/TComboBox.h"
#include "host/controls/TEdit.h"
#include "tests/support/TFakeApplication.h"
#include "tests/support/TFakeSource.h"
#include "tests/support/TLogRecorder.h"
#include "tests/support/TScriptedFormHost.h"
#include "tests/support/TTempFolder.h"
#include "tests/support/TTestClock.h"
#include "tests/support/TTestIniFile.h"
#include "tests/support/TTestMainLoop.h"

namespace kk {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

constexpr TGuid cWatchlistId = GuidLiteral("{FC3B5C09-B3C7-43DF-BBFE-DFE2158FFCE2}");
constexpr TGuid cSourceId = GuidLiteral("{5E000000-0000-0000-0000-0000000000B1}");

std::string PackageFile() {
  return std::string(KK_BIN_DIR) + "/../lib/kaufkobolde/libwatchlist.so";
}

// A source plug-in of the test: its door offers the source to the watch list, and takes what the
// watch list offers.
class TSourceDoor : public TPluginIntegration {
 public:
  explicit TSourceDoor(const TIntf<TFakeSource>& iSource)
      : TPluginIntegration(MakeIntf<TPluginIntegrationInfo>(cSourceId, TGroupIdentification{1})),
        FSource(iSource) {}
  TIntf<IInterfaceList> GetIntegrations(const TIntf<IIntegrationInfo>&) override {
    const TIntf<IInterfaceList> offered = NewInterfaceList();
    offered->Add(FSource);
    return offered;
  }

 private:
  TIntf<TFakeSource> FSource;
};

class TSourcePlugin : public TCommonPlugin<IPlugin> {
 public:
  explicit TSourcePlugin(const TIntf<TFakeSource>& iSource)
      : FDoor(MakeIntf<TSourceDoor>(iSource)) {}
  TGuid GetId() const override { return cSourceId; }
  TGroupIdentification GetGroup() const override { return TGroupIdentification{1}; }
  TPluginAttributes GetAttributes() const override { return 0; }
  TString GetSignature() const override { return {}; }
  TString GetDescription() const override { return u"Testquelle"; }
  TString GetLongDescription() const override { return {}; }
  const TIntf<TSourceDoor>& Door() const { return FDoor; }

 protected:
  bool QueryDelegated(const TGuid& iIid, void** oInterface) override {
    return iIid == IID_PluginIntegration && FDoor->QueryInterface(iIid, oInterface);
  }

 private:
  TIntf<TSourceDoor> FDoor;
};

// A host: loads the package, brings the plug-ins together as every host does, and ends in order.
class THost {
 public:
  explicit THost(bool iDelivers = false) {
    EXPECT_TRUE(Loader.Load(FromUtf8(PackageFile())));
    Plugins().Add(FSource);
    Exchange();
    for (int i = 0; i < Plugins().GetCount(); ++i) {
      Plugins().GetItems(i)->Initialize(MakeIntf<TFakeApplication>(iDelivers));
    }
  }
  ~THost() {
    for (int i = Plugins().GetCount() - 1; i >= 0; --i) Plugins().GetItems(i)->Uninitialize();
    Plugins().Remove(FSource);
    FSource = nullptr;
    Source = nullptr;
    Loader.Unload();
  }

  TIntf<IPlugin> Watchlist() const {
    for (int i = 0; i < Plugins().GetCount(); ++i) {
      if (SameGuid(Plugins().GetItems(i)->GetId(), cWatchlistId)) return Plugins().GetItems(i);
    }
    return {};
  }
  TIntf<IWatchlistAccess> Access() const { return Supports<IWatchlistAccess>(Watchlist()); }
  // The watch list as the source plug-in was given it.
  TIntf<IWatchlist> Offered() const { return Supports<IWatchlist>(FSource->Door()->GetItem(0)); }

  TPackageLoader Loader;
  TIntf<TFakeSource> Source = MakeIntf<TFakeSource>(u"Testquelle", cSourceId);

 private:
  static void Exchange() {
    for (int i = 0; i < Plugins().GetCount(); ++i) {
      const auto taker = Supports<IPluginIntegration>(Plugins().GetItems(i));
      for (int j = 0; j < Plugins().GetCount(); ++j) {
        const auto giver = Supports<IPluginIntegration>(Plugins().GetItems(j));
        if (i == j || !taker || !giver) continue;
        taker->AddIntegrations(giver->GetIntegrations(taker->GetIntegrationInfo()));
      }
    }
  }

  TIntf<TSourcePlugin> FSource = MakeIntf<TSourcePlugin>(Source);
};

class TFakePlayer : public ISoundPlayer {
 public:
  TFakePlayer() : FBefore(SetSoundPlayer(this)) {}
  ~TFakePlayer() override { SetSoundPlayer(FBefore); }
  bool Play(TStringView) override { return Played = true; }
  std::atomic<bool> Played{false};

 private:
  ISoundPlayer* FBefore;
};

class TWatchlistPackageTest : public testing::Test {
 protected:
  // The user types a category's name into the question for one and takes the new ones.
  void ExpectQuestion(TStringView iCategory) {
    User.ExpectCaption(u"Zu Beobachtenliste hinzufügen",
                       [category = TString(iCategory)](TForm& form) {
                         Control<TComboBox>(form, u"cmbxCategory")->EnterText(category);
                         Control<TButton>(form, u"btnOnlyNew")->Click();
                       });
  }
  template <class T>
  static T* Control(TControl& iParent, TStringView iName) {
    for (TControl* child : iParent.Children()) {
      if (child->Name() == iName) return dynamic_cast<T*>(child);
      if (T* hit = Control<T>(*child, iName)) return hit;
    }
    return nullptr;
  }
  // The line of text of each item with the path of its category.
  static std::vector<std::string> Items(const std::vector<TWatchlistCategoryInfo>& iCategories) {
    std::vector<std::string> items;
    for (const TWatchlistCategoryInfo& category : iCategories) {
      for (const TWatchlistGroupInfo& group : category.Groups) {
        for (const TWatchlistItemInfo& item : group.Items) {
          items.push_back(ToUtf8(category.Name + u"/" + group.Name + u"/" + item.Name));
        }
      }
    }
    return items;
  }
  static bool InMemory() {
    void* library = dlopen(PackageFile().c_str(), RTLD_NOW | RTLD_NOLOAD);
    if (library != nullptr) dlclose(library);
    return library != nullptr;
  }

  TTempFolder Folder{true};
  TLogRecorder Log;
  TTestMainLoop Loop;
  TTestClock Clock;
  TScriptedFormHost User;
  TTestIniFile Ini{Folder.File(u"settings.ini")};
  TFakePlayer Player;
};

TEST_F(TWatchlistPackageTest, ExportsItsEntryAndNothingElse) {
  void* library = dlopen(PackageFile().c_str(), RTLD_NOW | RTLD_LOCAL);
  ASSERT_NE(library, nullptr) << dlerror();
  const auto* entry = static_cast<const TPackageEntry*>(dlsym(library, cPackageEntryName));
  ASSERT_NE(entry, nullptr);
  EXPECT_EQ(entry->InterfaceVersion, cInterfaceVersion);
  EXPECT_EQ(dlsym(library, "_ZN2kk7HandlerEv"), nullptr);
  EXPECT_EQ(dlsym(library, "_ZN2kk17RegisterWatchlistEv"), nullptr);
  EXPECT_EQ(Plugins().GetCount(), 0) << "loading alone registers nothing";
  dlclose(library);
}

TEST_F(TWatchlistPackageTest, ItemsComeBackAtTheNextStart) {
  {
    THost host;
    ASSERT_TRUE(host.Offered());
    ExpectQuestion(u"Bücher");
    EXPECT_TRUE(host.Offered()->AddItem(cSourceId, FakeResult(u"Faust")));
    EXPECT_THAT(host.Source->Requests(), SizeIs(1));
    host.Source->Finish(true, FakeResult(u"Faust I"));
    EXPECT_TRUE(Folder.Has(u"watchlist.dat")) << "saved with the end of the add";
    EXPECT_THAT(Items(host.Access()->GetTree().Categories),
                ElementsAre("Bücher/Testquelle/Faust I"));
    const TGuid id = host.Access()->GetTree().Categories.back().Groups[0].Items[0].Id;
    host.Access()->SetNote({id}, {u"eine Notiz"});
  }
  EXPECT_EQ(LiveObjectCount(), 0);
  EXPECT_FALSE(InMemory()) << "the package is unloaded";
  EXPECT_EQ(Plugins().GetCount(), 0);
  {
    THost host;
    const TWatchlistInfo info = host.Access()->GetTree();
    EXPECT_THAT(Items(info.Categories), ElementsAre("Bücher/Testquelle/Faust I"));
    EXPECT_EQ(info.Categories.back().Groups[0].Items[0].Note, std::vector<TString>{u"eine Notiz"})
        << "saved with the end of the run";
    EXPECT_TRUE(host.Offered()->HasItem(cSourceId, FakeResult(u"Faust I")));
  }
  EXPECT_EQ(LiveObjectCount(), 0);
  EXPECT_FALSE(InMemory());
  EXPECT_THAT(Log.Lines(), testing::Not(testing::Contains(testing::StartsWith("error"))));
}

TEST_F(TWatchlistPackageTest, CommandLineAddsThroughTheSource) {
  Ini.WriteString(u"Watchlist", u"ShowAddDialog", u"0");
  THost host;
  host.Watchlist()->ProcessCdmLineParams(u"kaufkobolde -rem fake:Emma");
  host.Source->Finish(true);
  EXPECT_THAT(Items(host.Access()->GetTree().Categories),
              ElementsAre("<Keiner Kategorie zugewiesen>/Testquelle/Emma"));
  EXPECT_TRUE(host.Offered()->HasItem(cSourceId, FakeResult(u"Emma")));
  EXPECT_FALSE(host.Offered()->AddItem(cSourceId, FakeResult(u"Emma")));
}

TEST_F(TWatchlistPackageTest, RefreshUnderWayAtTheEndIsWaitedFor) {
  THost host;
  Ini.WriteString(u"Watchlist", u"ShowAddDialog", u"0");
  host.Offered()->AddItem(cSourceId, FakeResult(u"Emma"));
  const auto multi = Supports<IMultiThreadPlugin>(host.Watchlist());
  EXPECT_EQ(multi->ThreadCount(), 1);
  User.ExpectCaption(u"Warten auf Beobachtenliste",
                     [&](TForm&) { Loop.Post([&] { host.Source->Finish(true); }); });
}

TEST_F(TWatchlistPackageTest, EndOfTheProgramEndsARefreshThatIsUnderWay) {
  THost host;
  Ini.WriteString(u"Watchlist", u"ShowAddDialog", u"0");
  host.Offered()->AddItem(cSourceId, FakeResult(u"Emma"));
  Supports<IMultiThreadPlugin>(host.Watchlist())->TerminateThreads();
  host.Source->Finish(true);
  EXPECT_THAT(host.Source->Requests(), IsEmpty());
}

TEST_F(TWatchlistPackageTest, RemindersAreEditedAndDeliveredAndNoThreadIsLeft) {
  Ini.WriteString(u"Watchlist", u"ShowAddDialog", u"0");
  Folder.Write(u"ton.wav", "RIFF");
  {
    THost host(true);
    host.Offered()->AddItem(cSourceId,
                            FakeResult(u"Emma", Clock.Now().PlusMs(TDateTime::cMsPerHour)));
    host.Source->Finish(true);
    const TGuid id = host.Access()->GetTree().Categories.front().Groups[0].Items[0].Id;
    User.ExpectCaption(u"Erinnerung", [&](TForm& form) {
      Control<TComboBox>(form, u"cmbxRemindType")->Select(0);
      Control<TEdit>(form, u"edtSoundFile")->EnterText(Folder.File(u"ton.wav"));
      Control<TComboBox>(form, u"cmbxTimeRelative")->Select(0);
      Control<TButton>(form, u"btnOK")->Click();
    });
    host.Access()->EditReminders({id});
    EXPECT_TRUE(host.Access()->HasUnsavedReminders());
    EXPECT_TRUE(host.Access()->Save());
    ASSERT_THAT(host.Access()->GetTree().Reminders, SizeIs(1));
    EXPECT_EQ(host.Access()->GetTree().Reminders[0].SoundFile, Folder.File(u"ton.wav"));
    ASSERT_TRUE(Clock.WaitForSleepers(1));
    Clock.Advance(59 * TDateTime::cMsPerMinute);
    while (Clock.SleeperCount() == 0) Loop.ProcessMessages();
    EXPECT_TRUE(Log.Contains("info Watchlist-Reminder: Melde Erinnerung"));
    EXPECT_TRUE(Player.Played) << "by the host's sound output";
    EXPECT_THAT(host.Access()->GetTree().Reminders, IsEmpty());
    Clock.StopSleeping();
  }
  EXPECT_EQ(LiveObjectCount(), 0);
  EXPECT_FALSE(InMemory());
}

TEST_F(TWatchlistPackageTest, HostThatWasNeverInitialisedLeavesTheFileAlone) {
  Folder.Write(u"watchlist.dat", "the user's list");
  TPackageLoader loader;
  ASSERT_TRUE(loader.Load(FromUtf8(PackageFile())));
  Plugins().GetItems(0)->Uninitialize();
  loader.Unload();
  EXPECT_EQ(LiveObjectCount(), 0);
  EXPECT_FALSE(InMemory());
  EXPECT_EQ(Folder.Read(u"watchlist.dat"), "the user's list");
}

TEST_F(TWatchlistPackageTest, ExceptionsOfThePackageAreTheHostsOwn) {
  THost host;
  try {
    host.Access()->DeleteCategory(cEmptyGuid);
    FAIL() << "nothing raised";
  } catch (const Exception& e) {
    EXPECT_EQ(e.Message(), u"Das geht nicht mit der Kategorie \"<Keiner Kategorie zugewiesen>\".");
  }
}

TEST_F(TWatchlistPackageTest, SecondCopyOfThePackageIsRefused) {
  const std::string copy = Folder.Path() + "/copy.so";
  std::filesystem::copy_file(PackageFile(), copy);
  THost host;
  EXPECT_FALSE(host.Loader.Load(FromUtf8(copy)));
  EXPECT_EQ(Plugins().GetCount(), 2);
}

}  // namespace
}  // namespace kk
