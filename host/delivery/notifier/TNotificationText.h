#pragma once

#include <string>

#include "host/controls/TfrmKKCommonNotifier.h"

namespace kk {

/// The texts of a notification as the desktop's service takes them (Desktop Notifications
/// Specification 1.2): valid UTF-8 without control characters, of a bounded length.
struct TNotificationText {
  static constexpr size_t cMaxSummary = 120;  ///< all in UTF-16 units
  static constexpr size_t cMaxCaption = 1000;
  static constexpr size_t cMaxText = 3000;
  static constexpr size_t cMaxLink = 2000;
  static constexpr size_t cMaxLinkText = 60;

  /// One line: title and caption.
  static std::string Summary(const TNotification& iNotification);
  /// What the summary doesn't hold: the text, before it the caption where it had to be cut, and
  /// with iLink behind it the address, for services without actions. iMarkup: the service reads the
  /// body as markup, so that what looks like it is escaped.
  static std::string Body(const TNotification& iNotification, bool iMarkup, bool iLink);
  /// What stands on the action.
  static std::string LinkText(const TNotification& iNotification);
};

}  // namespace kk
