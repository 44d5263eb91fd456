#pragma once

#include "host/common/TKKIniFile.h"

namespace kk {

/// Typed access to one section. No cache: every read reads the file, every write writes it.
///
/// A write whose value equals its default takes the key out, so that the value reads back as the
/// default. A stored integer outside of its bounds reads as the nearer bound; text that is none
/// reads as the default. Booleans are "1" and "0"; "true" and "false" are read, too. Any thread.
class TIniFileSectionBase : public TObject {
 public:
  TIniFileSectionBase(TKKIniFile& ioFile, TStringView iSection);

 protected:
  TString ReadString(TStringView iKey, TStringView iDefault) const;
  void WriteString(TStringView iKey, TStringView iValue, TStringView iDefault);
  bool ReadBoolean(TStringView iKey, bool iDefault) const;
  void WriteBoolean(TStringView iKey, bool iValue, bool iDefault);
  int ReadInteger(TStringView iKey, int iDefault, int iMin, int iMax) const;
  void WriteInteger(TStringView iKey, int iValue, int iDefault);

  TKKIniFile& File() const { return FFile; }
  const TString& Section() const { return FSection; }

 private:
  TKKIniFile& FFile;
  TString FSection;
};

/// Adds the pair that keeps a value from standing in clear text. It hides a value from a glance, it
/// does not protect it.
class TKKIniFileSectionBase : public TIniFileSectionBase {
 public:
  using TIniFileSectionBase::TIniFileSectionBase;
  static TString Scramble(TStringView iValue);
  /// Text that Scramble did not make gives an empty text.
  static TString Unscramble(TStringView iValue);
};

/// The base of the sections of plug-ins with a window.
class TKKIniFileSectionPluginWithWindow : public TKKIniFileSectionBase {
 public:
  using TKKIniFileSectionBase::TKKIniFileSectionBase;
  /// Width and height under "WindowWidth" and "WindowHeight"; nothing for sizes that are not known
  /// (0), as on a terminal.
  void SaveWindowSize(int iWidth, int iHeight);
};

/// The standing sections of the host.
class TIniFileSectionCommon : public TKKIniFileSectionBase {
 public:
  TIniFileSectionCommon();
  /// The folder of the last import or export; empty at first.
  TString PathToLastImExport() const;
  void SetPathToLastImExport(TStringView iPath);
};

class TIniFileSectionGeneral : public TKKIniFileSectionBase {
 public:
  TIniFileSectionGeneral();
  /// Whether the section comes up a moment after the host, true at first ("DelayedStart").
  bool GetDelayedStart() const;
  void SetDelayedStart(bool iDelayed);
  /// Whether the program goes to the tray when its window is closed instead of ending, false at
  /// first ("CloseToTray").
  bool GetCloseToTray() const;
  void SetCloseToTray(bool iToTray);
  /// Whether it starts in the tray, without its window, false at first ("StartInTray").
  bool GetStartInTray() const;
  void SetStartInTray(bool iInTray);
};

}  // namespace kk
