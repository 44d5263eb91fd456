#include "apps/desktop/skin/TColorScheme.h"

#include <poll.h>

#include <algorithm>
#include <cstring>
#include <utility>

namespace kk {
namespace {

constexpr char cName[] = "org.freedesktop.portal.Desktop";
constexpr char cPath[] = "/org/freedesktop/portal/desktop";
constexpr char cSettings[] = "org.freedesktop.portal.Settings";
constexpr char cGroup[] = "org.freedesktop.appearance";
constexpr char cKey[] = "color-scheme";
constexpr uint32_t cPreferDark = 1;  // 0: no preference, 2: prefer light
// A service that never ceases to send must not keep the window from the user.
constexpr int cMessagesInATurn = 100;
// The interface answers a variant within a variant.
constexpr int cMaxDepth = 3;

using TClock = std::chrono::steady_clock;

}  // namespace

TColorScheme::TColorScheme(const std::string& iBusAddress, TOnChange iOnChange)
    : FOnChange(std::move(iOnChange)) {
  FTimer.setSingleShot(true);
  QObject::connect(&FTimer, &QTimer::timeout, [this] { Process(); });
  const bool isAsked = Connect(iBusAddress) >= 0 && Ask() >= 0;
  const int handle = isAsked ? sd_bus_get_fd(FBus.get()) : -1;
  if (handle < 0) {
    Disconnect();
    return;
  }
  FCanRead = std::make_unique<QSocketNotifier>(handle, QSocketNotifier::Read);
  FCanWrite = std::make_unique<QSocketNotifier>(handle, QSocketNotifier::Write);
  for (const auto* notifier : {FCanRead.get(), FCanWrite.get()})
    QObject::connect(notifier, &QSocketNotifier::activated, [this] { Process(); });
}

TColorScheme::~TColorScheme() = default;

int TColorScheme::Connect(const std::string& iAddress) {
  sd_bus* bus = nullptr;
  if (iAddress.empty()) {
    const int result = sd_bus_open_user(&bus);
    FBus.reset(bus);
    return result;
  }
  int result = sd_bus_new(&bus);
  if (result < 0) return result;
  FBus.reset(bus);
  result = sd_bus_set_address(bus, iAddress.c_str());
  if (result >= 0) result = sd_bus_set_bus_client(bus, 1);
  return result < 0 ? result : sd_bus_start(bus);
}

int TColorScheme::Ask() {
  const int result = sd_bus_match_signal_async(FBus.get(), nullptr, cName, cPath, cSettings,
                                               "SettingChanged", &TakeChange, nullptr, this);
  if (result < 0) return result;
  return sd_bus_call_method_async(FBus.get(), nullptr, cName, cPath, cSettings, "Read", &TakeAnswer,
                                  this, "ss", cGroup, cKey);
}

void TColorScheme::Wait(std::chrono::milliseconds iLimit) {
  const TClock::time_point end = TClock::now() + iLimit;
  while (FBus && !FIsAnswered) {
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(end - TClock::now()).count();
    if (left <= 0) return;
    pollfd handle{sd_bus_get_fd(FBus.get()),
                  static_cast<short>(std::max(sd_bus_get_events(FBus.get()), 0)), 0};
    poll(&handle, 1, static_cast<int>(left));
    Process();
  }
}

void TColorScheme::Process() {
  if (!FBus) return;
  int result = 1;
  for (int i = 0; i < cMessagesInATurn && result > 0; ++i)
    result = sd_bus_process(FBus.get(), nullptr);
  const int events = result < 0 ? result : sd_bus_get_events(FBus.get());
  if (events < 0) {
    Disconnect();
  } else {
    FCanWrite->setEnabled((events & POLLOUT) != 0);
    uint64_t atUs = UINT64_MAX;
    sd_bus_get_timeout(FBus.get(), &atUs);
    const auto now = std::chrono::ceil<std::chrono::milliseconds>(TClock::now().time_since_epoch());
    const int64_t ms = static_cast<int64_t>(atUs / 1000) - now.count();
    if (result > 0)
      FTimer.start(0);
    else if (atUs != UINT64_MAX)
      FTimer.start(static_cast<int>(std::clamp<int64_t>(ms, 1, 60000)));
    else
      FTimer.stop();
  }
  // Outside of the library's own calls: whoever hears of it may end this object.
  if (FIsDark == FIsToldDark) return;
  FIsToldDark = FIsDark;
  FOnChange(FIsDark);
}

void TColorScheme::Disconnect() {
  FTimer.stop();
  FCanRead.reset();
  FCanWrite.reset();
  FBus.reset();
}

int TColorScheme::TakeAnswer(sd_bus_message* iMessage, void* iThis, sd_bus_error*) {
  auto& self = *static_cast<TColorScheme*>(iThis);
  self.FIsAnswered = true;
  if (sd_bus_message_is_method_error(iMessage, nullptr) <= 0) self.TakeValue(iMessage);
  return 0;
}

int TColorScheme::TakeChange(sd_bus_message* iMessage, void* iThis, sd_bus_error*) {
  const char* group = nullptr;
  const char* key = nullptr;
  if (sd_bus_message_read(iMessage, "ss", &group, &key) <= 0) return 0;
  if (std::strcmp(group, cGroup) == 0 && std::strcmp(key, cKey) == 0)
    static_cast<TColorScheme*>(iThis)->TakeValue(iMessage);
  return 0;
}

// What is no number in there leaves everything as it was.
void TColorScheme::TakeValue(sd_bus_message* iMessage) {
  for (int depth = 0; depth < cMaxDepth; ++depth) {
    char type = 0;
    const char* contents = nullptr;
    if (sd_bus_message_peek_type(iMessage, &type, &contents) <= 0) return;
    if (type == SD_BUS_TYPE_UINT32) {
      uint32_t value = 0;
      if (sd_bus_message_read_basic(iMessage, type, &value) > 0) FIsDark = value == cPreferDark;
      return;
    }
    if (type != SD_BUS_TYPE_VARIANT) return;
    if (sd_bus_message_enter_container(iMessage, type, contents) <= 0) return;
  }
}

}  // namespace kk
