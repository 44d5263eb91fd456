#include "host/delivery/calendar/TAppointment.h"

#include <libical/ical.h>

#include <algorithm>
#include <cstdlib>
#include <memory>
#include <optional>

#include "host/base/Exception.h"
#include "host/base/TClock.h"
#include "host/base/TGuid.h"
#include "host/common/TVersionHelper.h"

namespace kk {

namespace {

constexpr int cDurationSeconds = 15 * 60;
constexpr size_t cUidLength = 36;

struct TFreeComponent {
  void operator()(icalcomponent* iComponent) const { icalcomponent_free(iComponent); }
};
using TComponent = std::unique_ptr<icalcomponent, TFreeComponent>;

// A calendar's text in memory of the C library's.
struct TFreeText {
  void operator()(char* iText) const { std::free(iText); }
};
using TText = std::unique_ptr<char, TFreeText>;

// More of a text is not even looked at: cleaning a long one would hold the main thread up.
TString Beginning(TStringView iText, size_t iMaxLength) {
  return ShortenedText(iText, 4 * iMaxLength);
}

TString Line(TStringView iText) {
  constexpr size_t cMax = TAppointment::cMaxLineLength;
  return ShortenedText(WithoutControlCharacters(ToSingleLine(Beginning(iText, cMax))), cMax);
}

// Line breaks of every kind become LF; all other control characters go.
TString Lines(TStringView iText) {
  constexpr size_t cMax = TAppointment::cMaxBodyLength;
  TString text = ReplaceAll(Beginning(iText, cMax), u"\r\n", u"\n");
  std::replace(text.begin(), text.end(), u'\r', u'\n');
  std::erase_if(text, [](char16_t c) {
    return c != u'\n' && WithoutControlCharacters(TStringView(&c, 1)).empty();
  });
  return ShortenedText(Trim(text), cMax);
}

std::string NewUid() {
  const TString guid = GUIDToString(NewGuid());
  std::string uid = ToUtf8(TStringView(guid).substr(1, cUidLength));
  for (char& c : uid) c = c >= 'A' && c <= 'F' ? static_cast<char>(c - 'A' + 'a') : c;
  return uid;
}

icaltimetype UtcTime(int64_t iSeconds) {
  return icaltime_from_timet_with_zone(iSeconds, 0, icaltimezone_get_utc_timezone());
}

// The component owns what is added.
template <class... TProperties>
void Add(icalcomponent* ioTo, TProperties... iProperties) {
  (icalcomponent_add_property(ioTo, iProperties), ...);
}

// When an event begins, in UTC since 1970; nothing where that isn't said. Zones are known by their
// names alone: to work out the rules of one that a server made up could take for ever.
std::optional<int64_t> StartOf(icalcomponent* iEvent) {
  icalproperty* const property = icalcomponent_get_first_property(iEvent, ICAL_DTSTART_PROPERTY);
  if (property == nullptr) return {};
  const icaltimetype start = icalproperty_get_dtstart(property);
  icalparameter* const name = icalproperty_get_first_parameter(property, ICAL_TZID_PARAMETER);
  icaltimezone* zone = nullptr;
  if (icaltime_is_utc(start)) {
    zone = icaltimezone_get_utc_timezone();
  } else if (name != nullptr) {
    zone = icaltimezone_get_builtin_timezone(icalparameter_get_tzid(name));
  }
  if (zone == nullptr) return {};
  return icaltime_as_timet_with_zone(start, zone);
}

std::string TextOf(const char* iText) { return iText != nullptr ? iText : ""; }

}  // namespace

TAppointment::TAppointment(TStringView iSubject, TStringView iBody, TStringView iLocation,
                           TDateTime iStart)
    : FUid(NewUid()),
      FSubject(Line(iSubject)),
      FBody(Lines(iBody)),
      FLocation(Line(iLocation)),
      FStartSeconds(LocalToUtcMs(iStart) / TDateTime::cMsPerSecond) {
  if (FSubject.empty()) FSubject = u"Kaufkobolde";  // an event and its alarm need one
}

bool TAppointment::IsFileName(TStringView iText) {
  if (iText.size() != cUidLength + 4 || iText.substr(cUidLength) != u".ics") return false;
  return iText.substr(0, cUidLength).find_first_not_of(u"0123456789abcdef-") == TStringView::npos;
}

std::string TAppointment::Ical() const {
  const std::string product =
      ToUtf8(TVersionHelper::ReplaceVersionParams(u"-//Kaufkobolde//Beobachten %MV%SV//DE"));
  const std::string subject = ToUtf8(FSubject);
  const TComponent calendar(icalcomponent_new_vcalendar());
  icalcomponent* const event = icalcomponent_new_vevent();
  icalcomponent* const alarm = icalcomponent_new_valarm();
  icalcomponent_add_component(calendar.get(), event);
  icalcomponent_add_component(event, alarm);
  Add(calendar.get(), icalproperty_new_prodid(product.c_str()), icalproperty_new_version("2.0"));
  Add(event, icalproperty_new_uid(FUid.c_str()),
      icalproperty_new_dtstamp(UtcTime(LocalToUtcMs(Now()) / TDateTime::cMsPerSecond)),
      icalproperty_new_dtstart(UtcTime(FStartSeconds)),
      icalproperty_new_duration(icaldurationtype_from_int(cDurationSeconds)),
      icalproperty_new_transp(ICAL_TRANSP_TRANSPARENT), icalproperty_new_summary(subject.c_str()));
  if (!FBody.empty()) Add(event, icalproperty_new_description(ToUtf8(FBody).c_str()));
  if (!FLocation.empty()) Add(event, icalproperty_new_location(ToUtf8(FLocation).c_str()));
  Add(alarm, icalproperty_new_action(ICAL_ACTION_DISPLAY),
      icalproperty_new_trigger(icaltriggertype_from_int(0)),
      icalproperty_new_description(subject.c_str()));
  const TText text(icalcomponent_as_ical_string_r(calendar.get()));
  if (!text) throw Exception(u"Der Termin lässt sich nicht aufschreiben");
  return text.get();
}

bool TAppointment::IsIn(std::string_view iIcal) const {
  const TComponent calendar(icalparser_parse_string(std::string(iIcal).c_str()));
  if (!calendar) return false;
  for (icalcomponent* event =
           icalcomponent_get_first_component(calendar.get(), ICAL_VEVENT_COMPONENT);
       event != nullptr;
       event = icalcomponent_get_next_component(calendar.get(), ICAL_VEVENT_COMPONENT)) {
    const bool same = TextOf(icalcomponent_get_uid(event)) == FUid &&
                      TextOf(icalcomponent_get_summary(event)) == ToUtf8(FSubject) &&
                      StartOf(event) == FStartSeconds;
    if (same) return true;
  }
  return false;
}

bool TAppointment::HasSameContent(const TAppointment& iOther) const {
  return FSubject == iOther.FSubject && FBody == iOther.FBody && FLocation == iOther.FLocation &&
         FStartSeconds == iOther.FStartSeconds;
}

}  // namespace kk
