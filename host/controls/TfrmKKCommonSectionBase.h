#pragma once

#include "host/contract/IApplication.h"
#include "host/controls/TfrmKKCommonBase.h"

namespace kk {

class IMouseWheel;

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

  /// The host tells the size in pixels that the section has on the screen; 0 until it has.
  void Resize(int iWidth, int iHeight);
  int ShownWidth() const { return FShownWidth; }
  int ShownHeight() const { return FShownHeight; }
  /// The user has turned the wheel over the section.
  virtual void MouseWheelHandler(IMouseWheel& ioWheel);

 protected:
  /// Runs once, when the section is shown for the first time.
  virtual void FirstShow() {}
  const TIntf<IApplication>& Application() const { return FApplication; }

 private:
  TIntf<IApplication> FApplication;
  bool FWasShown = false;
  int FShownWidth = 0;
  int FShownHeight = 0;
};

}  // namespace kk
