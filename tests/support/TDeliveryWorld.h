#pragma once

#include <gtest/gtest.h>

#include "host/common/TQueueMainLoop.h"
#include "tests/support/TScriptedFormHost.h"
#include "tests/support/TTempFolder.h"
#include "tests/support/TTestIniFile.h"

namespace kk {

/// While it lives, no window comes, not even one that waits for work.
class TNoWindows : public IFormHost {
 public:
  TNoWindows() : FBefore(SetFormHost(this)) {}
  ~TNoWindows() override { SetFormHost(FBefore); }
  void ShowModal(TForm& ioForm) override {
    ADD_FAILURE() << "nobody expected the window " << ToUtf8(ioForm.Caption());
    FBefore->ShowModal(ioForm);
  }
  bool ShowOpenDialog(TOpenDialog& ioDialog) override { return FBefore->ShowOpenDialog(ioDialog); }

 private:
  IFormHost* FBefore;
};

/// What a real delivery finds around it in a test: a main loop that takes what other threads post,
/// the settings in a folder of their own, and a user in front of the windows.
class TDeliveryWorld {
 public:
  TDeliveryWorld() : FLoopBefore(SetMainLoop(&FLoop)) {}
  ~TDeliveryWorld() { SetMainLoop(FLoopBefore); }

  /// A key of the section "Communication".
  void Set(TStringView iKey, TStringView iValue) {
    FSettings.WriteString(u"Communication", iKey, iValue);
  }
  void Set(TStringView iKey, const std::string& iValue) { Set(iKey, FromUtf8(iValue)); }

  const TTempFolder& Folder() const { return FFolder; }
  TQueueMainLoop& Loop() { return FLoop; }
  TScriptedFormHost& Forms() { return FForms; }

 private:
  TTempFolder FFolder{true};
  TTestIniFile FSettings{FFolder.File(u"settings.ini")};
  TQueueMainLoop FLoop;
  TMainLoop* FLoopBefore;
  TScriptedFormHost FForms;
};

}  // namespace kk
