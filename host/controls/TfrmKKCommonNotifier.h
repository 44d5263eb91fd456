#pragma once

#include <functional>

#include "host/base/TDelegate.h"
#include "host/base/TGuid.h"
#include "host/base/TObject.h"
#include "host/base/TString.h"

namespace kk {

/// Where a notification appears, as the settings number it: twice as the desktop itself shows its
/// notifications, or as a pop-up window of the program's own.
enum class TWindowPosition { wpDesktop = 0, wpDesktopLasting = 1, wpPopUp = 2 };

/// The user has clicked a notification.
using TNotifyNotifierCallback = TDelegate<void(TObject* Sender, const TGuid& iId)>;

/// One notification.
struct TNotification {
  TWindowPosition Position = TWindowPosition::wpDesktop;
  TGuid Id;          ///< of what it tells; a later one of the same id takes its place
  TString Title;     ///< "Erinnerung"
  TString Link;      ///< what the action opens; may be empty
  TString LinkText;  ///< "Jetzt besuchen"
  TString Text;      ///< below the caption; may be empty
  TString Caption;   ///< what it is about
  TNotifyNotifierCallback OnClick;
  /// Told once, on the main thread, how it was shown: true by the desktop, false in another way.
  /// Not told any more while the program ends.
  std::function<void(bool iByDesktop)> OnShown = nullptr;
};

/// What shows notifications; the host installs one. Main thread.
class INotifier {
 public:
  virtual ~INotifier() = default;
  /// Starts to show it and does not wait. What goes wrong later ends in another way of showing it,
  /// never in nothing. Raises Exception if it can't even be begun.
  virtual void Display(const TNotification& iNotification) = 0;
};
/// Installs a notifier, which is borrowed, and answers the one before; null is none.
INotifier* SetNotifier(INotifier* iNotifier);
/// The installed notifier. Raises Exception if there is none.
INotifier& Notifier();

/// The door to the host's notifier.
class TfrmKKCommonNotifier {
 public:
  /// The five strings are title, link, text of the link, text and caption. Raises Exception if no
  /// notifier is installed. Main thread.
  static void Display(TWindowPosition iPosition, const TGuid& iId, TStringView iS1, TStringView iS2,
                      TStringView iS3, TStringView iS4, TStringView iS5,
                      TNotifyNotifierCallback iCallback);
};

}  // namespace kk
