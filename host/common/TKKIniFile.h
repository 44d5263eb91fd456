#pragma once

#include <memory>
#include <utility>

#include "host/base/TNotifyEventList.h"
#include "host/base/TStringList.h"
#include "host/base/WithCleanup.h"

namespace kk {

/// The settings file: sections of key=value lines. Names of sections and keys are found without
/// regard to case. Every change is written at once and safely; comments, unknown keys and their
/// order are kept; TIniText tells the form. The file's mode stays; a new one is for this user alone
/// (0600), and its folder is made. A file that can't be read, or is beyond 16 MiB, counts as empty
/// and is put aside before the first write; where that fails, nothing is written over it. Each read
/// looks whether the file has changed on the disk. A write that fails raises EInOutError and
/// changes nothing. Main thread.
class TKKIniFile : public TObject {
 public:
  explicit TKKIniFile(TStringView iFileName);
  ~TKKIniFile() override;

  const TString& GetFileName() const;

  TString ReadString(TStringView iSection, TStringView iKey, TStringView iDefault) const;
  bool HasKey(TStringView iSection, TStringView iKey) const;
  /// Any text reads back equal, as a value and as a name. A value that is there already is not
  /// written again.
  void WriteString(TStringView iSection, TStringView iKey, TStringView iValue);
  /// No effect if there is no such key.
  void DeleteKey(TStringView iSection, TStringView iKey);
  /// The names of the keys, in file order; empty if there is no such section.
  void ReadSection(TStringView iSection, TStringList& ioKeys) const;
  /// The same as name=value lines.
  void ReadSectionValues(TStringView iSection, TStringList& ioLines) const;
  void ReadSections(TStringList& ioSections) const;
  /// WriteString for each name=value line, as one write, in the time of one walk along the file.
  void WriteSectionValues(TStringView iSection, const TStringList& iLines);
  /// DeleteKey for each of the names, likewise.
  void DeleteKeys(TStringView iSection, const TStringList& iKeys);

  /// Several changes as one write, at the last EndUpdate. Pairs may lie in one another.
  void BeginUpdate();
  void EndUpdate();
  /// Runs the function between the two. What it has changed is written also if it raises, and then
  /// a write that fails is logged.
  template <class Function>
  void InOneWrite(Function&& iFunction);

  /// Events raised when the settings have changed: by a caller of NotifyChanged (the settings
  /// dialog, the terminal's "settings set"), not by each write.
  void AddNotifyOnChange(const TNotifyEvent& iEvent);
  void RemoveNotifyOnChange(const TNotifyEvent& iEvent);
  void NotifyChanged();

 private:
  struct TImpl;
  std::unique_ptr<TImpl> FImpl;
};

template <class Function>
void TKKIniFile::InOneWrite(Function&& iFunction) {
  BeginUpdate();
  WithCleanup(u"TKKIniFile", std::forward<Function>(iFunction), [this] { EndUpdate(); });
}

/// The process-wide settings file: the one that the host installed with SetIniFile.
TKKIniFile& IniFile();
/// Borrowed; answers the one before.
TKKIniFile* SetIniFile(TKKIniFile* iFile);

}  // namespace kk
