#pragma once

#include <string>
#include <string_view>

#include "host/base/TDateTime.h"
#include "host/base/TString.h"

namespace kk {

/// One appointment as calendars exchange it (iCalendar, RFC 5545). Its texts are made fit first:
/// control characters go, line breaks stay in the body alone, and what is beyond the bounds is cut.
class TAppointment {
 public:
  /// In UTF-16 units; what is longer ends in "…".
  static constexpr size_t cMaxLineLength = 500;
  static constexpr size_t cMaxBodyLength = 8000;

  /// An appointment with an id of its own. Without a subject it is called as the program is.
  TAppointment(TStringView iSubject, TStringView iBody, TStringView iLocation, TDateTime iStart);

  const std::string& Uid() const { return FUid; }
  void SetUid(const std::string& iUid) { FUid = iUid; }
  /// "UID.ics", the name of its resource or file.
  std::string FileName() const { return FUid + ".ics"; }
  /// Whether a text is such a name, which leads nowhere else: hexadecimal digits and hyphens.
  static bool IsFileName(TStringView iText);

  /// A calendar with one event and its alarm at the start, in UTF-8 with CR LF. The event lasts a
  /// quarter of an hour and leaves the user free meanwhile.
  std::string Ical() const;
  /// Whether a calendar from elsewhere holds this appointment: an event with the same id, start and
  /// subject. False for bytes that are no calendar. A time zone is taken by its name, as this
  /// machine knows it.
  bool IsIn(std::string_view iIcal) const;
  /// The same but for the id.
  bool HasSameContent(const TAppointment& iOther) const;

 private:
  std::string FUid;
  TString FSubject;
  TString FBody;
  TString FLocation;
  int64_t FStartSeconds;  // UTC, since 1970
};

}  // namespace kk
