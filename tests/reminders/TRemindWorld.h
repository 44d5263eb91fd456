#pragma once

#include <cerrno>
#include <functional>
#include <mutex>
#include <string>
#include <vector>

#include "host/base/TLocale.h"
#include "host/common/PlaySound.h"
#include "host/common/TKKCommonEmail.h"
#include "host/contract/IApplication.h"
#include "host/controls/TfrmKKCommonNotifier.h"
#include "reminders/TRemindDetailsEMail.h"
#include "reminders/TRemindDetailsOutlook.h"
#include "reminders/TRemindDetailsSMS.h"
#include "reminders/TRemindDetailsSound.h"
#include "reminders/TRemindDetailsWindow.h"
#include "reminders/TRemindItem.h"
#include "reminders/TfrmNotification.h"
#include "tests/support/TLogRecorder.h"
#include "tests/support/TTempFolder.h"
#include "tests/support/TTestClock.h"
#include "tests/support/TTestIniFile.h"
#include "tests/support/TTestMainLoop.h"

namespace kk {

using TLines = std::vector<std::string>;

/// What reminders have done to the world, in order, from any thread: "sound a.wav", "mail ...".
class TWitness {
 public:
  void Note(std::string iNote) {
    const std::lock_guard lock(FMutex);
    FNotes.push_back(std::move(iNote));
  }
  TLines Notes() const {
    const std::lock_guard lock(FMutex);
    return FNotes;
  }

 private:
  mutable std::mutex FMutex;
  TLines FNotes;
};

/// Runs what the test wants within a step of a delivery; null for nothing.
using TDuring = std::function<void()>;
inline void Act(TDuring iDuring) {
  if (iDuring) iDuring();
}

class TFakeSound : public ISoundPlayer {
 public:
  explicit TFakeSound(TWitness& ioWitness) : FWitness(ioWitness), FBefore(SetSoundPlayer(this)) {}
  ~TFakeSound() override { SetSoundPlayer(FBefore); }

  bool Play(TStringView iFileName) override {
    const std::string path = ToUtf8(iFileName);
    FWitness.Note("sound " + path.substr(path.rfind('/') + 1));
    Act(During);
    errno = Error;
    return Error == 0;
  }

  int Error = 0;
  TDuring During;

 private:
  TWitness& FWitness;
  ISoundPlayer* FBefore;
};

class TFakeMail : public IEmailSender {
 public:
  explicit TFakeMail(TWitness& ioWitness) : FWitness(ioWitness), FBefore(SetEmailSender(this)) {}
  ~TFakeMail() override { SetEmailSender(FBefore); }

  bool Send(const TEmail& iEmail, TString& oError) override {
    FWitness.Note("mail " + ToUtf8(iEmail.Recipient));
    Last = iEmail;
    Act(During);
    oError = Error;
    return Error.empty();
  }

  TEmail Last;
  TString Error;
  TDuring During;

 private:
  TWitness& FWitness;
  IEmailSender* FBefore;
};

class TFakeNotifier : public INotifier {
 public:
  explicit TFakeNotifier(TWitness& ioWitness) : FWitness(ioWitness), FBefore(SetNotifier(this)) {}
  ~TFakeNotifier() override { SetNotifier(FBefore); }

  void Display(const TNotification& iNotification) override {
    FWitness.Note("notifier " + ToUtf8(iNotification.Caption));
    Last = iNotification;
    Act(During);
  }

  TNotification Last;
  TDuring During;

 private:
  TWitness& FWitness;
  INotifier* FBefore;
};

/// A host that takes pop-up windows over, or not.
class TPopUpHost : public TInterfaced<IApplication> {
 public:
  explicit TPopUpHost(TWitness& ioWitness) : FWitness(ioWitness) {}
  ~TPopUpHost() override {
    FWitness.Note(!HasMainLoop() || MainLoop().IsMainThread() ? "host freed"
                                                              : "host freed elsewhere");
  }

  void SectionClosed() override {}
  bool ShowNotificationWindow(TForm* iForm) override {
    auto& form = dynamic_cast<TfrmNotification&>(*iForm);
    FWitness.Note("window " + ToUtf8(form.lblCaption.Caption()) + "|" +
                  ToUtf8(form.lblMessage.Caption()) + "|" + ToUtf8(form.Link()));
    Act(During);
    if (Takes) Form.reset(iForm);
    return Takes;
  }

  bool Takes = true;
  std::unique_ptr<TForm> Form;
  TDuring During;

 private:
  TWitness& FWitness;
};

/// Details of a class that nobody knows.
class TRemindDetailsPigeon final : public TRemindDetails<TRemindDetailsPigeon> {
 public:
  static constexpr const char16_t* cClassName = u"TRemindDetailsPigeon";
  std::tuple<> Strings() const { return {}; }
};

/// A machine with all ways out, each a fake.
class TRemindWorld {
 public:
  TRemindWorld() {
    SetLocaleName("de_DE");
    Set(u"EMail", u"ich@example.org");
    Set(u"EMailConfirmed", u"1");
    Folder.Write(u"a.wav", "RIFF");
  }
  ~TRemindWorld() { SetLocaleName({}); }

  void Set(TStringView iKey, TStringView iValue) {
    Ini.WriteString(u"Communication", iKey, iValue);
  }
  TString SoundFile() const { return Folder.File(u"a.wav"); }

  std::unique_ptr<TRemindDetailsBase> Sound() const {
    return std::make_unique<TRemindDetailsSound>(SoundFile());
  }
  static std::unique_ptr<TRemindDetailsBase> MissingSound() {
    return std::make_unique<TRemindDetailsSound>(u"/nowhere/b.wav");
  }
  static std::unique_ptr<TRemindDetailsBase> Window(TStringView iCaption = u"Uhr") {
    return std::make_unique<TRemindDetailsWindow>(iCaption, u"endet bald", u"https://shop/1");
  }
  static std::unique_ptr<TRemindDetailsBase> EMail() {
    return std::make_unique<TRemindDetailsEMail>(u"Uhr", u"endet bald", u"https://shop/1");
  }

  /// A reminder with these details, due now.
  template <class... Details>
  std::unique_ptr<TRemindItem> Reminder(std::unique_ptr<Details>... iDetails) const {
    auto item = std::make_unique<TRemindItem>(NewGuid());
    item->SetRemindTime(Clock.Now());
    (item->LstDetails().Add(std::move(iDetails)), ...);
    return item;
  }

  TTempFolder Folder{true};
  TTestIniFile Ini{Folder.File(u"settings.ini")};
  TLogRecorder Log;
  TTestClock Clock;
  TWitness Witness;
  TFakeSound SoundOutput{Witness};
  TFakeMail Mail{Witness};
  TFakeNotifier Notifier{Witness};
  TIntf<TPopUpHost> Host = MakeIntf<TPopUpHost>(Witness);
};

}  // namespace kk
