#include "host/common/TKKCommonSms.h"

#include <atomic>

namespace kk {

namespace {

std::atomic<ISmsSender*> installedSender{nullptr};

}  // namespace

ISmsSender* SetSmsSender(ISmsSender* iSender) { return installedSender.exchange(iSender); }

bool TKKCommonSms::Send(TStringView iMessage, TStringView iNumber, TSMSResult& oResult,
                        TString& oErrorText, TDateTime iWhen) {
  oErrorText.clear();
  ISmsSender* const sender = installedSender.load();
  if (sender == nullptr) {
    oResult = TSMSResult::srNotSetUp;
    oErrorText = u"Es ist kein Versand von SMS eingerichtet";
    return false;
  }
  return sender->Send(iMessage, iNumber, iWhen, oResult, oErrorText);
}

}  // namespace kk
