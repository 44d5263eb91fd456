#pragma once

#include "model/TLstWatchlistCategory.h"
#include "model/TLstWatchlistIntegration.h"
#include "persistence/TLstStreamForCompression.h"

namespace kk {

class TLstRemindItem;

/// Writes the watch list file: reads all entries of the present one, replaces what changed and
/// writes a whole new archive; entries that nobody knows are kept. Descendants specialise it
/// through its virtual operations. docs/format.md tells the format. Main thread.
class TWatchlistFileSaver : public TObject {
 public:
  explicit TWatchlistFileSaver(TStringView iFileName);

  const TString& FileName() const { return FFileName; }
  /// Whether what is flagged as unchanged keeps its entries; true at first.
  bool SaveOnlyIfChanged() const { return FSaveOnlyIfChanged; }
  void SetSaveOnlyIfChanged(bool iOnly) { FSaveOnlyIfChanged = iOnly; }
  /// Whether the last SaveToFile did not go through.
  bool LastSaveFailed() const { return FLastSaveFailed; }

  /// "watchlist.da~" for "watchlist.dat": the last character replaced.
  static TString BackupFileName(TStringView iFileName);
  /// Gives the file, if there is one, the backup's name, over an older backup. Failures are
  /// swallowed.
  static void MakeBackup(TStringView iFileName);
  /// Appends all entries of the file; none if there is no file. A failure is swallowed and leaves
  /// the list as far as it got; a copy of the file is put aside then.
  static void GetAllStreamsInFile(TStringView iFileName, TLstStreamForCompression& ioLst);

 protected:
  virtual bool CanSaveCategories() const { return true; }
  /// Reminders tell whether they changed only as the live list.
  virtual bool CanSaveRemindItems(const TLstRemindItem& iLst) const;
  virtual void SaveRemindItems(const TLstRemindItem& iLst);
  virtual bool CanSaveIntegration(const TWatchlistIntegration& iIntegration) const;
  virtual bool CanSaveItems(const TWatchlistIntegration& iIntegration) const;
  virtual bool CanSaveSearchResults(const TWatchlistIntegration& iIntegration) const;
  /// Writes the entries of one source. A source without items leaves none.
  virtual void SaveIntegration(const TLstWatchlistCategory& iLstCategory,
                               const TWatchlistIntegration& iIntegration);
  virtual void SaveItems(const TWatchlistIntegration& iIntegration, const TLstWatchlistItem& iLst);
  virtual void SaveSearchResults(const TWatchlistIntegration& iIntegration,
                                 const TLstWatchlistItem& iLst);

 public:
  /// A failure is logged and told by LastSaveFailed. The caller holds the reminder list's read
  /// lock. The new file has the mode of the old one; a first one is the user's alone. If writing
  /// the new file fails, only the backup is there; nothing brings it back here.
  virtual void SaveToFile(const TLstWatchlistCategory& iLstCategory,
                          const TLstRemindItem& iLstRemindItem,
                          const TLstWatchlistIntegration& iLstIntegration);

 protected:
  /// The stream of this name, emptied; a new one if there is none. Who asks for it rewrites it.
  TMemoryStream& GetStreamByName(TStringView iName);
  /// -1 if there is none; without regard to case.
  int IndexOfStreamName(TStringView iName) const { return FStreams.IndexOfName(iName); }

 private:
  void SaveFileVersion();
  void SaveCategories(const TLstWatchlistCategory& iLst);
  void DeleteStream(TStringView iName);
  void SaveStreams(const TLstWatchlistCategory& iLstCategory, const TLstRemindItem& iLstRemindItem,
                   const TLstWatchlistIntegration& iLstIntegration);

  TLstStreamForCompression FStreams;
  TString FFileName;
  bool FSaveOnlyIfChanged = true;
  bool FLastSaveFailed = false;
};

}  // namespace kk
