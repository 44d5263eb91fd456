#pragma once

#include <functional>

#include "host/base/TInstalled.h"
#include "host/delivery/calendar/TCalendarFactory.h"
#include "host/delivery/email/TMailOutbox.h"
#include "host/delivery/email/TSmtpEmail.h"
#include "host/delivery/notifier/TDesktopNotifier.h"
#include "host/delivery/secrets/TSecretService.h"
#include "host/delivery/sms/TSmsGateway.h"
#include "host/delivery/sound/TSoundPlayer.h"

namespace kk {

/// All ways out of the machine, made and put into their places in the process for the object's own
/// life: the keyring, mail with its outbox, text messages, the calendar, sound and notifications.
/// A host has one; settings file, folders and main loop stand before it. Main thread.
class TDeliveries {
 public:
  /// Shows a notification where the desktop does not; main thread.
  using TFallback = std::function<void(const TNotification& iNotification)>;
  explicit TDeliveries(TFallback iFallback);
  /// Stops what was not stopped. Nobody may be in a delivery any more.
  ~TDeliveries();
  TDeliveries(const TDeliveries&) = delete;
  TDeliveries& operator=(const TDeliveries&) = delete;

  /// Mails that wait in the outbox (the folder "outbox" among the user's data) go out from now on:
  /// for a host that stays. Without it they are kept for one that does.
  void StartOutbox();
  /// Ends what is under way as a failure, within a second, and lets nothing be delivered any more;
  /// a mail that is not out goes to the outbox. Returns at once. The host calls it before it
  /// uninitialises the plug-ins. Any thread.
  void Stop();

 private:
  // In the order in which they need each other.
  TSecretService FSecrets;
  TInstalled<ISecretStore> FSecretsInstalled;
  TMailOutbox FOutbox;
  TSmtpEmail FEmail;
  TInstalled<IEmailSender> FEmailInstalled;
  TSmsGateway FSms;
  TInstalled<ISmsSender> FSmsInstalled;
  TCalendarFactory FCalendar;
  TInstalled<IOutlookFactory> FCalendarInstalled;
  TSoundPlayer FSound;
  TInstalled<ISoundPlayer> FSoundInstalled;
  TDesktopNotifier FNotifier;
  TInstalled<INotifier> FNotifierInstalled;
};

}  // namespace kk
