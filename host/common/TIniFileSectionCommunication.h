#pragma once

#include <vector>

#include "host/common/TIniFileSectionBase.h"
#include "host/contract/ISettingsKeys.h"

namespace kk {

/// The host's section "Communication": by which ways, and over which servers, the user is reached.
/// Passwords and the token come from SecretStore(). Reading is for any thread.
class TIniFileSectionCommunication : public TKKIniFileSectionBase {
 public:
  TIniFileSectionCommunication();

  /// All keys, in the order in which a user reads them.
  static std::vector<TSettingsKeyInfo> Keys();

  /// The address for reminders ("EMail"). False while there is none or it isn't confirmed
  /// ("EMailConfirmed").
  bool GetEMail(TString& oAddress) const;
  /// Another address is not confirmed.
  void SetEMail(TStringView iAddress);
  /// The address counts as confirmed from now on; the code for that is gone.
  void SetEMailConfirmed();
  /// What is known of the code that was mailed to the address; empty if none was. What the text
  /// means lies with TEmailConfirmation.
  TString GetEMailCode() const;
  void SetEMailCode(TStringView iCode);
  /// The sender of what the program mails ("EMailFrom"); the address of "EMail" while it is empty.
  TString GetEMailFrom() const;
  /// "smtp://host:port" or "smtps://host:port".
  TString GetSmtpUrl() const;
  TString GetSmtpUser() const;
  TString GetSmtpPassword() const;

  /// The number that text messages go to ("SMS").
  TString GetSMS() const;
  /// The gateway's address, http or https.
  TString GetSmsUrl() const;
  TString GetSmsToken() const;

  /// As it is stored; what a number means lies with the caller ("NotifierPosition").
  int GetNotifierPosition() const;
  void SetNotifierPosition(int iPosition);

  /// The collection's address, http or https; empty for the folder.
  TString GetCalendarUrl() const;
  /// The folder for .ics files; empty for none.
  TString GetCalendarFolder() const;
  TString GetCalendarUser() const;
  TString GetCalendarPassword() const;
};

}  // namespace kk
