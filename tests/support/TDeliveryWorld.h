#pragma once

#include "host/common/TQueueMainLoop.h"
#include "tests/support/TScriptedFormHost.h"
#include "tests/support/TTempFolder.h"
#include "tests/support/TTestIniFile.h"

namespace kk {

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
