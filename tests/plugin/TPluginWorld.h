#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "host/common/TKKIniFile.h"
#include "host/contract/TPluginIntegration.h"
#include "persistence/TWatchlistHandler.h"
#include "plugin/UnitKKPluginWatchlist.h"
#include "settings/TIniFileSectionWatchlist.h"
#include "tests/support/TFakeSource.h"
#include "tests/support/TLogRecorder.h"
#include "tests/support/TScriptedFormHost.h"
#include "tests/support/TTempFolder.h"
#include "tests/support/TTestClock.h"
#include "tests/support/TTestMainLoop.h"
#include "updating/adding/TfrmWatchlistAddSearchResults.h"

namespace kk {

using TLines = std::vector<std::string>;

class TFakeApplication : public TInterfaced<IApplication> {
 public:
  void SectionClosed() override {}
  bool ShowNotificationWindow(TForm*) override { return false; }
};

/// A settings file that is the host's while it lives.
class TTestIniFile : public TKKIniFile {
 public:
  explicit TTestIniFile(TStringView iFileName) : TKKIniFile(iFileName), FBefore(SetIniFile(this)) {}
  ~TTestIniFile() override { SetIniFile(FBefore); }

 private:
  TKKIniFile* FBefore;
};

/// Counts how often the section's tree was built anew.
class TCountingView : public TWatchlistView {
 public:
  void BuildCategoriesTree(bool iKeepSelection) override { iKeepSelection ? ++Kept : ++Fresh; }
  int Kept = 0;
  int Fresh = 0;
};

/// The plug-in in a host of the test's, with two sources ("Auktion", "Laden").
class TPluginWorld {
 public:
  TPluginWorld() {
    Plugin->GetIntegration()->AddIntegration(Auction);
    Plugin->GetIntegration()->AddIntegration(Shop);
  }
  ~TPluginWorld() {
    if (Plugin) Plugin->TerminateThreads();
    for (const auto& source : {Auction, Shop}) {
      while (!source->Requests().empty()) source->Finish(false);
    }
    if (Plugin) Plugin->Uninitialize();
  }

  void Initialize() {
    Plugin->Initialize(MakeIntf<TFakeApplication>());
    Form().SetView(&View);
    Log.Clear();
  }
  /// The host drops the plug-in.
  void Drop() { Plugin = nullptr; }
  TfrmKKWatchlist& Form() { return *Plugin->DoGetForm(nullptr); }
  static TLstWatchlistCategory& Tree() { return Handler()->LstCategory(); }
  static TWatchlistCategory& Unassigned() { return *Tree().FindCategoryById(cEmptyGuid); }
  static TWatchlistCategory& Category(TStringView iName) {
    auto category = std::make_unique<TWatchlistCategory>();
    category->SetName(iName);
    category->SetId(NewGuid());
    return Tree().Add(std::move(category));
  }
  static TWatchlistPlugin& Group(TWatchlistCategory& iCategory, const TIntf<TFakeSource>& iSource) {
    TWatchlistPlugin* group = iCategory.LstPlugin().FindById(iSource->GetId());
    return group != nullptr
               ? *group
               : iCategory.LstPlugin().Add(std::make_unique<TWatchlistPlugin>(iSource));
  }
  static TWatchlistItem& Item(TWatchlistCategory& iCategory, const TIntf<TFakeSource>& iSource,
                              TStringView iName) {
    TWatchlistItem& item =
        Group(iCategory, iSource).LstItem().Add(std::make_unique<TWatchlistItem>());
    item.SetSearchResult(FakeResult(iName));
    item.SetParentCategoryId(iCategory.Id());
    return item;
  }
  static TWatchlistIntegration& Record(const TIntf<TFakeSource>& iSource) {
    TLstWatchlistIntegration& sources = Handler()->LstIntegration();
    return sources.GetItems(sources.IndexOfId(iSource->GetId()));
  }
  /// "R" for changed results, "I" for changed items, "-" for neither.
  static std::string Flags(const TIntf<TFakeSource>& iSource) {
    const TWatchlistIntegration& record = Record(iSource);
    const std::string flags =
        std::string(record.ChangedSearchResults() ? "R" : "") + (record.ChangedItems() ? "I" : "");
    return flags.empty() ? "-" : flags;
  }
  static TLines Names(const TLstWatchlistItem& iItems) {
    TLines names;
    for (const TWatchlistItem* item : iItems) names.push_back(ToUtf8(item->GetName()));
    return names;
  }
  /// Queued for a refresh, by name.
  static TLines Queued(const TIntf<TFakeSource>& iSource) {
    TLines names;
    for (const auto& request : iSource->Requests()) {
      names.push_back(ToUtf8(request.Clone->GetName()));
    }
    return names;
  }
  /// The user chooses this category, or types the name of a new one, and presses a button.
  void ExpectQuestion(TStringView iCategory, TButton TfrmWatchlistAddSearchResults::*iButton =
                                                 &TfrmWatchlistAddSearchResults::btnOnlyNew) {
    User.Expect<TfrmWatchlistAddSearchResults>(
        [category = TString(iCategory), iButton](TfrmWatchlistAddSearchResults& form) {
          form.cmbxCategory.EnterText(category);
          (form.*iButton).Click();
        });
  }

  TTempFolder Folder{true};
  TLogRecorder Log;
  TTestMainLoop Loop;
  TTestClock Clock;
  TScriptedFormHost User;
  TTestIniFile Ini{Folder.File(u"settings.ini")};
  TCountingView View;
  TIntf<TFakeSource> Auction = MakeIntf<TFakeSource>(u"Auktion");
  TIntf<TFakeSource> Shop = MakeIntf<TFakeSource>(u"Laden");
  TIntf<TPluginWatchlist> Plugin = MakeIntf<TPluginWatchlist>();
};

}  // namespace kk
