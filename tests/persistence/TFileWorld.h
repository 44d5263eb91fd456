#pragma once

#include <map>
#include <string>
#include <utility>
#include <vector>

#include "host/common/TFileCompression.h"
#include "model/TLstWatchlistCategory.h"
#include "model/TLstWatchlistIntegration.h"
#include "plugin/texts/UnitKKPluginWatchlistConsts.h"
#include "reminders/TLstRemindItem.h"
#include "tests/support/TFakeSource.h"
#include "tests/support/TLogRecorder.h"
#include "tests/support/TTempFolder.h"
#include "tests/support/TTestClock.h"
#include "tests/support/TTestMainLoop.h"
#include "tests/support/TTestModelRoot.h"

namespace kk {

/// The entries of an archive, in order.
using TEntries = std::vector<std::pair<std::string, std::string>>;

/// Writes an archive with these entries.
void WriteArchive(const TString& iFileName, const TEntries& iEntries);
/// Unpacks the whole archive.
std::map<std::string, std::string> ReadArchive(const TString& iFileName);
/// The entries of an archive as they lie in it, still packed.
std::map<std::string, std::string> ReadPackedArchive(const TString& iFileName);

TWatchlistCategory& AddCategory(TLstWatchlistCategory& ioLst, TStringView iName,
                                const TGuid& iId = NewGuid());
/// An item with a fake result of this name, in the category's group of the source.
TWatchlistItem& AddItem(TWatchlistCategory& ioCategory, const TIntf<TFakeSource>& iSource,
                        TStringView iName);

/// The tree as text, a line for each thing, indented by depth: "Name", "  [Source]", "    Result".
/// An item without a result stands under "?".
std::string Outline(const TLstWatchlistCategory& iTree);

/// A reminder by sound for this id.
std::unique_ptr<TRemindItem> SoundReminder(const TGuid& iId, TDateTime iTime);

/// A place for a watch list file, and what its loader and saver need around them.
class TFileWorld {
 public:
  TTempFolder Folder{true};
  TLogRecorder Log;
  TTestMainLoop Loop;
  TTestClock Clock;
  TTestModelRoot Root;
  TLstWatchlistIntegration Integrations{true};
  TLstRemindItem Reminders{true};

  TString FileName() const { return Folder.File(cWatchlistFileName); }
  TLstWatchlistCategory& Tree() { return Root.RootCategories(); }
  /// A registered source.
  TIntf<TFakeSource> AddSource(TStringView iName, const TGuid& iId = NewGuid());
  TWatchlistIntegration& Record(int iIndex) { return Integrations.GetItems(iIndex); }
  /// Loads the file into the tree.
  bool Load();
  /// Saves the tree, as if everything had changed.
  void SaveAll();
  /// Saves the tree as it is flagged. Answers whether that went through.
  bool SaveChanges();
  void ForgetTree();
};

}  // namespace kk
