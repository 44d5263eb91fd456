#pragma once

#include <systemd/sd-bus.h>

#include <QSocketNotifier>
#include <QTimer>
#include <chrono>
#include <functional>
#include <memory>
#include <string>

namespace kk {

/// Whether the desktop asks programs for dark colours: the setting "color-scheme" of
/// "org.freedesktop.appearance", which xdg-desktop-portal's interface Settings tells on the session
/// bus. Nothing here waits but Wait; without a bus, or a service behind it, nothing is ever told.
/// Main thread.
class TColorScheme {
 public:
  /// Called from the event loop or from Wait, when the answer is another than before; at first it
  /// counts as not dark.
  using TOnChange = std::function<void(bool iIsDark)>;

  /// Begins to ask. iBusAddress: empty is the session's of the environment.
  TColorScheme(const std::string& iBusAddress, TOnChange iOnChange);
  ~TColorScheme();
  TColorScheme(const TColorScheme&) = delete;
  TColorScheme& operator=(const TColorScheme&) = delete;

  /// Until the first answer, whatever it is, has come, or this long.
  void Wait(std::chrono::milliseconds iLimit);

 private:
  struct TClose {
    void operator()(sd_bus* iBus) const { sd_bus_close_unref(iBus); }
  };
  int Connect(const std::string& iAddress);
  int Ask();
  void Process();
  void Disconnect();
  static int TakeAnswer(sd_bus_message* iMessage, void* iThis, sd_bus_error*);
  static int TakeChange(sd_bus_message* iMessage, void* iThis, sd_bus_error*);
  void TakeValue(sd_bus_message* iMessage);

  TOnChange FOnChange;
  std::unique_ptr<sd_bus, TClose> FBus;
  std::unique_ptr<QSocketNotifier> FCanRead, FCanWrite;
  QTimer FTimer;
  bool FIsAnswered = false;
  bool FIsDark = false, FIsToldDark = false;
};

}  // namespace kk
