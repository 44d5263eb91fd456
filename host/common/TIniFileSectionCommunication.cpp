#include "host/common/TIniFileSectionCommunication.h"

#include <limits>

#include "host/common/ISecretStore.h"

namespace kk {

namespace {

using enum TSettingsKeyType;

constexpr TStringView cSection = u"Communication";

}  // namespace

TIniFileSectionCommunication::TIniFileSectionCommunication()
    : TKKIniFileSectionBase(IniFile(), cSection) {}

std::vector<TSettingsKeyInfo> TIniFileSectionCommunication::Keys() {
  const auto key = [](TStringView iKey, TSettingsKeyType iType, TStringView iMeaning) {
    return TSettingsKeyInfo{TString(cSection), TString(iKey), iType, {}, 0, 0, TString(iMeaning)};
  };
  std::vector<TSettingsKeyInfo> keys = {
      key(u"EMail", sktString, u"Adresse für Erinnerungen per E-Mail"),
      key(u"EMailConfirmed", sktBoolean, u"die E-Mail-Adresse ist bestätigt"),
      key(u"EMailFrom", sktString, u"Absender der Erinnerungen; leer: die Adresse selbst"),
      key(u"SmtpUrl", sktString, u"Postausgang: smtp://server:port oder smtps://server:port"),
      key(u"SmtpUser", sktString, u"Benutzer am Postausgang"),
      key(u"SmtpPassword", sktSecret, u"Kennwort am Postausgang"),
      key(u"SMS", sktString, u"Rufnummer für Erinnerungen per SMS"),
      key(u"SmsUrl", sktString, u"Adresse des SMS-Dienstes"),
      key(u"SmsToken", sktSecret, u"Zugangsschlüssel des SMS-Dienstes"),
      key(u"NotifierPosition", sktInteger, u"wo Meldungsfenster erscheinen"),
      key(u"CalendarUrl", sktString, u"Adresse des Kalenders (CalDAV)"),
      key(u"CalendarFolder", sktString, u"Ordner für Termine (.ics), wenn es keine Adresse gibt"),
      key(u"CalendarUser", sktString, u"Benutzer am Kalender"),
      key(u"CalendarPassword", sktSecret, u"Kennwort am Kalender"),
  };
  for (TSettingsKeyInfo& info : keys) {
    if (info.Type == sktBoolean) info.Default = u"0";
    if (info.Key != u"NotifierPosition") continue;
    info.Default = u"0";
    info.Max = 2;
    info.Meaning =
        u"wo Meldungsfenster erscheinen: 0 und 1 Benachrichtigung des Desktops, 2 eigenes Fenster";
  }
  return keys;
}

void TIniFileSectionCommunication::SetEMail(TStringView iAddress) {
  if (ReadString(u"EMail", {}) == iAddress) return;
  File().BeginUpdate();
  WriteString(u"EMail", iAddress, {});
  WriteBoolean(u"EMailConfirmed", false, false);
  SetEMailCode({});
  File().EndUpdate();
}

bool TIniFileSectionCommunication::GetEMail(TString& oAddress) const {
  oAddress = ReadString(u"EMail", {});
  return !oAddress.empty() && ReadBoolean(u"EMailConfirmed", false);
}

void TIniFileSectionCommunication::SetEMailConfirmed() {
  File().BeginUpdate();
  WriteBoolean(u"EMailConfirmed", true, false);
  SetEMailCode({});
  File().EndUpdate();
}

TString TIniFileSectionCommunication::GetEMailCode() const { return ReadString(u"EMailCode", {}); }

void TIniFileSectionCommunication::SetEMailCode(TStringView iCode) {
  WriteString(u"EMailCode", iCode, {});
}

TString TIniFileSectionCommunication::GetEMailFrom() const {
  const TString from = ReadString(u"EMailFrom", {});
  return Trim(from).empty() ? ReadString(u"EMail", {}) : from;
}

TString TIniFileSectionCommunication::GetSmtpUrl() const { return ReadString(u"SmtpUrl", {}); }
TString TIniFileSectionCommunication::GetSmtpUser() const { return ReadString(u"SmtpUser", {}); }
TString TIniFileSectionCommunication::GetSmtpPassword() const {
  return SecretStore().Read(cSection, u"SmtpPassword");
}

TString TIniFileSectionCommunication::GetSMS() const { return ReadString(u"SMS", {}); }
TString TIniFileSectionCommunication::GetSmsUrl() const { return ReadString(u"SmsUrl", {}); }
TString TIniFileSectionCommunication::GetSmsToken() const {
  return SecretStore().Read(cSection, u"SmsToken");
}

int TIniFileSectionCommunication::GetNotifierPosition() const {
  return ReadInteger(u"NotifierPosition", 0, std::numeric_limits<int>::min(),
                     std::numeric_limits<int>::max());
}

void TIniFileSectionCommunication::SetNotifierPosition(int iPosition) {
  WriteInteger(u"NotifierPosition", iPosition, 0);
}

TString TIniFileSectionCommunication::GetCalendarUrl() const {
  return ReadString(u"CalendarUrl", {});
}
TString TIniFileSectionCommunication::GetCalendarFolder() const {
  return ReadString(u"CalendarFolder", {});
}
TString TIniFileSectionCommunication::GetCalendarUser() const {
  return ReadString(u"CalendarUser", {});
}
TString TIniFileSectionCommunication::GetCalendarPassword() const {
  return SecretStore().Read(cSection, u"CalendarPassword");
}

}  // namespace kk
