#include "host/common/TKKCommonEmail.h"

#include <atomic>

namespace kk {

namespace {

std::atomic<IEmailSender*> installedSender{nullptr};

// Null with the reason if there is none.
IEmailSender* InstalledSender(TString& oError) {
  IEmailSender* const sender = installedSender.load();
  oError = sender == nullptr ? u"Es ist kein Versand von E-Mails eingerichtet" : u"";
  return sender;
}

}  // namespace

IEmailSender* SetEmailSender(IEmailSender* iSender) { return installedSender.exchange(iSender); }

bool TKKCommonEmail::Send(TStringView iSubject, TStringView iBody, TStringView iRecipient,
                          TStringView iSenderAddress, TStringView iSenderName, TString& oError) {
  IEmailSender* const sender = InstalledSender(oError);
  return sender != nullptr && sender->Send({TString(iSubject), TString(iBody), TString(iRecipient),
                                            TString(iSenderAddress), TString(iSenderName)},
                                           oError);
}

bool TKKCommonEmail::SendNow(const TEmail& iEmail, TString& oError) {
  IEmailSender* const sender = InstalledSender(oError);
  return sender != nullptr && sender->SendNow(iEmail, oError);
}

}  // namespace kk
