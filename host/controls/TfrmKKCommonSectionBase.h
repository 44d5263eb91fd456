#pragma once

#include "host/contract/IApplication.h"
#include "host/controls/TfrmKKCommonBase.h"

namespace kk {

/// The base of the form of a section, which the host embeds and switches to from its main menu. It
/// tells a host with a screen (ISectionHost) where it is from Initialize to Uninitialize.
class TfrmKKCommonSectionBase : public TfrmKKCommonBase {
 public:
  using TfrmKKCommonBase::TfrmKKCommonBase;
  ~TfrmKKCommonSectionBase() override;

  /// The id by which the host's main menu knows the section.
  virtual TGuid GetFormID() const = 0;
  /// The section of the settings file that is the section's own.
  virtual TString GetIniSectionName() const = 0;
  /// Keeps the application until Uninitialize.
  virtual void Initialize(const TIntf<IApplication>& iApplication);
  virtual void Uninitialize();
  /// The program goes to the tray or comes back.
  virtual void MinimizeToTray() {}
  virtual void RestoreFromTray() {}

  /// The host switches to the section, also if it is visible already.
  void Show() override;
  /// FirstShow has run.
  bool WasShown() const { return FWasShown; }

 protected:
  /// Runs once, when the section is shown for the first time.
  virtual void FirstShow() {}
  const TIntf<IApplication>& Application() const { return FApplication; }

 private:
  TIntf<IApplication> FApplication;
  bool FWasShown = false;
};

}  // namespace kk
