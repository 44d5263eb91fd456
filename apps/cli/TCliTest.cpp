#include "apps/cli/TCliTest.h"

#include <cerrno>
#include <chrono>

#include "apps/cli/TCliLog.h"
#include "apps/cli/TCliPopUps.h"
#include "apps/cli/TerminalText.h"
#include "host/base/Exception.h"
#include "host/base/TMainLoop.h"
#include "host/common/PlaySound.h"
#include "host/common/TFileHelper.h"
#include "host/common/TFileWriter.h"
#include "host/common/TIniFileSectionCommunication.h"
#include "host/controls/TfrmKKCommonNotifier.h"
#include "host/controls/TfrmKKCommonWait.h"
#include "host/delivery/TDeliveries.h"
#include "host/delivery/TDeliveryTrial.h"

namespace kk {
namespace {

constexpr int cTurnMs = 50;
constexpr auto cLongestWait = std::chrono::seconds(15);

TWindowPosition PositionOf(int iSetting) {
  return iSetting == 0 || iSetting == 1 ? static_cast<TWindowPosition>(iSetting)
                                        : TWindowPosition::wpPopUp;
}

[[noreturn]] void NotSet(TStringView iWhat, TStringView iKey) {
  throw Exception(
      Format(u"Es ist noch keine %s eingestellt. Das geht mit \"kaufkobolde-cli "
             u"settings set Communication %s ...\".",
             {iWhat, iKey}));
}

}  // namespace

bool TCliTest::Knows(const TCliCommandInfo& iCommand) {
  return StartsWith(iCommand.Name, u"test ");
}

bool TCliTest::Run(const TCliArguments& iCall) {
  const TStringView name = iCall.Command->Name;
  if (name == u"test sms") return Sms();
  if (name == u"test sound") {
    Sound(iCall.Sound);
  } else if (name == u"test email") {
    Email();
  } else if (name == u"test calendar") {
    Calendar();
  } else {
    Notifier();
  }
  return true;
}

void TCliTest::Sound(const std::optional<TString>& iFile) {
  const TString file = iFile.value_or(TDeliveryTrial::SoundFile());
  if (!FileExists(file)) {
    throw Exception(Format(u"Die Tondatei gibt es nicht: %s", {ForTerminal(file)}));
  }
  bool played = false;
  TString reason;
  TfrmKKCommonWait::Run(u"Der Ton wird abgespielt", [&](const std::stop_token& iStop) {
    const std::stop_callback cancel(iStop, [this] { StopAll(); });
    TCliLog::TKeeping errors;
    played = PlaySound(file);
    const TString why = ErrorText(errno);
    reason = errors.Take();  // it says more
    if (!played && reason.empty()) {
      reason = Format(u"Der Ton %s wurde nicht abgespielt: %s", {ForTerminal(file), why});
    }
  });
  if (!played) throw Exception(reason);
  Print(Format(u"Der Ton ist abgespielt: %s", {ForTerminal(file)}));
}

void TCliTest::Email() {
  TString address;
  const bool confirmed = TIniFileSectionCommunication().GetEMail(address);
  if (Trim(address).empty()) NotSet(u"E-Mail-Adresse", u"EMail");
  TDeliveryTrial::SendMail(address);
  Print(Format(u"Der Postausgang hat die E-Mail an %s angenommen.", {ForTerminal(address)}));
  if (confirmed) return;
  Print(
      u"Die Adresse ist noch nicht bestätigt; vorher gehen keine Erinnerungen dorthin. "
      u"\"kaufkobolde-cli settings confirm-email\" schickt einen Code.");
}

bool TCliTest::Sms() {
  const TString number = TIniFileSectionCommunication().GetSMS();
  if (Trim(number).empty()) NotSet(u"Rufnummer", u"SMS");
  if (!TDeliveryTrial::AskForSms(nullptr, ForTerminal(number))) {
    FContext.Console.Complain(u"Es wurde keine SMS verschickt. Mit --yes wird nicht gefragt.");
    return false;
  }
  TDeliveryTrial::SendSms(number);
  Print(Format(u"Der SMS-Dienst hat die SMS an %s angenommen.", {ForTerminal(number)}));
  return true;
}

void TCliTest::Calendar() {
  TDeliveryTrial::TryCalendar([this](TDateTime iStart, const TString& iId) {
    Print(Format(u"Eingetragen für %s: %s", {DateTimeToStr(iStart), ForTerminal(iId)}));
  });
  Print(u"Und wieder gelöscht. Der Kalender funktioniert.");
}

void TCliTest::Notifier() {
  const int position = TIniFileSectionCommunication().GetNotifierPosition();
  TNotification notification = TDeliveryTrial::Notification(PositionOf(position));
  if (notification.Position == TWindowPosition::wpPopUp) {
    TCliPopUps(FContext.Console).Show(notification);
    return Print(u"Das Meldungsfenster ist im Terminal gezeigt (NotifierPosition 2).");
  }
  const auto shown = std::make_shared<std::optional<bool>>();
  notification.OnShown = [shown](bool iByDesktop) { *shown = iByDesktop; };
  kk::Notifier().Display(notification);
  WaitFor([&] { return shown->has_value(); });
  Print(**shown ? u"Der Desktop hat die Benachrichtigung gezeigt."
                : u"Der Desktop zeigt keine Benachrichtigungen; sie steht im Terminal.");
}

// The notifier has limits of its own; this one is for a notifier that is broken.
void TCliTest::WaitFor(const std::function<bool()>& iDone) {
  const auto last = std::chrono::steady_clock::now() + cLongestWait;
  while (!iDone()) {
    if (FContext.Console.TakeInterrupt()) throw Exception(u"Abgebrochen.");
    if (std::chrono::steady_clock::now() > last) {
      throw Exception(u"Niemand sagt, ob die Benachrichtigung gezeigt wurde.");
    }
    MainLoop().ProcessMessages();
    if (!iDone()) MainLoop().WaitForMessage(cTurnMs);
  }
}

void TCliTest::StopAll() {
  // A host that stays needs them further on.
  const bool isLastUse = !FContext.Plugins.DeliversReminders();
  if (FContext.Deliveries != nullptr && isLastUse) FContext.Deliveries->Stop();
}

}  // namespace kk
