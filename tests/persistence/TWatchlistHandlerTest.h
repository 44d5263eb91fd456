#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>

#include "TFileWorld.h"
#include "host/base/Exception.h"
#include "host/common/TFileHelper.h"
#include "host/contract/ISearchLocationIntegration.h"
#include "host/contract/TPlugins.h"
#include "persistence/IWatchlistHandlerSite.h"
#include "persistence/TWatchlistHandler.h"
#include "reminders/TRemindHandler.h"
#include "tests/support/TFakeApplication.h"
#include "tests/support/TFakePlugin.h"

namespace kk {

inline constexpr TGuid cSource = GuidLiteral("{5E000000-0000-0000-0000-000000000001}");
inline constexpr char cResults[] = "{5E000000-0000-0000-0000-000000000001}";
inline constexpr char cItems[] = "items{5E000000-0000-0000-0000-000000000001}";
inline constexpr char cCatchAll[] = "<Keiner Kategorie zugewiesen>\n";

class TFakeColumns : public TInterfaced<IAdditionalColumns> {
 public:
  TIntf<IInterfaceList> GetColumns() const override { return NewInterfaceList(); }
};

// A plug-in that extends the views of others, and notes for which it was asked.
class TExtendingPlugin : public TFakePluginOf<IPlugin, ISearchLocationIntegration> {
 public:
  using TFakePluginOf::TFakePluginOf;
  TIntf<IInterfaceList> GetIntegrations(const TIntf<IIntegrationInfo>& iInfo) override {
    Asked.push_back(iInfo->GetId());
    const TIntf<IInterfaceList> list = NewInterfaceList();
    list->Add(Extension);
    return list;
  }
  std::vector<TGuid> Asked;
  TIntf<IInterface> Extension = MakeIntf<TFakeColumns>();
};

class TFakeSite : public IWatchlistHandlerSite {
 public:
  TFakeSite() : FBefore(SetWatchlistHandlerSite(this)) {}
  ~TFakeSite() override { SetWatchlistHandlerSite(FBefore); }
  void WaitForThreads(const TLstWatchlistIntegration& iIntegrations) override {
    ++Waits;
    Integrations = &iIntegrations;
    if (OnWait) OnWait();
  }
  TIntf<IAdditionalColumns> CreateAdditionalColumns() override { return Columns; }

  int Waits = 0;
  std::function<void()> OnWait;
  const TLstWatchlistIntegration* Integrations = nullptr;
  TIntf<IAdditionalColumns> Columns = MakeIntf<TFakeColumns>();

 private:
  IWatchlistHandlerSite* FBefore;
};

// A thread that ends with the next turn of the loop after it was asked to.
class TFakeThreads : public IRemindThreadFactory, public IRemindThread {
 public:
  TFakeThreads() : FBefore(SetRemindThreadFactory(this)) {}
  ~TFakeThreads() override { SetRemindThreadFactory(FBefore); }
  IRemindThread& StartThread(const TIntf<IApplication>& iApplication, TLstRemindItem&,
                             TNotifyProcessRemindItem, TNotifyEvent iOnTerminate) override {
    ++Started;
    Application = iApplication;
    FOnTerminate = iOnTerminate;
    return *this;
  }
  void Terminate() override {
    MainLoop().Post([this] {
      ++Ended;
      FOnTerminate(nullptr);
    });
  }
  int Started = 0;
  int Ended = 0;
  TIntf<IApplication> Application;

 private:
  TNotifyEvent FOnTerminate;
  IRemindThreadFactory* FBefore;
};

class TListener : public TObject {
 public:
  void DoAdd(TObject* Sender) { Note("add", Sender); }
  void DoDelete(TObject* Sender) { Note("delete", Sender); }
  void DoFail(TObject*) { throw Exception(u"Zuhörer kaputt"); }
  TNotifyEvent Add() { return TNotifyEvent::Of<&TListener::DoAdd>(this); }
  TNotifyEvent Delete() { return TNotifyEvent::Of<&TListener::DoDelete>(this); }
  TNotifyEvent Fail() { return TNotifyEvent::Of<&TListener::DoFail>(this); }
  std::vector<std::string> Notes;

 private:
  void Note(const std::string& iWhat, TObject* iSender) {
    Notes.push_back(iWhat + " " + ToUtf8(dynamic_cast<TWatchlistItem&>(*iSender).GetName()));
  }
};

// A handler in a place of its own, without a site and with threads that are none.
class TWatchlistHandlerTest : public testing::Test {
 protected:
  TWatchlistHandlerTest() { CreateHandler(FPlugin); }
  ~TWatchlistHandlerTest() override {
    FreeHandler();
    FreeBuriedCategories();
    Plugins().Clear();
  }
  TString FileName() const { return Folder.File(cWatchlistFileName); }
  TLstWatchlistCategory& Tree() { return Handler()->LstCategory(); }
  TIntf<TFakeSource> AddSource(TFakeAbilities iAbilities = {}) {
    const auto source = MakeIntf<TFakeSource>(u"Quelle", cSource, iAbilities);
    Handler()->LstIntegration().Add(source);
    return source;
  }
  // "A" with an article, and everything flagged.
  void FillTree(const TIntf<TFakeSource>& iSource) {
    AddItem(AddCategory(Tree(), u"A"), iSource, u"Uhr");
    FlagAll();
  }
  void FlagAll() {
    for (TWatchlistIntegration* record : Handler()->LstIntegration()) {
      record->SetChangedItems(true);
      record->SetChangedSearchResults(true);
    }
    Handler()->LstRemind().SetChanged(true);
  }
  // A new run of the program on the same file.
  TIntf<TFakeSource> Restart() {
    FreeHandler();
    CreateHandler(FPlugin);
    return AddSource();
  }
  void BlockWriting() { MakeHostFolder(Folder.File(u"watchlist.dat.tmp/x")); }

  TTempFolder Folder{true};
  TLogRecorder Log;
  TTestMainLoop Loop;
  TTestClock Clock;
  TFakeThreads Threads;
  TIntf<IPlugin> FPlugin = MakeIntf<TFakePlugin>();
  TIntf<IApplication> Application = MakeIntf<TFakeApplication>();
};

}  // namespace kk
