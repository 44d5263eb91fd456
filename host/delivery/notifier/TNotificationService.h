#pragma once

#include <systemd/sd-bus.h>

#include <chrono>
#include <functional>
#include <map>
#include <memory>
#include <string>

#include "host/controls/TfrmKKCommonNotifier.h"

namespace kk {

/// The desktop's notification service (org.freedesktop.Notifications, Desktop Notifications
/// Specification 1.2) on the session bus. One notification at a time is on its way; nothing here
/// waits but Turn. All operations on one thread.
///
/// This is sd-bus itself and not a layer above it: those open the connection and its matches with
/// calls that wait for a bus that hangs, for up to a minute and a half, with no way out.
class TNotificationService {
 public:
  using TClock = std::chrono::steady_clock;
  /// The user has clicked what was shown.
  using TOnAction = std::function<void(const TString& iLink, const TGuid& iId,
                                       const TNotifyNotifierCallback& iOnClick)>;
  enum class TState { nsIdle, nsWaiting, nsShown, nsFailed };

  /// iAddress: of the bus; only sockets of this machine ("unix:") are taken.
  TNotificationService(std::string iAddress, TOnAction iOnAction);

  /// Starts to show it; it is borrowed until it is shown, has failed or is given up.
  void Begin(const TNotification& iNotification);
  TState State() const { return FState; }
  /// Why it has failed, in German.
  const TString& Reason() const { return FReason; }
  /// Nobody waits for it any more. If the service shows it later all the same, it is taken back.
  void GiveUp();

  /// Waits until something happens on the bus, the handle can be read from or the time has come,
  /// and takes what the bus brings.
  void Turn(int iWake, TClock::time_point iUntil);

 private:
  struct TShown {
    TGuid Id;
    TString Link;
    TNotifyNotifierCallback OnClick;
  };
  struct TClose {
    void operator()(sd_bus* iBus) const { sd_bus_close_unref(iBus); }
  };

  void Advance();
  int Connect();
  int AskCapabilities();
  int SendNotify();
  int AppendActions(sd_bus_message* iMessage) const;
  uint32_t ShownFor(const TGuid& iId) const;
  bool HasLink() const;
  void Fail(const TString& iReason);
  void Disconnect(int iError);
  void Forget();

  void TakeCapabilities(sd_bus_message* iReply);
  void TakeNotified(sd_bus_message* iReply);
  void TakeAction(sd_bus_message* iSignal);
  void TakeClosed(sd_bus_message* iSignal);
  void TakeNewOwner(sd_bus_message* iSignal);
  template <void (TNotificationService::*Method)(sd_bus_message*)>
  static int Take(sd_bus_message* iMessage, void* iSelf, sd_bus_error* iError);

  const std::string FAddress;
  const TOnAction FOnAction;
  std::unique_ptr<sd_bus, TClose> FBus;
  bool FIsAsked = false;  // for its capabilities
  bool FIsKnown = false;
  bool FHasMarkup = false;
  bool FHasActions = false;
  bool FHasMore = false;  // on the bus, to be taken in the next turn

  TState FState = TState::nsIdle;
  TString FReason;
  const TNotification* FCurrent = nullptr;
  uint64_t FCall = 0;  // the one for the current notification; 0 is none
  std::map<uint32_t, TShown> FShown;
};

}  // namespace kk
