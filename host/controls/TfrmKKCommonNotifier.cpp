#include "host/controls/TfrmKKCommonNotifier.h"

#include <utility>

#include "host/base/Exception.h"

namespace kk {

namespace {

INotifier* installedNotifier = nullptr;

}  // namespace

INotifier* SetNotifier(INotifier* iNotifier) { return std::exchange(installedNotifier, iNotifier); }

INotifier& Notifier() {
  if (installedNotifier == nullptr) throw Exception(u"Es sind keine Meldungen eingerichtet");
  return *installedNotifier;
}

void TfrmKKCommonNotifier::Display(TWindowPosition iPosition, const TGuid& iId, TStringView iS1,
                                   TStringView iS2, TStringView iS3, TStringView iS4,
                                   TStringView iS5, TNotifyNotifierCallback iCallback) {
  Notifier().Display({iPosition, iId, TString(iS1), TString(iS2), TString(iS3), TString(iS4),
                      TString(iS5), iCallback});
}

}  // namespace kk
