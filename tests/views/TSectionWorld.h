#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>

#include "host/common/TOutlook.h"
#include "settings/TIniFileSectionWatchlist.h"
#include "tests/support/TFakePlugin.h"
#include "tests/support/TWatchlistWorld.h"
#include "views/TfrmKKWatchlist.h"
#include "views/WatchlistModel.h"

namespace kk {

/// Notes what the commands tell the section's views, one line a call.
class TRecordingView : public TWatchlistView {
 public:
  void BuildCategoriesTree(bool iKeep) override { Note(iKeep ? "Build keep" : "Build"); }
  void AddCategoryToTree(TWatchlistCategory& iCategory) override { Note("Add", iCategory); }
  void CategoryChanged(TWatchlistCategory& iCategory) override { Note("Changed", iCategory); }
  void AddPluginToTree(TWatchlistCategory& iCategory, TWatchlistPlugin& iGroup) override {
    Note("AddGroup " + ToUtf8(iGroup.GetName()) + " to", iCategory);
  }
  void MoveNode(TObject& iObject, TObject* iNewParent) override {
    Note("Move " + NameOf(iObject) + " to " +
         (iNewParent == nullptr ? "top level" : NameOf(*iNewParent)));
  }
  void DeleteNodeFromTree(TObject& iObject) override { Note("Delete " + NameOf(iObject)); }
  void RefreshSelectedCategory(TWatchlistCategory& iCategory) override {
    Note("Selected", iCategory);
    if (Fails) throw Exception(u"Kein Fenster");
  }
  void ShowFocusedResult(const TIntf<IWatchlistIntegration>& iIntegration) override {
    Note(iIntegration ? "Focused of " + ToUtf8(iIntegration->GetName()) : "Focused");
  }
  TIntf<ISearchResult> FocusedResult() const override { return Focus; }
  void RefreshRowOfReminder(const TGuid& iId) override { Fail("Row of " + NameOf(iId)); }
  void RefreshDetailsOfReminder(const TGuid& iId) override { Fail("Details of " + NameOf(iId)); }
  void ShowNoResult() override { Fail("No result"); }
  void RefreshSearchResult(const TIntf<ISearchResult>&) override { Fail("Row"); }
  void RefreshCurrentSearchResultIfEquals(const TIntf<ISearchResult>&) override { Fail("Details"); }
  void RepaintNode(TWatchlistItem&) override { Fail("Node"); }
  void DoUpdaterProgress(TObject* Sender) override {
    Note(Sender == nullptr ? "Progress" : "Progress of updater");
  }
  void DoUpdaterAfterAdd(TObject*, int iCount) override {
    Note("AfterAdd " + std::to_string(iCount));
  }
  void UpdateTakenOut() override { Note("TakenOut"); }

  TLines Calls;
  bool Fails = false;
  TIntf<ISearchResult> Focus;

 private:
  static std::string NameOf(const TGuid& iId) {
    const TWatchlistItem* item = RootCategories().FindItemById(iId);
    return item != nullptr ? ToUtf8(item->GetName()) : "?";
  }
  static std::string NameOf(TObject& iObject) {
    if (auto* category = dynamic_cast<TWatchlistCategory*>(&iObject)) {
      return ToUtf8(category->Name());
    }
    if (auto* group = dynamic_cast<TWatchlistPlugin*>(&iObject)) {
      return "[" + ToUtf8(group->GetName()) + "]";
    }
    return ToUtf8(dynamic_cast<TWatchlistItem&>(iObject).GetName());
  }
  void Note(std::string iCall) { Calls.push_back(std::move(iCall)); }
  void Note(const std::string& iCall, TWatchlistCategory& iCategory) {
    Note(iCall + " " + NameOf(iCategory));
  }
  void Fail(const std::string& iCall) {
    Note(iCall);
    if (Fails) throw Exception(u"Kein Fenster");
  }
};

/// A calendar that notes its calls while it lives.
class TRecordingCalendar : public IOutlookFactory {
 public:
  TRecordingCalendar() : FBefore(SetOutlookFactory(this)) {}
  ~TRecordingCalendar() override { SetOutlookFactory(FBefore); }
  std::unique_ptr<TOutlook> Create() override { return std::make_unique<TCalendar>(*this); }

  TLines Calls;  ///< "Add <subject>", "Delete <entry id>"
  bool Fails = false;
  std::function<void()> OnDelete;

 private:
  class TCalendar : public TOutlook {
   public:
    explicit TCalendar(TRecordingCalendar& iOwner) : FOwner(iOwner) {}
    TString AddAppointment(TStringView iSubject, TStringView, TStringView, int, TDateTime,
                           int) override {
      FOwner.Note("Add " + ToUtf8(iSubject));
      return u"neu";
    }
    bool DeleteAppointment(TStringView iEntryId) override {
      FOwner.Note("Delete " + ToUtf8(iEntryId));
      if (FOwner.OnDelete) FOwner.OnDelete();
      return true;
    }

   private:
    TRecordingCalendar& FOwner;
  };
  void Note(std::string iCall) {
    Calls.push_back(std::move(iCall));
    if (Fails) throw Exception(u"Kein Kalender");
  }

  IOutlookFactory* FBefore;
};

/// The section with its handler, and a second set of its commands, which tell a recorder what the
/// section's own would show.
class TSectionWorld : public TWatchlistWorld {
 public:
  TSectionWorld() {
    Plugin->Door = MakeIntf<TPluginIntegration>(TIntf<IIntegrationInfo>());
    CreateHandler(Plugin);
    Handler()->LstIntegration().Add(Auction);
    Handler()->LstIntegration().Add(Shop);
    Handler()->LoadFromFile();
    Form = std::make_unique<TfrmKKWatchlist>();
    Form->Initialize(Application);
    Form->InitializeWithDelay();
    Recorded = std::make_unique<TWatchlistCommands>(TWatchlistSeams{View, Form.get()});
    Auction->ViewCalls().clear();
    Shop->ViewCalls().clear();
    Log.Clear();
  }
  ~TSectionWorld() {
    Handler()->TerminateThreads();
    Recorded.reset();
    Form.reset();
    for (const auto& source : {Auction, Shop}) {
      while (!source->Requests().empty()) source->Finish(false);
    }
    FreeHandler();
    FreeBuriedCategories();
  }

  TIntf<TFakePlugin> Plugin = MakeIntf<TFakePlugin>();
  TRecordingView View;
  TRecordingCalendar Calendar;
  TIntf<TFakeApplication> Application = MakeIntf<TFakeApplication>();
  std::unique_ptr<TfrmKKWatchlist> Form;
  std::unique_ptr<TWatchlistCommands> Recorded;
};

/// The text of what the function raises; "nothing raised" otherwise.
template <class Function>
std::string Refusal(Function&& iFunction) {
  try {
    iFunction();
  } catch (const Exception& e) {
    return ToUtf8(e.Message());
  }
  return "nothing raised";
}

}  // namespace kk
