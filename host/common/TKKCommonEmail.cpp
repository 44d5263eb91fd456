#include "host/common/TKKCommonEmail.h"

#include <atomic>

namespace kk {

namespace {

std::atomic<IEmailSender*> installedSender{nullptr};

}  // namespace

IEmailSender* SetEmailSender(IEmailSender* iSender) { return installedSender.exchange(iSender); }

bool TKKCommonEmail::Send(TStringView iSubject, TStringView iBody, TStringView iRecipient,
                          TStringView iSenderAddress, TStringView iSenderName, TString& oError) {
  oError.clear();
  IEmailSender* const sender = installedSender.load();
  if (sender == nullptr) {
    oError = u"Es ist kein Versand von E-Mails eingerichtet";
    return false;
  }
  return sender->Send({TString(iSubject), TString(iBody), TString(iRecipient),
                       TString(iSenderAddress), TString(iSenderName)},
                      oError);
}

}  // namespace kk
