#include "settings/TSettingsTextWatchlist.h"

#include <limits>
#include <variant>

#include "host/base/Exception.h"
#include "plugin/texts/UnitKKPluginWatchlistConsts.h"
#include "plugin/texts/UnitKKPluginWatchlistResourceStrings.h"
#include "settings/TIniFileSectionWatchlist.h"

namespace kk {

namespace {

using TSection = TIniFileSectionWatchlist;

struct TFlag {
  bool (TSection::*Get)() const;
  void (TSection::*Set)(bool);
};
struct TNumber {
  int (TSection::*Get)() const;
  void (TSection::*Set)(int);
};
struct TExchanged {
  TStringView Key;
  std::variant<TFlag, TNumber> Value;
};

constexpr TExchanged Flag(TStringView iKey, bool (TSection::*iGet)() const,
                          void (TSection::*iSet)(bool)) {
  return {iKey, TFlag{iGet, iSet}};
}
constexpr TExchanged Number(TStringView iKey, int (TSection::*iGet)() const,
                            void (TSection::*iSet)(int)) {
  return {iKey, TNumber{iGet, iSet}};
}

constexpr TExchanged cShowItemCount = Flag(
    u"ShowItemCountInTree", &TSection::GetShowItemCountInTree, &TSection::SetShowItemCountInTree);
constexpr TExchanged cShowItemCountRecursive =
    Flag(u"ShowItemCountInTreeRecursive", &TSection::GetShowItemCountInTreeRecursive,
         &TSection::SetShowItemCountInTreeRecursive);
constexpr TExchanged cShowAddDialog =
    Flag(u"ShowAddDialog", &TSection::GetShowAddDialog, &TSection::SetShowAddDialog);
constexpr TExchanged cUpdateOnStartup =
    Flag(u"UpdateOnStartup", &TSection::GetUpdateOnStartup, &TSection::SetUpdateOnStartup);
constexpr TExchanged cUpdateOnInterval =
    Flag(u"UpdateOnInterval", &TSection::GetUpdateOnInterval, &TSection::SetUpdateOnInterval);
constexpr TExchanged cUpdateInterval = Number(
    u"UpdateIntervalInHrs", &TSection::GetUpdateIntervalInHrs, &TSection::SetUpdateIntervalInHrs);

// The orders in which lines are written and looked through.
constexpr TExchanged cWrittenFirst[] = {cShowItemCount,   cShowItemCountRecursive, cShowAddDialog,
                                        cUpdateOnStartup, cUpdateOnInterval,       cUpdateInterval};
// The longer key is first, because the shorter one is contained in it.
constexpr TExchanged cFirstGroup[] = {cShowItemCountRecursive, cShowItemCount,    cShowAddDialog,
                                      cUpdateOnStartup,        cUpdateOnInterval, cUpdateInterval};
constexpr TExchanged cSecondGroup[] = {
    Flag(u"AutoActivateReminder", &TSection::GetAutoActivateReminder,
         &TSection::SetAutoActivateReminder),
    Flag(u"UseDefaultReminderTimes", &TSection::GetUseDefaultReminderTimes,
         &TSection::SetUseDefaultReminderTimes),
    Number(u"DefaultReminderHours", &TSection::GetDefaultReminderHours,
           &TSection::SetDefaultReminderHours),
    Number(u"DefaultReminderMinutes", &TSection::GetDefaultReminderMinutes,
           &TSection::SetDefaultReminderMinutes),
    Number(u"DefaultReminderSeconds", &TSection::GetDefaultReminderSeconds,
           &TSection::SetDefaultReminderSeconds),
    Flag(u"DefaultReminderAfterTime", &TSection::GetDefaultReminderAfterTime,
         &TSection::SetDefaultReminderAfterTime),
    Number(u"RelativeTimeInMinutes", &TSection::GetRelativeTimeIndex,
           &TSection::SetRelativeTimeIndex),
    Number(u"DefaultRemindType", &TSection::GetDefaultRemindType, &TSection::SetDefaultRemindType)};

// So much of a value is told that is none.
constexpr size_t cMaxShown = 80;

[[noreturn]] void Refuse(TStringView iFormat, TStringView iKey, TStringView iValue) {
  throw EConvertError(Format(iFormat, {ShortenedText(iValue, cMaxShown), iKey}));
}

// As others write it as well: any whole number but 0, and words.
bool ToBoolean(TStringView iKey, TStringView iValue) {
  const TString value = Trim(iValue);
  if (SameText(value, u"true")) return true;
  if (SameText(value, u"false")) return false;
  int64_t number = 0;
  if (!TryStrToInt(value, number)) Refuse(_resSettingsNoBoolean, iKey, iValue);
  return number != 0;
}

int ToInteger(TStringView iKey, TStringView iValue) {
  using TLimits = std::numeric_limits<int>;
  int64_t number = 0;
  if (!TryStrToInt(iValue, number) || number < TLimits::min() || number > TLimits::max()) {
    Refuse(_resSettingsNoInteger, iKey, iValue);
  }
  return static_cast<int>(number);
}

TString LineOf(const TSection& iSection, const TExchanged& iExchanged) {
  TString value;
  if (const auto* flag = std::get_if<TFlag>(&iExchanged.Value)) {
    value = (iSection.*flag->Get)() ? u"-1" : u"0";
  } else {
    value = IntToStr((iSection.*std::get<TNumber>(iExchanged.Value).Get)());
  }
  return TString(iExchanged.Key) + u"=" + value;
}

// False if the line does not hold the key.
bool Store(TSection& ioSection, const TExchanged& iExchanged, const TString& iLine) {
  if (iLine.find(iExchanged.Key) == TString::npos) return false;
  TString value = iLine;
  const TString cut = TString(iExchanged.Key) + u"=";
  if (const size_t at = value.find(cut); at != TString::npos) value.erase(at, cut.size());
  if (const auto* flag = std::get_if<TFlag>(&iExchanged.Value)) {
    (ioSection.*flag->Set)(ToBoolean(iExchanged.Key, value));
  } else {
    (ioSection.*std::get<TNumber>(iExchanged.Value).Set)(ToInteger(iExchanged.Key, value));
  }
  return true;
}

void StoreLine(TSection& ioSection, const TString& iLine) {
  for (const TExchanged& exchanged : cFirstGroup) {
    if (Store(ioSection, exchanged, iLine)) break;
  }
  // No stop at a hit: looks like a mistake and is required.
  for (const TExchanged& exchanged : cSecondGroup) Store(ioSection, exchanged, iLine);
}

}  // namespace

TString TSettingsTextWatchlist::GetSettingsNode() { return TString(cSettingsSectionWatchlist); }

TString TSettingsTextWatchlist::GetSettingsName() { return TString(_resSettingsCaption); }

void TSettingsTextWatchlist::GetSettings(TStringList& ioList) {
  const TSection section;
  ioList.Clear();
  ioList.Add(u"[" + GetSettingsNode() + u"]");
  ioList.Add(u"Name=" + GetSettingsName());
  for (const TExchanged& exchanged : cWrittenFirst) ioList.Add(LineOf(section, exchanged));
  for (const TExchanged& exchanged : cSecondGroup) ioList.Add(LineOf(section, exchanged));
}

void TSettingsTextWatchlist::SetSettings(const TStringList& iList) {
  TSection section;
  IniFile().InOneWrite([&] {
    for (const TString& line : iList.Lines()) StoreLine(section, line);
  });
}

}  // namespace kk
