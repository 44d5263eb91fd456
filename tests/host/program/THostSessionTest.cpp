#include "host/program/THostSession.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>

#include "host/base/Exception.h"
#include "host/common/TFileHelper.h"
#include "host/contract/TPlugins.h"
#include "host/program/THostServices.h"
#include "tests/support/TFakeApplication.h"
#include "tests/support/TFakeSourcePlugin.h"
#include "tests/support/TFakeWatchlistPlugin.h"
#include "tests/support/TLogRecorder.h"
#include "tests/support/TSessionBus.h"
#include "tests/support/TTempFolder.h"
#include "tests/support/TTestIniFile.h"
#include "tests/support/TTestMainLoop.h"

namespace kk {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

/// Plug-ins of the test beside the packages of a folder that is empty at first.
class THostSessionTest : public testing::Test {
 protected:
  ~THostSessionTest() override {
    Session.reset();
    Plugins().Clear();
  }
  void Begin() {
    Session = std::make_unique<THostSession>([](const TNotification&) {});
  }
  void BeginWithWatchlist() {
    Plugins().Add(List);
    Plugins().Add(Shop);
    Begin();
  }
  void Start() { Session->Start(MakeIntf<TFakeApplication>()); }
  bool WaysAreStopped() const {
    try {
      Notifier().Display({});
    } catch (const Exception&) {
      return true;
    }
    return false;
  }

  TLogRecorder Log;
  TTestMainLoop Loop;
  TTempFolder Folder{true};
  TTempFolder Packages;
  TTestEnvironment Environment{{{"KAUFKOBOLDE_PLUGINS", Packages.Path()},
                                {"DBUS_SESSION_BUS_ADDRESS", ""},
                                {"XDG_RUNTIME_DIR", Folder.Path()}}};
  TTestIniFile Settings{Folder.File(u"settings.ini")};
  TIntf<TFakeWatchlistPlugin> List = MakeIntf<TFakeWatchlistPlugin>();
  TIntf<TFakeSourcePlugin> Shop = MakeIntf<TFakeSourcePlugin>(u"Fakeshop");
  std::unique_ptr<THostSession> Session;
};

TEST_F(THostSessionTest, PackagesComeFromTheFolderThatIsNamed) {
  EXPECT_EQ(THostSession::PackagesFolder(), FromUtf8(Packages.Path()));
}

TEST_F(THostSessionTest, OtherwiseTheyLieBesideTheProgram) {
  const TTestEnvironment none{{{"KAUFKOBOLDE_PLUGINS", ""}}};
  const auto program = std::filesystem::read_symlink("/proc/self/exe").parent_path().parent_path();
  EXPECT_EQ(ToUtf8(THostSession::PackagesFolder()), (program / "lib/kaufkobolde").string());
}

TEST_F(THostSessionTest, APackageThatIsNoneIsToldByItsName) {
  Packages.Write(u"libkaputt.so", "nichts");
  Begin();
  ASSERT_THAT(Session->RefusedPackages(), SizeIs(1));
  EXPECT_THAT(ToUtf8(Session->RefusedPackages()[0].FileName), HasSubstr("libkaputt.so"));
}

TEST_F(THostSessionTest, WithoutTheWatchListItDoesNotStartAndEndsSafely) {
  Begin();
  try {
    Start();
    ADD_FAILURE() << "it started";
  } catch (const Exception& e) {
    EXPECT_EQ(ToUtf8(e.Message()),
              "Die Beobachtenliste (libwatchlist.so) ist nicht geladen. Gesucht wurde in " +
                  Packages.Path() + ".");
  }
  EXPECT_FALSE(Session->HasStarted());
  Session->End();
}

TEST_F(THostSessionTest, WhatWasNeverStartedIsNotEnded) {
  BeginWithWatchlist();
  Session->End();
  EXPECT_THAT(List->Calls, IsEmpty());
  EXPECT_THAT(Log.Lines(), IsEmpty());
}

TEST_F(THostSessionTest, AtTheEndWorkEndsBeforeThePlugins) {
  BeginWithWatchlist();
  Start();
  EXPECT_TRUE(Session->HasStarted());
  Log.Clear();
  Session->End();
  EXPECT_THAT(Log.Lines(),
              ElementsAre("info Beobachten: TerminateThreads", "info Beobachten: Uninitialize",
                          "info Fakeshop: Uninitialize"));
  EXPECT_EQ(Shop->Terminated, 1);
}

TEST_F(THostSessionTest, TheEndWaitsForWorkThatIsUnderWay) {
  BeginWithWatchlist();
  Start();
  Shop->Threads = 1;
  bool wasThere = false;
  Loop.Post([&] {
    Loop.Post([&] {
      wasThere = Session->Plugins().HasList();
      Shop->Threads = 0;
    });
  });
  Session->EndWork();
  EXPECT_TRUE(wasThere);
  EXPECT_EQ(Shop->Threads, 0);
}

TEST_F(THostSessionTest, TheWaysOutAreStoppedOnceThePluginsWereAskedToEnd) {
  BeginWithWatchlist();
  Start();
  EXPECT_FALSE(WaysAreStopped());
  Session->EndWork();
  EXPECT_TRUE(WaysAreStopped());
  EXPECT_TRUE(Session->Plugins().HasList()) << "the plug-ins still stand";
}

TEST_F(THostSessionTest, WhatStillWaitsInTheLoopRunsBeforeThePackagesGo) {
  BeginWithWatchlist();
  Start();
  Session->EndWork();
  bool ran = false;
  Loop.Post([&] { ran = true; });
  Session->Uninitialize();
  EXPECT_TRUE(ran);
  EXPECT_FALSE(Session->Plugins().HasList());
}

TEST_F(THostSessionTest, EachStepOfTheEndIsTakenOnce) {
  BeginWithWatchlist();
  Start();
  Session->EndWork();
  Session->EndWork();
  Session->Uninitialize();
  Session->End();
  Session->End();
  EXPECT_EQ(Shop->Terminated, 1);
  EXPECT_EQ(std::ranges::count(Log.Lines(), "info Beobachten: Uninitialize"), 1);
}

TEST_F(THostSessionTest, ItsOwnEndIsAnEndToo) {
  BeginWithWatchlist();
  Start();
  Session.reset();
  EXPECT_THAT(Log.Lines(), Contains("info Beobachten: Uninitialize"));
}

class THostServicesTest : public testing::Test {
 protected:
  ~THostServicesTest() override { SetHostFolders({}); }
  THostServices::TOptions Options() const { return {FromUtf8(Folder.Path()), false}; }
  TTestMainLoop Loop;
  TTempFolder Folder;
};

TEST_F(THostServicesTest, LogAndSettingsLieInTheFolderThatIsGiven) {
  const THostServices services(Options());
  LogInfo(u"Probe", u"Hallo");
  IniFile().WriteString(u"A", u"b", u"c");
  EXPECT_THAT(Folder.Read(u"kaufkobolde.log"), HasSubstr("Hallo"));
  EXPECT_TRUE(Folder.Has(u"kaufkobolde.ini"));
}

TEST_F(THostServicesTest, TheDataAreForOneProcessAndTheOtherKnowsWhereTheyLie) {
  const THostServices services(Options());
  EXPECT_THROW(THostServices{Options()}, EHostBusy);
  EXPECT_EQ(HostFolders().Data, FromUtf8(Folder.Path()));
}

TEST_F(THostServicesTest, LooksAfterTheFileOfTheWatchList) {
  const THostServices services(Options());
  EXPECT_EQ(ToUtf8(services.DataGuard().FileName()), Folder.Path() + "/watchlist.dat");
  EXPECT_FALSE(services.DataGuard().BackupToRestore());
  Folder.Write(u"watchlist.da~", "x");
  EXPECT_TRUE(services.DataGuard().BackupToRestore());
}

}  // namespace
}  // namespace kk
