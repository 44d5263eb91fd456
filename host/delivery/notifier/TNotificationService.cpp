#include "host/delivery/notifier/TNotificationService.h"

#include <poll.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>
#include <utility>

#include "host/delivery/notifier/TNotificationText.h"

namespace kk {

namespace {

constexpr char cName[] = "org.freedesktop.Notifications";
constexpr char cPath[] = "/org/freedesktop/Notifications";
constexpr char cOwnerChanged[] =
    "type='signal',sender='org.freedesktop.DBus',path='/org/freedesktop/DBus',"
    "interface='org.freedesktop.DBus',member='NameOwnerChanged',"
    "arg0='org.freedesktop.Notifications'";
// How long a late answer is still of use, to take the notification back.
constexpr uint64_t cLateUs = 60'000'000;
// A service that never ceases to send must not keep its thread from the rest.
constexpr int cMessagesInATurn = 100;
constexpr size_t cMaxShown = 1000;
constexpr size_t cMaxLink = 32 * 1024;  // as OpenURL has it
// The urgencies and times as freedesktop numbers them.
constexpr int cUrgencyNormal = 1;
constexpr int cUrgencyCritical = 2;
constexpr int cExpireAsTheDesktopLikes = -1;
constexpr int cExpireNever = 0;

struct TUnref {
  void operator()(sd_bus_message* iMessage) const { sd_bus_message_unref(iMessage); }
};

bool IsOfThisMachine(const std::string& iAddress) {
  for (size_t begin = 0; begin < iAddress.size();) {
    if (iAddress.compare(begin, 5, "unix:") != 0) return false;
    const size_t end = iAddress.find(';', begin);
    begin = end == std::string::npos ? end : end + 1;
  }
  return !iAddress.empty();
}

TString SystemText(int iError) { return FromUtf8(std::strerror(iError)); }

TString ReasonOf(sd_bus_message* iReply) {
  for (const char* name :
       {"org.freedesktop.DBus.Error.ServiceUnknown", "org.freedesktop.DBus.Error.NameHasNoOwner"}) {
    if (sd_bus_message_is_method_error(iReply, name) > 0)
      return u"Es läuft kein Benachrichtigungsdienst";
  }
  const sd_bus_error* error = sd_bus_message_get_error(iReply);
  const char* text = error == nullptr || error->message == nullptr ? "" : error->message;
  return Format(u"Der Benachrichtigungsdienst meldet einen Fehler (%s)",
                {WithoutControlCharacters(FromUtf8(text).substr(0, 200))});
}

}  // namespace

TNotificationService::TNotificationService(std::string iAddress, TOnAction iOnAction)
    : FAddress(std::move(iAddress)), FOnAction(std::move(iOnAction)) {}

void TNotificationService::Begin(const TNotification& iNotification) {
  FCurrent = &iNotification;
  FState = TState::nsWaiting;
  FCall = 0;
  Advance();
}

void TNotificationService::GiveUp() {
  // A connection that is not even made after so long is better begun anew.
  if (FBus && sd_bus_is_ready(FBus.get()) <= 0) Forget();
  FState = TState::nsIdle;
  FCall = 0;
}

// Does the next step towards the notification, as far as that is possible by now.
void TNotificationService::Advance() {
  if (FState != TState::nsWaiting || FCall != 0) return;
  int result = FBus ? 0 : Connect();
  if (result >= 0 && !FIsAsked) result = AskCapabilities();
  if (result >= 0 && FIsKnown) result = SendNotify();
  if (result < 0) Disconnect(-result);
}

int TNotificationService::Connect() {
  if (!IsOfThisMachine(FAddress)) return -ENOENT;
  sd_bus* bus = nullptr;
  int result = sd_bus_new(&bus);
  if (result < 0) return result;
  FBus.reset(bus);
  result = sd_bus_set_address(bus, FAddress.c_str());
  if (result >= 0) result = sd_bus_set_bus_client(bus, 1);
  if (result >= 0) result = sd_bus_start(bus);
  const auto match = [&](const char* iMember, sd_bus_message_handler_t iHandler) {
    if (result < 0) return;
    result = sd_bus_match_signal_async(bus, nullptr, cName, cPath, cName, iMember, iHandler,
                                       nullptr, this);
  };
  match("ActionInvoked", &Take<&TNotificationService::TakeAction>);
  match("NotificationClosed", &Take<&TNotificationService::TakeClosed>);
  if (result < 0) return result;
  return sd_bus_add_match_async(bus, nullptr, cOwnerChanged,
                                &Take<&TNotificationService::TakeNewOwner>, nullptr, this);
}

int TNotificationService::AskCapabilities() {
  const int result =
      sd_bus_call_method_async(FBus.get(), nullptr, cName, cPath, cName, "GetCapabilities",
                               &Take<&TNotificationService::TakeCapabilities>, this, nullptr);
  FIsAsked = result >= 0;
  return result;
}

// OpenURL refuses what is longer; an action that can't succeed isn't offered.
bool TNotificationService::HasLink() const {
  return !FCurrent->Link.empty() && FCurrent->Link.size() <= cMaxLink;
}

int TNotificationService::AppendActions(sd_bus_message* iMessage) const {
  int result = sd_bus_message_open_container(iMessage, 'a', "s");
  const std::string text = TNotificationText::LinkText(*FCurrent);
  // "default" is the click on the notification itself.
  if (result >= 0 && (HasLink() || FCurrent->OnClick))
    result = sd_bus_message_append(iMessage, "ss", "default", text.c_str());
  if (result >= 0 && HasLink())
    result = sd_bus_message_append(iMessage, "ss", "visit", text.c_str());
  return result < 0 ? result : sd_bus_message_close_container(iMessage);
}

int TNotificationService::SendNotify() {
  const bool isLasting = FCurrent->Position == TWindowPosition::wpDesktopLasting;
  const std::string summary = TNotificationText::Summary(*FCurrent);
  const std::string body =
      TNotificationText::Body(*FCurrent, FHasMarkup, HasLink() && !FHasActions);
  sd_bus_message* raw = nullptr;
  int result = sd_bus_message_new_method_call(FBus.get(), &raw, cName, cPath, cName, "Notify");
  const std::unique_ptr<sd_bus_message, TUnref> message(raw);
  if (result >= 0) {
    result = sd_bus_message_append(raw, "susss", "Kaufkobolde", ShownFor(FCurrent->Id), "",
                                   summary.c_str(), body.c_str());
  }
  if (result >= 0) result = AppendActions(raw);
  if (result >= 0) {
    result = sd_bus_message_append(raw, "a{sv}", 1, "urgency", "y",
                                   isLasting ? cUrgencyCritical : cUrgencyNormal);
  }
  if (result >= 0) {
    result = sd_bus_message_append(raw, "i", isLasting ? cExpireNever : cExpireAsTheDesktopLikes);
  }
  if (result >= 0) {
    result = sd_bus_call_async(FBus.get(), nullptr, raw, &Take<&TNotificationService::TakeNotified>,
                               this, cLateUs);
  }
  return result < 0 ? result : sd_bus_message_get_cookie(raw, &FCall);
}

uint32_t TNotificationService::ShownFor(const TGuid& iId) const {
  const auto found = std::ranges::find_if(
      FShown, [&](const auto& iShown) { return SameGuid(iShown.second.Id, iId); });
  return found == FShown.end() ? 0 : found->first;
}

void TNotificationService::Turn(int iWake, TClock::time_point iUntil) {
  std::array<pollfd, 2> handles = {pollfd{iWake, POLLIN, 0}, pollfd{-1, 0, 0}};
  uint64_t busUs = UINT64_MAX;
  if (FBus) {
    handles[1].fd = sd_bus_get_fd(FBus.get());
    handles[1].events = static_cast<short>(sd_bus_get_events(FBus.get()));
    sd_bus_get_timeout(FBus.get(), &busUs);
  }
  if (busUs != UINT64_MAX)
    iUntil = std::min(iUntil, TClock::time_point(std::chrono::microseconds(busUs)));
  int wait = -1;
  if (iUntil != TClock::time_point::max()) {
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(iUntil - TClock::now());
    wait = static_cast<int>(std::clamp<int64_t>(left.count(), 0, INT32_MAX));
  }
  // Without a handle the connection has ended, which it tells when it is asked to go on.
  if (FHasMore || (FBus && handles[1].fd < 0)) wait = 0;
  poll(handles.data(), handles.size(), wait);
  int result = FBus ? 1 : 0;
  for (int i = 0; i < cMessagesInATurn && result > 0; ++i) {
    result = sd_bus_process(FBus.get(), nullptr);
  }
  FHasMore = result > 0;
  if (result < 0) Disconnect(-result);
  Advance();
}

void TNotificationService::Fail(const TString& iReason) {
  if (FState != TState::nsWaiting) return;
  FState = TState::nsFailed;
  FReason = iReason;
  FCall = 0;
}

void TNotificationService::Disconnect(int iError) {
  Fail(Format(u"Der Desktop ist nicht erreichbar (%s)", {SystemText(iError)}));
  Forget();
}

// The numbers of what is shown mean nothing to the next connection.
void TNotificationService::Forget() {
  FShown.clear();
  FIsAsked = FIsKnown = FHasMore = false;
  FBus.reset();
}

void TNotificationService::TakeCapabilities(sd_bus_message* iReply) {
  if (sd_bus_message_is_method_error(iReply, nullptr) > 0) {
    FIsAsked = false;
    return Fail(ReasonOf(iReply));
  }
  FIsKnown = true;
  FHasMarkup = FHasActions = false;
  if (sd_bus_message_enter_container(iReply, 'a', "s") < 0) return;
  const char* capability = nullptr;
  while (sd_bus_message_read_basic(iReply, 's', &capability) > 0) {
    FHasMarkup = FHasMarkup || std::strcmp(capability, "body-markup") == 0;
    FHasActions = FHasActions || std::strcmp(capability, "actions") == 0;
  }
}

void TNotificationService::TakeNotified(sd_bus_message* iReply) {
  uint64_t call = 0;
  sd_bus_message_get_reply_cookie(iReply, &call);
  const bool isLate = call != FCall;
  uint32_t number = 0;
  if (sd_bus_message_is_method_error(iReply, nullptr) > 0) {
    if (!isLate) Fail(ReasonOf(iReply));
    return;
  }
  const bool isGood = sd_bus_message_read_basic(iReply, 'u', &number) > 0;
  if (isLate) {
    // It has been shown in another way by now.
    sd_bus_call_method_async(FBus.get(), nullptr, cName, cPath, cName, "CloseNotification", nullptr,
                             nullptr, "u", number);
    return;
  }
  if (!isGood) return Fail(u"Der Benachrichtigungsdienst gibt eine unverständliche Antwort");
  if (FShown.size() >= cMaxShown) FShown.erase(FShown.begin());
  FShown[number] = {FCurrent->Id, HasLink() ? FCurrent->Link : TString(), FCurrent->OnClick};
  FState = TState::nsShown;
  FCall = 0;
}

void TNotificationService::TakeAction(sd_bus_message* iSignal) {
  uint32_t number = 0;
  if (sd_bus_message_read_basic(iSignal, 'u', &number) <= 0) return;
  const auto found = FShown.find(number);
  if (found == FShown.end()) return;
  FOnAction(found->second.Link, found->second.Id, found->second.OnClick);
}

void TNotificationService::TakeClosed(sd_bus_message* iSignal) {
  uint32_t number = 0;
  if (sd_bus_message_read_basic(iSignal, 'u', &number) > 0) FShown.erase(number);
}

// Another service counts anew and has capabilities of its own.
void TNotificationService::TakeNewOwner(sd_bus_message* iSignal) {
  const char* name = "";
  const char* before = "";
  if (sd_bus_message_read(iSignal, "ss", &name, &before) <= 0 || *before == '\0') return;
  FShown.clear();
  FIsAsked = FIsKnown = false;
}

template <void (TNotificationService::*Method)(sd_bus_message*)>
int TNotificationService::Take(sd_bus_message* iMessage, void* iSelf, sd_bus_error* /*iError*/) {
  (static_cast<TNotificationService*>(iSelf)->*Method)(iMessage);
  return 0;
}

}  // namespace kk
