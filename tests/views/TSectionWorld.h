#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "host/common/TKKIniFile.h"
#include "host/contract/TCommonPlugin.h"
#include "reminders/TLstRemindItemSync.h"
#include "reminders/TRemindDetailsOutlook.h"
#include "reminders/TRemindDetailsSound.h"
#include "settings/TIniFileSectionWatchlist.h"
#include "tests/support/TFakeSource.h"
#include "tests/support/TLogRecorder.h"
#include "tests/support/TScriptedFormHost.h"
#include "tests/support/TTempFolder.h"
#include "tests/support/TTestClock.h"
#include "tests/support/TTestMainLoop.h"
#include "views/TfrmKKWatchlist.h"
#include "views/WatchlistModel.h"

namespace kk {

using TLines = std::vector<std::string>;

class TFakeApplication : public TInterfaced<IApplication> {
 public:
  void SectionClosed() override { ++Closed; }
  bool ShowNotificationWindow(TForm*) override { return false; }
  int Closed = 0;
};

class TFakePlugin : public TCommonPlugin<IPlugin> {
 public:
  TGuid GetId() const override { return cPluginId; }
  TGroupIdentification GetGroup() const override { return {}; }
  TPluginAttributes GetAttributes() const override { return 0; }
  TString GetSignature() const override { return {}; }
  TString GetDescription() const override { return {}; }
  TString GetLongDescription() const override { return {}; }
};

/// A settings file that is the host's while it lives.
class TTestIniFile : public TKKIniFile {
 public:
  explicit TTestIniFile(TStringView iFileName) : TKKIniFile(iFileName), FBefore(SetIniFile(this)) {}
  ~TTestIniFile() override { SetIniFile(FBefore); }

 private:
  TKKIniFile* FBefore;
};

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
  void ShowFocusedResult() override { Note("Focused"); }
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

 private:
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

/// Notes what the commands ask of the reminders' editor.
class TRecordingReminderEditor : public TWatchlistReminderEditor {
 public:
  void AutoEnableReminder(bool iShowEditor, const TIntf<IInterfaceList>& iResults) override {
    Calls.push_back((iShowEditor ? "Editor for " : "Automatic for ") +
                    std::to_string(iResults->GetCount()));
  }
  void DeleteOutlookAppointment(const TRemindDetailsOutlook& iDetails) override {
    Calls.push_back("Appointment " + ToUtf8(iDetails.EntryId()));
    if (Fails) throw Exception(u"Kein Kalender");
  }

  TLines Calls;
  bool Fails = false;
};

/// The section with its handler, two sources ("Auktion", "Laden") and recorders all around.
class TSectionWorld {
 public:
  TSectionWorld() {
    CreateHandler(MakeIntf<TFakePlugin>());
    Handler()->LstIntegration().Add(Auction);
    Handler()->LstIntegration().Add(Shop);
    Handler()->LoadFromFile();
    Form = std::make_unique<TfrmKKWatchlist>();
    Form->SetView(&View);
    Form->SetReminderEditor(&Editor);
    Form->Initialize(MakeIntf<TFakeApplication>());
    Form->InitializeWithDelay();
    View.Calls.clear();
    Log.Clear();
  }
  ~TSectionWorld() {
    Handler()->TerminateThreads();
    Form.reset();
    for (const auto& source : {Auction, Shop}) {
      while (!source->Requests().empty()) source->Finish(false);
    }
    FreeHandler();
    FreeBuriedCategories();
  }

  static TLstWatchlistCategory& Tree() { return RootCategories(); }
  static TWatchlistCategory& Unassigned() { return *Tree().FindCategoryById(cEmptyGuid); }
  static TWatchlistCategory& Category(TStringView iName, TWatchlistCategory* iParent = nullptr) {
    auto category = std::make_unique<TWatchlistCategory>();
    category->SetName(iName);
    category->SetId(NewGuid());
    return (iParent != nullptr ? iParent->LstCategory() : Tree()).Add(std::move(category));
  }
  static TWatchlistPlugin& Group(TWatchlistCategory& iCategory, const TIntf<TFakeSource>& iSource) {
    TWatchlistPlugin* group = iCategory.LstPlugin().FindById(iSource->GetId());
    return group != nullptr
               ? *group
               : iCategory.LstPlugin().Add(std::make_unique<TWatchlistPlugin>(iSource));
  }
  static TWatchlistItem& Item(TWatchlistCategory& iCategory, const TIntf<TFakeSource>& iSource,
                              TStringView iName, TDateTime iEndTime = {}) {
    TWatchlistItem& item =
        Group(iCategory, iSource).LstItem().Add(std::make_unique<TWatchlistItem>());
    item.SetSearchResult(FakeResult(iName, iEndTime));
    item.SetParentCategoryId(iCategory.Id());
    return item;
  }
  /// An item whose source has lost its result.
  static TWatchlistItem& LostItem(TWatchlistCategory& iCategory,
                                  const TIntf<TFakeSource>& iSource) {
    TWatchlistItem& item =
        Group(iCategory, iSource).LstItem().Add(std::make_unique<TWatchlistItem>());
    item.SetSearchResultId(NewGuid());
    item.SetParentCategoryId(iCategory.Id());
    return item;
  }
  static TIntf<IInterfaceList> Results(std::initializer_list<const TWatchlistItem*> iItems) {
    const TIntf<IInterfaceList> results = NewInterfaceList();
    for (const TWatchlistItem* item : iItems) results->Add(item->SearchResult());
    return results;
  }
  /// A reminder for the item; with an entry id one with an appointment.
  static void Remind(const TWatchlistItem& iItem, TStringView iEntryId = {}) {
    auto reminder = std::make_unique<TRemindItem>(iItem.SearchResultId());
    if (iEntryId.empty()) {
      reminder->SetRemindTypes({rtSound});
      reminder->LstDetails().Add(std::make_unique<TRemindDetailsSound>(u"ton.wav"));
    } else {
      reminder->SetRemindTypes({rtOutlook});
      auto details = std::make_unique<TRemindDetailsOutlook>(u"Titel", u"Text", u"Link");
      details->SetEntryId(iEntryId);
      reminder->LstDetails().Add(std::move(details));
    }
    reminder->SetRemindTime(Now());
    Handler()->LstRemind().Add(std::move(reminder));
  }
  static bool HasReminder(const TGuid& iId) {
    return !Handler()->LstRemind().RemindTypesBySearchResultId(iId).IsEmpty();
  }
  TWatchlistIntegration& Record(const TIntf<TFakeSource>& iSource) {
    return *FindIntegration(iSource->GetId());
  }
  /// "R" for changed results, "I" for changed items, "-" for neither.
  std::string Flags(const TIntf<TFakeSource>& iSource) {
    const TWatchlistIntegration& record = Record(iSource);
    const std::string flags =
        std::string(record.ChangedSearchResults() ? "R" : "") + (record.ChangedItems() ? "I" : "");
    return flags.empty() ? "-" : flags;
  }
  /// The names of an item list.
  static TLines Names(const TLstWatchlistItem& iItems) {
    TLines names;
    for (const TWatchlistItem* item : iItems) names.push_back(ToUtf8(item->GetName()));
    return names;
  }

  TTempFolder Folder{true};
  TLogRecorder Log;
  TTestMainLoop Loop;
  TTestClock Clock;
  TScriptedFormHost User;
  TTestIniFile Ini{Folder.File(u"settings.ini")};
  TRecordingView View;
  TRecordingReminderEditor Editor;
  TIntf<TFakeSource> Auction = MakeIntf<TFakeSource>(u"Auktion");
  TIntf<TFakeSource> Shop = MakeIntf<TFakeSource>(u"Laden");
  std::unique_ptr<TfrmKKWatchlist> Form;
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
