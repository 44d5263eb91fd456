#pragma once

#include "host/base/IInterface.h"

namespace kk {

class TForm;

/// The id by which the host's main menu knows the section "Beobachten".
inline constexpr TGuid cMainMenuFormIDWatchlist =
    GuidLiteral("{9B0F4C52-6D1E-4A77-8E0B-3C5D1F7A2E94}");

/// The host as a plug-in sees it. Main thread.
class IApplication : public IInterface {
 public:
  using TParent = IInterface;
  static constexpr TGuid cIid = GuidLiteral("{8AE09F2F-B233-43EF-8298-7F22BB4DCF6F}");

  /// The section's form tells that it was closed.
  virtual void SectionClosed() = 0;
  /// Shows a reminder's pop-up. True: the host has taken the form over and frees it; false, or an
  /// exception: it stays the caller's.
  virtual bool ShowNotificationWindow(TForm* iForm) = 0;
};

}  // namespace kk
