#pragma once

#include <chrono>
#include <functional>
#include <memory>
#include <string>

#include "host/controls/TfrmKKCommonNotifier.h"

namespace kk {

/// How notifications reach the desktop; the defaults are the product's.
struct TDesktopNotifierOptions {
  /// Of the session bus; empty is the one of the environment: DBUS_SESSION_BUS_ADDRESS, else the
  /// socket in XDG_RUNTIME_DIR.
  std::string Address = {};
  /// What one notification may take, the way to the bus included.
  std::chrono::milliseconds Limit{2000};
  /// How long one may wait behind others before it goes to the fallback.
  std::chrono::milliseconds MaxWait{10000};
};

/// Shows notifications through the desktop's own service, over D-Bus and on a thread of its own, so
/// that nothing out there holds the main one. wpDesktop is shown as the desktop likes, other
/// positions until the user dismisses them. An action with the text of the link opens it.
///
/// One notification after the other. Where there is no bus or no service, where it refuses or does
/// not answer within the limit, the notification and all that wait behind it go to the fallback on
/// the main thread, each once and in order, and the log says why (sender "Host"). A service that
/// answers later has its notification taken back; until then it may be seen twice.
class TDesktopNotifier : public INotifier {
 public:
  using TFallback = std::function<void(const TNotification&)>;

  explicit TDesktopNotifier(TFallback iFallback, TDesktopNotifierOptions iOptions = {});
  /// Stops.
  ~TDesktopNotifier() override;
  TDesktopNotifier(const TDesktopNotifier&) = delete;
  TDesktopNotifier& operator=(const TDesktopNotifier&) = delete;

  /// Returns at once. The object of OnClick must live until Stop: the user may click at any time;
  /// its Sender is absent. Raises Exception after Stop and without a main loop.
  void Display(const TNotification& iNotification) override;

  /// Ends the thread, within some ms whatever hangs. What has not been shown by then is shown by
  /// nobody, because the windows are going too: the log keeps what it was about. Nothing of this
  /// object runs on the main thread afterwards. Any thread.
  void Stop();

 private:
  class TWorker;
  const std::shared_ptr<TWorker> FWorker;  // what is posted to the main thread holds it too
};

}  // namespace kk
