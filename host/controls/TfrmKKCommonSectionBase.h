#pragma once

#include "host/contract/IApplication.h"
#include "host/controls/TfrmKKCommonBase.h"

namespace kk {

/// The base of the form of a section, which the host embeds and switches to from its main menu.
class TfrmKKCommonSectionBase : public TfrmKKCommonBase {
 public:
  using TfrmKKCommonBase::TfrmKKCommonBase;

  /// The id by which the host's main menu knows the section.
  virtual TGuid GetFormID() const = 0;
  /// The section of the settings file that is the section's own.
  virtual TString GetIniSectionName() const = 0;
  /// Keeps the application until Uninitialize.
  virtual void Initialize(const TIntf<IApplication>& iApplication) { FApplication = iApplication; }
  virtual void Uninitialize() { FApplication = nullptr; }
  /// The program goes to the tray or comes back.
  virtual void MinimizeToTray() {}
  virtual void RestoreFromTray() {}

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
