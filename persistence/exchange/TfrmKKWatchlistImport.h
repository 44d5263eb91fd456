#pragma once

#include "host/base/TStream.h"
#include "persistence/exchange/TfrmKKWatchlistExchange.h"
#include "reminders/TLstRemindItem.h"

namespace kk {

/// Takes a chosen part of an exported file into the watch list; the same without being seen, for
/// the command line and for data that other programs hand over. The caller saves and shows the tree
/// anew where the answer is true. Main thread.
class TfrmKKWatchlistImport final : public TfrmKKWatchlistExchange {
 public:
  /// Modal: asks for the file first. True if the import went through. Of a file that is given, the
  /// user also hears that it can't be read. The main loop turns while a large file is read.
  static bool Display(TForm* iOwner, TStringView iFileName = {});
  /// Takes all that the file has; false if it can't be read or the import failed. Looks like a
  /// mistake and is required: a file without categories brings up the one question for the category
  /// all the same. With the name of a category, old or new, all items go there and nothing is
  /// asked.
  static bool ExecuteInBackground(TStringView iFileName, TStringView iCategoryName = {});
  /// The same with the document of the program on the telephone, which has no reminders.
  static bool ExecuteInBackgroundFromKKMobileStream(TMemoryStream& iStream);

 private:
  explicit TfrmKKWatchlistImport(TForm* iOwner);
  /// With an empty name asks for the file.
  bool LoadData(TStringView iFileName);
  /// A large file is read behind a window by which the user can give it up.
  bool ReadFile(TStringView iFileName);
  bool LoadDataFromKKMobileStream(TMemoryStream& iStream);
  bool TakeOver();
  void ShowData();
  void btnOKClick(TObject* Sender) override;

  std::unique_ptr<TLstWatchlistCategory> FLstCategory;
  std::unique_ptr<TLstRemindItem> FLstRemindItem;
  bool FIncludedCategories = false;
  bool FInBackground = false;
  bool FGivenUp = false;  // while the file was read
  TString FCategoryName;  // where all items go without a question
};

}  // namespace kk
