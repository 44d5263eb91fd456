#pragma once

#include <gtest/gtest.h>

#include <cerrno>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "host/base/Exception.h"
#include "host/base/TDateTime.h"
#include "host/base/TInstalled.h"
#include "host/base/TMainLoop.h"
#include "host/common/ISecretStore.h"
#include "host/common/PlaySound.h"
#include "host/common/TKKCommonEmail.h"
#include "host/common/TKKCommonSms.h"
#include "host/common/TOutlook.h"
#include "host/controls/TfrmKKCommonNotifier.h"

namespace kk {

/// Everything behind the doors of the ways out, installed while it lives: it records what it is
/// asked and answers as it is told.
class TFakeWays : public ISoundPlayer,
                  public IEmailSender,
                  public ISmsSender,
                  public IOutlookFactory,
                  public INotifier,
                  public ISecretStore {
 public:
  bool Play(TStringView iFileName) override {
    Calls.push_back("play " + ToUtf8(iFileName));
    errno = PlayError;
    return PlayError == 0;
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
  bool Send(TStringView iMessage, TStringView iNumber, TDateTime iWhen, TSMSResult& oResult,
            TString& oErrorText) override {
    Calls.push_back("sms " + ToUtf8(iNumber) + ": " + ToUtf8(iMessage) + " at " +
                    ToUtf8(DateTimeToIso(iWhen)));
    oResult = Failure.empty() ? TSMSResult::srOk : TSMSResult::srNoCredit;
    oErrorText = Failure;
    return Failure.empty();
  }
  std::unique_ptr<TOutlook> Create() override { return std::make_unique<TCalendar>(*this); }
  void Display(const TNotification& iNotification) override {
    Calls.push_back("show " + std::to_string(static_cast<int>(iNotification.Position)) + " " +
                    ToUtf8(iNotification.Caption));
    Shown = iNotification;
    if (!Failure.empty()) throw Exception(Failure);
    if (ByDesktop) MainLoop().Post([this, iNotification] { iNotification.OnShown(*ByDesktop); });
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
  TEmail Mail;          ///< the last one
  TNotification Shown;  ///< the last one
  TString Failure;      ///< of every way but sound and secrets
  int PlayError = 0;    ///< an errno
  TString SecretFailure;
  std::optional<bool> ByDesktop;  ///< who has shown a notification; nobody tells if there is none
  bool Deletes = true;            ///< whether an appointment is there to be deleted
  TString DeleteFailure;

 private:
  class TCalendar : public TOutlook {
   public:
    explicit TCalendar(TFakeWays& ioWays) : FWays(ioWays) {}
    TString AddAppointment(TStringView iSubject, TStringView, TStringView, int iFlag,
                           TDateTime iStart, int iCount) override {
      if (!FWays.Failure.empty()) throw Exception(FWays.Failure);
      FWays.Calls.push_back("enter " + ToUtf8(iSubject) + " at " + ToUtf8(DateTimeToIso(iStart)) +
                            " " + std::to_string(iFlag) + std::to_string(iCount));
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

  TInstalled<ISoundPlayer> FSound{&SetSoundPlayer, this};
  TInstalled<IEmailSender> FMail{&SetEmailSender, this};
  TInstalled<ISmsSender> FSms{&SetSmsSender, this};
  TInstalled<IOutlookFactory> FCalendar{&SetOutlookFactory, this};
  TInstalled<INotifier> FNotifier{&SetNotifier, this};
  TInstalled<ISecretStore> FSecrets{&SetSecretStore, this};
};

}  // namespace kk
