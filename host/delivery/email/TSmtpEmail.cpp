#include "host/delivery/email/TSmtpEmail.h"

#include <utility>

#include "host/base/Exception.h"
#include "host/controls/TfrmKKCommonWait.h"

namespace kk {

namespace {

using enum TSmtpOutcome;

// Puts a message that was not sent into the outbox; answers what became of it.
TString Keep(TMailOutbox& ioOutbox, const TMailMessage& iMessage, TStringView iReason, bool iEnds) {
  try {
    ioOutbox.Add(iMessage, iReason);
  } catch (const std::exception& e) {
    return Format(u"%s. Sie konnte auch nicht in den Postausgang gelegt werden: %s",
                  {iReason, MessageOf(e)});
  }
  if (iEnds || !ioOutbox.IsWorking()) {
    return Format(
        u"%s. Die E-Mail liegt im Postausgang und wird beim nächsten Start des Programms "
        u"erneut verschickt",
        {iReason});
  }
  return Format(
      u"%s. Die E-Mail liegt im Postausgang und wird in %d Sekunden erneut verschickt, "
      u"bei Misserfolg 24 Stunden lang immer wieder",
      {iReason, TMailOutbox::cFirstDelayMs / TDateTime::cMsPerSecond});
}

}  // namespace

TSmtpEmail::TSmtpEmail(TMailOutbox* iOutbox, TMailOutbox::TSend iSend)
    : FOutbox(iOutbox),
      FSend(iSend ? std::move(iSend) : [](const TMailMessage& iMessage, std::stop_token iStop) {
        return TSmtpClient().Send(iMessage, std::move(iStop));
      }) {}

bool TSmtpEmail::Send(const TEmail& iEmail, TString& oError) {
  return Deliver(iEmail, FOutbox, oError);
}

bool TSmtpEmail::SendNow(const TEmail& iEmail, TString& oError) {
  return Deliver(iEmail, nullptr, oError);
}

void TSmtpEmail::Stop() { FStop.request_stop(); }

bool TSmtpEmail::Deliver(const TEmail& iEmail, TMailOutbox* ioOutbox, TString& oError) const {
  oError.clear();
  TfrmKKCommonWait::Run(u"Die E-Mail wird verschickt...", [&](std::stop_token iCancel) {
    try {
      oError = Attempt(iEmail, ioOutbox, std::move(iCancel));
    } catch (const std::exception& e) {
      oError = MessageOf(e);
    }
  });
  return oError.empty();
}

// Why the message was not sent; empty if it was.
TString TSmtpEmail::Attempt(const TEmail& iEmail, TMailOutbox* ioOutbox,
                            std::stop_token iCancel) const {
  const TMailMessage message = TMailMessage::Build(iEmail);
  TSmtpResult result = AttemptOnce(message, std::move(iCancel));
  if (result.Outcome == soSent) return {};
  const bool ends = result.Outcome == soCancelled && FStop.stop_requested();
  if (ends) result.Reason = u"Abgebrochen, das Programm wird beendet";
  if (ioOutbox == nullptr || !(ends || result.Outcome == soForNow)) return result.Reason;
  return Keep(*ioOutbox, message, result.Reason, ends);
}

TSmtpResult TSmtpEmail::AttemptOnce(const TMailMessage& iMessage, std::stop_token iCancel) const {
  if (FStop.stop_requested()) return {soCancelled, {}};
  std::stop_source either;
  const auto stop = [&either] { either.request_stop(); };
  const std::stop_callback onEnd(FStop.get_token(), stop);
  const std::stop_callback onCancel(std::move(iCancel), stop);
  try {
    return FSend(iMessage, either.get_token());
  } catch (const std::exception& e) {
    return {soForNow, MessageOf(e)};
  }
}

}  // namespace kk
