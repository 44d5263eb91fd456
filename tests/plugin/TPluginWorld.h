#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "host/contract/TPluginIntegration.h"
#include "plugin/UnitKKPluginWatchlist.h"
#include "settings/TIniFileSectionWatchlist.h"
#include "tests/support/TWatchlistWorld.h"
#include "updating/adding/TfrmWatchlistAddSearchResults.h"

namespace kk {

/// Counts how often the section's tree was built anew.
class TRebuildCounter : public ITreeObserver {
 public:
  void BeforeTreeChange(const TTreeChange&) override {}
  void AfterTreeChange(const TTreeChange& iChange) override {
    if (iChange.Kind == TTreeChange::TKind::tcReset) ++Count;
  }
  void NodeChanged(TVirtualNode&) override {}
  void ScrollIntoView(TVirtualNode&) override {}
  int Count = 0;
};

/// The plug-in in a host of the test's.
class TPluginWorld : public TWatchlistWorld {
 public:
  TPluginWorld() {
    Plugin->GetIntegration()->AddIntegration(Auction);
    Plugin->GetIntegration()->AddIntegration(Shop);
  }
  ~TPluginWorld() {
    Clock.StopSleeping();  // for a thread that a failed test has left
    if (Plugin) Plugin->TerminateThreads();
    for (const auto& source : {Auction, Shop}) {
      while (!source->Requests().empty()) source->Finish(false);
    }
    if (Plugin) Plugin->Uninitialize();
  }

  void Initialize(const TIntf<IApplication>& iApplication = MakeIntf<TFakeApplication>()) {
    Plugin->Initialize(iApplication);
    Form().Panes().Tree.vstCategories.SetTreeObserver(&Rebuilds);
    Log.Clear();
  }
  /// The host drops the plug-in.
  void Drop() { Plugin = nullptr; }
  TfrmKKWatchlist& Form() { return *Plugin->DoGetForm(nullptr); }
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

  TRebuildCounter Rebuilds;
  TIntf<TPluginWatchlist> Plugin = MakeIntf<TPluginWatchlist>();
};

}  // namespace kk
