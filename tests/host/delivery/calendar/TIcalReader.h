#pragma once

#include <libical/ical.h>

#include <algorithm>
#include <memory>
#include <string>
#include <vector>

namespace kk {

/// Reads a calendar as any other program would, to see what really stands in it.
class TIcalReader {
 public:
  explicit TIcalReader(const std::string& iIcal)
      : FCalendar(icalparser_parse_string(iIcal.c_str()), &icalcomponent_free) {}

  /// Every component with its properties and components, sorted by name:
  /// "VCALENDAR(PRODID VERSION VEVENT(...))".
  std::string Outline() const { return FCalendar ? OutlineOf(FCalendar.get()) : "(nothing)"; }

  std::string Summary() const { return Text(ICAL_SUMMARY_PROPERTY); }
  std::string Description() const { return Text(ICAL_DESCRIPTION_PROPERTY); }
  std::string Location() const { return Text(ICAL_LOCATION_PROPERTY); }
  std::string Uid() const { return Text(ICAL_UID_PROPERTY); }
  /// A property of the event, or of its alarm, as it stands in the file.
  std::string Value(icalproperty_kind iKind) const { return ValueIn(Event(), iKind); }
  std::string AlarmValue(icalproperty_kind iKind) const {
    return ValueIn(icalcomponent_get_first_component(Event(), ICAL_VALARM_COMPONENT), iKind);
  }

 private:
  icalcomponent* Event() const {
    return icalcomponent_get_first_component(FCalendar.get(), ICAL_VEVENT_COMPONENT);
  }
  static std::string OutlineOf(icalcomponent* iComponent) {
    std::vector<std::string> names;
    for (auto* p = icalcomponent_get_first_property(iComponent, ICAL_ANY_PROPERTY); p != nullptr;
         p = icalcomponent_get_next_property(iComponent, ICAL_ANY_PROPERTY)) {
      names.emplace_back(icalproperty_get_property_name(p));
    }
    std::sort(names.begin(), names.end());
    for (auto* c = icalcomponent_get_first_component(iComponent, ICAL_ANY_COMPONENT); c != nullptr;
         c = icalcomponent_get_next_component(iComponent, ICAL_ANY_COMPONENT)) {
      names.push_back(OutlineOf(c));
    }
    std::string outline = icalcomponent_kind_to_string(icalcomponent_isa(iComponent));
    outline += "(";
    for (const std::string& name : names) outline += (outline.back() == '(' ? "" : " ") + name;
    return outline + ")";
  }
  // Unescaped.
  std::string Text(icalproperty_kind iKind) const {
    auto* property = icalcomponent_get_first_property(Event(), iKind);
    if (property == nullptr) return {};
    return icalvalue_get_text(icalproperty_get_value(property));
  }
  static std::string ValueIn(icalcomponent* iComponent, icalproperty_kind iKind) {
    auto* property = icalcomponent_get_first_property(iComponent, iKind);
    return property != nullptr ? icalproperty_get_value_as_string(property) : "";
  }

  std::unique_ptr<icalcomponent, decltype(&icalcomponent_free)> FCalendar;
};

/// What every appointment of ours consists of.
inline constexpr char cOutline[] =
    "VCALENDAR(PRODID VERSION VEVENT(DESCRIPTION DTSTAMP DTSTART DURATION LOCATION SUMMARY TRANSP "
    "UID VALARM(ACTION DESCRIPTION TRIGGER)))";

}  // namespace kk
