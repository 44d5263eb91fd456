#pragma once

#include <gtest/gtest.h>

#include <set>

#include "host/common/TFileCompression.h"
#include "persistence/TWatchlistHandler.h"
#include "persistence/exchange/TWatchlistFileSaverExport.h"
#include "plugin/texts/UnitKKPluginWatchlistConsts.h"
#include "plugin/texts/UnitKKPluginWatchlistResourceStrings.h"
#include "reminders/TLstRemindItemSync.h"
#include "tests/support/TWatchlistWorld.h"

namespace kk {

/// A handler with two sources and its tree, which a test exports and imports.
class TExchangeTest : public testing::Test, public TWatchlistWorld {
 protected:
  TExchangeTest() { Begin(); }
  ~TExchangeTest() override { End(); }

  /// Another installation with the same sources and an empty list.
  void StartElsewhere() {
    End();
    Begin();
  }

  TString ExportFile() const { return Folder.File(u"Liste.wch"); }
  /// Everything that there is.
  void ExportAll(bool iCategories = true, bool iReminders = true) {
    TWatchlistFileSaverExport saver(ExportFile());
    saver.SetIncludeCategories(iCategories);
    saver.SetIncludeRemindItems(iReminders);
    for (TWatchlistIntegration* record : Handler()->LstIntegration()) {
      saver.IncludeIntegrations().Add(*record);
    }
    Save(saver);
  }
  static void Save(TWatchlistFileSaverExport& ioSaver) {
    ioSaver.SaveToFile(Tree(), Handler()->LstRemind(), Handler()->LstIntegration());
  }
  /// The names of the file's entries; sources by their names.
  std::set<std::string> Entries() const {
    std::set<std::string> names;
    for (const auto& stream : TFileCompression::ReadPacked(ExportFile())) {
      std::string name = ToUtf8(stream->GetName());
      for (const auto& source : {Auction, Shop}) {
        const std::string id = ToUtf8(GUIDToString(source->GetId()));
        const size_t at = name.find(id);
        if (at != std::string::npos) name.replace(at, id.size(), ToUtf8(source->GetName()));
      }
      names.insert(name);
    }
    return names;
  }
  void Forget() {
    for (TWatchlistIntegration* record : Handler()->LstIntegration()) record->SetUnchanged();
  }
  /// "Küche(Laden: Lampe, Sieb; Regal(...))", the categories of a level divided by blanks.
  static std::string Outline(const TLstWatchlistCategory& iLst) {
    std::string text;
    for (const TWatchlistCategory* category : iLst) {
      if (!text.empty()) text += ' ';
      text += ToUtf8(category->Name()) + OutlineOf(*category);
    }
    return text;
  }
  static std::string Outline() { return Outline(Tree()); }

 private:
  static std::string OutlineOf(const TWatchlistCategory& iCategory) {
    std::string text;
    for (const TWatchlistPlugin* group : iCategory.LstPlugin()) {
      text += (text.empty() ? "" : "; ") + ToUtf8(group->GetName()) + ":";
      for (const TWatchlistItem* item : group->LstItem()) text += ' ' + ToUtf8(item->GetName());
    }
    const std::string below = Outline(iCategory.LstCategory());
    if (!text.empty() && !below.empty()) text += "; ";
    return text.empty() && below.empty() ? "" : "(" + text + below + ")";
  }
  void Begin() {
    CreateHandler(nullptr);
    Handler()->LstIntegration().Add(Auction);
    Handler()->LstIntegration().Add(Shop);
    auto unassigned = std::make_unique<TWatchlistCategory>();
    unassigned->SetId(cEmptyGuid);
    unassigned->SetName(_resEmptyCategoryName);
    Tree().Add(std::move(unassigned));
    Log.Clear();
  }
  static void End() {
    FreeHandler();
    FreeBuriedCategories();
  }
};

}  // namespace kk
