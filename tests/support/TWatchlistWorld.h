#pragma once

#include <string>
#include <vector>

#include "persistence/TWatchlistHandler.h"
#include "reminders/TLstRemindItemSync.h"
#include "reminders/TRemindDetailsOutlook.h"
#include "reminders/TRemindDetailsSound.h"
#include "tests/support/TFakeApplication.h"
#include "tests/support/TFakeSource.h"
#include "tests/support/TLogRecorder.h"
#include "tests/support/TScriptedFormHost.h"
#include "tests/support/TTempFolder.h"
#include "tests/support/TTestClock.h"
#include "tests/support/TTestIniFile.h"
#include "tests/support/TTestMainLoop.h"

namespace kk {

using TLines = std::vector<std::string>;

/// What the tests of the section and those of the whole plug-in share: a machine of the test's with
/// two sources ("Auktion", "Laden"), and short ways to the handler's lists. Who derives makes the
/// handler, and frees it.
class TWatchlistWorld {
 public:
  TWatchlistWorld(const TWatchlistWorld&) = delete;
  TWatchlistWorld& operator=(const TWatchlistWorld&) = delete;

  static TLstWatchlistCategory& Tree() { return Handler()->LstCategory(); }
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

  /// A reminder of this very moment for the item: by the sound "ton.wav", or with an entry id by an
  /// appointment.
  static void Remind(const TWatchlistItem& iItem, TStringView iEntryId = {}) {
    if (iEntryId.empty()) return RemindBySound(iItem, u"ton.wav", Now());
    auto reminder = std::make_unique<TRemindItem>(iItem.SearchResultId());
    reminder->SetRemindTypes({rtOutlook});
    auto details = std::make_unique<TRemindDetailsOutlook>(u"Titel", u"Text", u"Link");
    details->SetEntryId(iEntryId);
    reminder->LstDetails().Add(std::move(details));
    reminder->SetRemindTime(Now());
    Handler()->LstRemind().Add(std::move(reminder));
  }
  static void RemindBySound(const TWatchlistItem& iItem, TStringView iSoundFile, TDateTime iTime) {
    auto reminder = std::make_unique<TRemindItem>(iItem.SearchResultId());
    reminder->SetRemindTypes({rtSound});
    reminder->LstDetails().Add(std::make_unique<TRemindDetailsSound>(iSoundFile));
    reminder->SetRemindTime(iTime);
    Handler()->LstRemind().Add(std::move(reminder));
  }
  static bool HasReminder(const TGuid& iId) {
    return !Handler()->LstRemind().RemindTypesBySearchResultId(iId).IsEmpty();
  }
  static std::string TimeLine(TDateTime iTime) {
    return "details RemindTime = " + ToUtf8(DateTimeToStr(iTime));
  }

  static TWatchlistIntegration& Record(const TIntf<TFakeSource>& iSource) {
    const TLstWatchlistIntegration& sources = Handler()->LstIntegration();
    return sources.GetItems(sources.IndexOfId(iSource->GetId()));
  }
  /// "R" for changed results, "I" for changed items, "-" for neither.
  static std::string Flags(const TIntf<TFakeSource>& iSource) {
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
  TIntf<TFakeSource> Auction = MakeIntf<TFakeSource>(u"Auktion");
  TIntf<TFakeSource> Shop = MakeIntf<TFakeSource>(u"Laden");

 protected:
  TWatchlistWorld() = default;
  ~TWatchlistWorld() = default;
};

}  // namespace kk
