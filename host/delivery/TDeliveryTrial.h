#pragma once

#include <functional>

#include "host/base/TDateTime.h"
#include "host/controls/TfrmKKCommonNotifier.h"

namespace kk {

class TForm;

/// One delivery of a kind, now, by the very services that reminders take, so that a user sees
/// whether what the settings say works. What comes to nothing raises Exception, in German and with
/// the reason. Main thread.
struct TDeliveryTrial {
  /// Mails the moment to the address, and waits for the server's answer.
  static void SendMail(TStringView iAddress);
  /// A text message may cost money: whether the user wants one. The owner may be absent.
  static bool AskForSms(TForm* iOwner, TStringView iNumber);
  /// Has the service send a text message at once.
  static void SendSms(TStringView iNumber);
  /// Where an appointment stands, and its id.
  using TEntered = std::function<void(TDateTime iStart, const TString& iId)>;
  /// Enters an appointment a quarter of an hour ahead, tells of it if that is wanted, and deletes
  /// it.
  static void TryCalendar(const TEntered& iEntered = {});
  /// What a trial of notifications shows.
  static TNotification Notification(TWindowPosition iPosition);
  /// What the watch list proposes for its reminders; it need not be there.
  static TString SoundFile();
};

}  // namespace kk
