#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <string>

#include "host/base/Exception.h"
#include "host/controls/TForm.h"
#include "tests/support/TFakeWays.h"
#include "tests/support/TScriptedFormHost.h"
#include "tests/support/TTempFolder.h"
#include "tests/support/TTestClock.h"
#include "tests/support/TTestIniFile.h"
#include "tests/support/TTestMainLoop.h"

namespace kk {

/// Settings, services and a user in front of the windows. A page under test is put into Window.
class TOptionsTest : public testing::Test {
 public:
  void DoSettingsChanged(TObject*) { ++Changes; }

 protected:
  TOptionsTest() {
    File.AddNotifyOnChange(TNotifyEvent::Of<&TOptionsTest::DoSettingsChanged>(this));
  }
  ~TOptionsTest() override {
    File.RemoveNotifyOnChange(TNotifyEvent::Of<&TOptionsTest::DoSettingsChanged>(this));
  }

  void Set(TStringView iKey, TStringView iValue) {
    File.WriteString(u"Communication", iKey, iValue);
  }
  std::string Stored(TStringView iKey, TStringView iSection = u"Communication") const {
    return ToUtf8(File.ReadString(iSection, iKey, u"-"));
  }
  /// Loads the page and shows it.
  template <class TFrame>
  void Show(TFrame& ioFrame) {
    ioFrame.PutInto(&Window);
    ioFrame.LoadSettings();
    Window.Show();
  }
  /// What the call raises; empty for nothing.
  static std::string Failure(const std::function<void()>& iCall) {
    try {
      iCall();
    } catch (const Exception& e) {
      return ToUtf8(e.Message());
    }
    return {};
  }
  /// What validation says of the page; empty if all is well.
  template <class TFrame>
  std::string Complaint(TFrame& ioFrame) {
    TString message = u"alt";
    Control = &Window;
    const bool ok = ioFrame.ValidateSettings(message, Control);
    EXPECT_EQ(ok, message.empty());
    return ToUtf8(message);
  }

  TTempFolder Folder{true};
  TTestIniFile File{Folder.File(u"settings.ini")};
  TTestMainLoop Loop;
  TTestClock Clock;
  TScriptedFormHost Forms;
  TFakeWays Ways;
  TForm Window{nullptr, u"Window"};
  TControl* Control = nullptr;  ///< where the last complaint was
  int Changes = 0;              ///< how often the settings file told of a change
};

}  // namespace kk
