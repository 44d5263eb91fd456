#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cerrno>
#include <functional>
#include <map>
#include <string>
#include <vector>

#include "host/base/Exception.h"
#include "host/base/TInstalled.h"
#include "host/common/ISecretStore.h"
#include "host/common/PlaySound.h"
#include "host/common/TIniFileSectionCommunication.h"
#include "host/common/TKKCommonEmail.h"
#include "host/common/TKKCommonSms.h"
#include "host/common/TOutlook.h"
#include "host/controls/TForm.h"
#include "host/controls/TfrmKKCommonNotifier.h"
#include "tests/support/TScriptedFormHost.h"
#include "tests/support/TTempFolder.h"
#include "tests/support/TTestClock.h"
#include "tests/support/TTestIniFile.h"
#include "tests/support/TTestMainLoop.h"

namespace kk {

/// Everything behind the doors: it records what it is asked and answers as it is told.
class TFakeWays : public ISoundPlayer,
                  public IEmailSender,
                  public ISmsSender,
                  public IOutlookFactory,
                  public INotifier,
                  public ISecretStore {
 public:
  bool Play(TStringView iFileName) override {
    Calls.push_back("play " + ToUtf8(iFileName));
    errno = EIO;
    return Failure.empty();
  }
  bool Send(const TEmail&, TString&) override {
    ADD_FAILURE() << "what is tried is of no use later";
    return false;
  }
  bool SendNow(const TEmail& iEmail, TString& oError) override {
    Calls.push_back("mail " + ToUtf8(iEmail.Recipient) + ": " + ToUtf8(iEmail.Subject));
    Mail = iEmail;
    oError = Failure;
    return Failure.empty();
  }
  bool Send(TStringView iMessage, TStringView iNumber, TDateTime, TSMSResult& oResult,
            TString& oErrorText) override {
    Calls.push_back("sms " + ToUtf8(iNumber) + ": " + ToUtf8(iMessage));
    oResult = Failure.empty() ? TSMSResult::srOk : TSMSResult::srNoCredit;
    oErrorText = Failure;
    return Failure.empty();
  }
  std::unique_ptr<TOutlook> Create() override;
  void Display(const TNotification& iNotification) override {
    Calls.push_back("show " + std::to_string(static_cast<int>(iNotification.Position)) + " " +
                    ToUtf8(iNotification.Caption));
  }
  TString Read(TStringView iSection, TStringView iKey) override {
    return Secrets[TString(iSection) + u"/" + TString(iKey)];
  }
  void Write(TStringView iSection, TStringView iKey, TStringView iValue) override {
    if (!SecretFailure.empty()) throw Exception(SecretFailure);
    Calls.push_back("keep " + ToUtf8(iKey) + " " + ToUtf8(iValue));
    Secrets[TString(iSection) + u"/" + TString(iKey)] = iValue;
  }

  std::vector<std::string> Calls;
  std::map<TString, TString> Secrets;
  TEmail Mail;
  TString Failure;
  TString SecretFailure;
  bool Deletes = true;
  TString DeleteFailure;
};

class TFakeCalendar : public TOutlook {
 public:
  explicit TFakeCalendar(TFakeWays& ioWays) : FWays(ioWays) {}
  TString AddAppointment(TStringView iSubject, TStringView, TStringView, int, TDateTime iStart,
                         int) override {
    if (!FWays.Failure.empty()) throw Exception(FWays.Failure);
    FWays.Calls.push_back("enter " + ToUtf8(iSubject) + " at " + ToUtf8(DateTimeToIso(iStart)));
    return u"id-1";
  }
  bool DeleteAppointment(TStringView iEntryId) override {
    FWays.Calls.push_back("delete " + ToUtf8(iEntryId));
    if (!FWays.DeleteFailure.empty()) throw Exception(FWays.DeleteFailure);
    return FWays.Deletes;
  }

 private:
  TFakeWays& FWays;
};

inline std::unique_ptr<TOutlook> TFakeWays::Create() {
  return std::make_unique<TFakeCalendar>(*this);
}

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
  TInstalled<ISoundPlayer> SoundInstalled{&SetSoundPlayer, &Ways};
  TInstalled<IEmailSender> MailInstalled{&SetEmailSender, &Ways};
  TInstalled<ISmsSender> SmsInstalled{&SetSmsSender, &Ways};
  TInstalled<IOutlookFactory> CalendarInstalled{&SetOutlookFactory, &Ways};
  TInstalled<INotifier> NotifierInstalled{&SetNotifier, &Ways};
  TInstalled<ISecretStore> SecretsInstalled{&SetSecretStore, &Ways};
  TForm Window{nullptr, u"Window"};
  TControl* Control = nullptr;  ///< where the last complaint was
  int Changes = 0;              ///< how often the settings file told of a change
};

}  // namespace kk
