#pragma once

#include "host/base/TObject.h"
#include "host/base/TString.h"

namespace kk {

/// Looks at the watch list's file before a plug-in does: a load that fails leaves an empty tree,
/// and the next save would write that over the user's data. Main thread.
class TDataFileGuard : public TObject {
 public:
  explicit TDataFileGuard(TStringView iFileName) : FFileName(iFileName) {}
  const TString& FileName() const { return FFileName; }
  /// The name with "~" for its last character.
  TString BackupName() const;

  /// True if the file is missing and its backup (the name with "~" for its last character) is
  /// there.
  bool BackupToRestore() const;
  /// True if the backup can be read, by the measure of PutAsideIfDamaged. Raises nothing.
  bool IsBackupSound() const;
  /// Copies the backup to the file's place, with its mode; the backup stays. Of a file that is
  /// there it puts a copy aside first. Raises EInOutError, also if that copy can't be made.
  void RestoreBackup() const;

  /// Looks whether the file can be read: an archive, whole, every entry sound and within the
  /// limits, with categories whose ids are ids, a version that is a number, and XML that is XML. If
  /// it can't, puts a copy aside, unless there is nothing to copy (a folder, a file that may not be
  /// read) or the same copy lies there already; of the backup, which the next save replaces, it
  /// puts a copy aside, too. Answers what happened, for the user, a line for each; empty if all is
  /// well or there is no file. Raises nothing.
  TString PutAsideIfDamaged() const;

  /// Looks whether the file could be written again, a little larger than it is: writes so much
  /// beside its place and takes it away. Raises EInOutError with the reason.
  void CheckRoom() const;

 private:
  /// Raises what is wrong with the file.
  static void Check(const TString& iFileName);

  TString FFileName;
};

}  // namespace kk
