#include "settings/TIniFileSectionWatchlist.h"

#include <iterator>
#include <limits>

#include "host/common/TFileHelper.h"
#include "plugin/texts/UnitKKPluginWatchlistConsts.h"

namespace kk {

// One line of the table. A default stands here and nowhere else, because a setter has to hand over
// the same one as its getter.
struct TIniFileSectionWatchlist::TKey {
  TStringView Name;
  TSettingsKeyType Type = TSettingsKeyType::sktString;
  int Default = 0;
  int Min = 0;
  int Max = 0;
  TStringView Meaning;
  bool Numbered = false;
  TString (*TextDefault)() = nullptr;  // empty if there is none

  static constexpr TKey Flag(TStringView iName, bool iDefault, TStringView iMeaning) {
    return {iName, TSettingsKeyType::sktBoolean, iDefault, 0, 1, iMeaning};
  }
  static constexpr TKey Number(TStringView iName, int iDefault, int iMin, int iMax,
                               TStringView iMeaning) {
    return {iName, TSettingsKeyType::sktInteger, iDefault, iMin, iMax, iMeaning};
  }
  static constexpr TKey Text(TStringView iName, TStringView iMeaning,
                             TString (*iDefault)() = nullptr) {
    return {iName, TSettingsKeyType::sktString, 0, 0, 0, iMeaning, false, iDefault};
  }

  TString DefaultText() const {
    if (Type != TSettingsKeyType::sktString) return IntToStr(Default);
    return TextDefault == nullptr ? TString() : TextDefault();
  }

  static const TKey cTable[];
  // The line of this name, at compile time; a name that is not there does not compile.
  static consteval const TKey& Of(TStringView iName);
};

namespace {

constexpr int cLowest = std::numeric_limits<int>::min();
constexpr int cHighest = std::numeric_limits<int>::max();
constexpr TStringView cDefaultCategory = u"DefaultCategory";

TString DefaultSoundFile() { return TFileHelper::GetLocalFileName(cDefaultSoundFileName); }

}  // namespace

constexpr TIniFileSectionWatchlist::TKey TIniFileSectionWatchlist::TKey::cTable[] = {
    Number(u"CategoryTreeWidth", 220, 50, 500, u"Breite des Kategoriebaums in Pixeln"),
    Number(u"ExplorerBarWidth", 220, 50, 500, u"Breite der Seitenleiste in Pixeln"),
    Flag(u"ShowItemCountInTree", true, u"Anzahl der Einträge hinter jeder Kategorie anzeigen"),
    Flag(u"ShowItemCountInTreeRecursive", true, u"Einträge der Unterkategorien dabei mitzählen"),
    Flag(u"ShowAddDialog", true, u"Beim Hinzufügen nach der Kategorie fragen"),
    Flag(u"StoreLastSelectedSoundFile", true, u"Zuletzt gewählte Sounddatei merken"),
    Text(u"SoundFile", u"Sounddatei, die für Erinnerungen vorgeschlagen wird", &DefaultSoundFile),
    Flag(u"UpdateOnStartup", false, u"Beim Programmstart aktualisieren"),
    Flag(u"UpdateOnInterval", false, u"Regelmäßig aktualisieren"),
    Number(u"UpdateIntervalInHrs", 24, 1, cHighest,
           u"Abstand der regelmäßigen Aktualisierung in Stunden"),
    Text(u"UpdateLastDate", u"Zeitpunkt der letzten automatischen Aktualisierung; leer für nie"),
    Text(u"LastSelected", u"Zuletzt gewählte Kategorie (GUID)"),
    Number(u"RemindType", 1, 0, 20,
           u"Zuletzt gewählte Art der Erinnerung: 0 Sound, 1 Meldungsfenster, 3 Outlook, 4 E-Mail"),
    Number(u"RemindTimeSpanOffsetInSecs", 3600, cLowest, cHighest,
           u"Zuletzt gewählter Abstand der Erinnerung von jetzt in Sekunden"),
    Number(u"RemindTimeRelativeIndex", 4, cLowest, cHighest,
           u"Zuletzt gewählter Eintrag der Zeiten vor Ablauf der Auktion"),
    Flag(u"AutoActivateReminder", false,
         u"Für neue Einträge automatisch eine Erinnerung einrichten"),
    Flag(u"UseDefaultReminderTimes", false,
         u"Einstellungsseite: Standardzeiten statt der zuletzt gewählten Zeit"),
    Flag(u"DefaultReminderAfterTime", false,
         u"Automatische Erinnerung ab jetzt (1) oder vor Ablauf der Auktion (0)"),
    // The bound of an hours value at 59 looks like a mistake and is required.
    Number(u"DefaultReminderHours", 1, 0, 59, u"Stunden der automatischen Erinnerung ab jetzt"),
    Number(u"DefaultReminderMinutes", 0, 0, 59, u"Minuten der automatischen Erinnerung ab jetzt"),
    // Of the three the only one without a bound; that is required, too.
    Number(u"DefaultReminderSeconds", 0, cLowest, cHighest,
           u"Sekunden der automatischen Erinnerung ab jetzt"),
    Number(u"RelativeTimeInMinutes", 0, 0, 13,
           u"Eintrag der Zeiten vor Ablauf der Auktion für die automatische Erinnerung, 0 bis 13"),
    Number(u"DefaultRemindType", 1, 0, 1,
           u"Art der automatischen Erinnerung: 0 nur Sound, 1 Meldungsfenster"),
    {.Name = cDefaultCategory,
     .Meaning =
         u"Kategorie, in die Treffer einer Quelle ohne Frage kommen: Quelle;Kategorie (GUIDs)",
     .Numbered = true},
};

consteval const TIniFileSectionWatchlist::TKey& TIniFileSectionWatchlist::TKey::Of(
    TStringView iName) {
  for (const TKey& key : cTable) {
    if (key.Name == iName) return key;
  }
  throw "no such key";
}

TIniFileSectionWatchlist::TIniFileSectionWatchlist()
    : TKKIniFileSectionPluginWithWindow(IniFile(), cSettingsSectionWatchlist) {}

std::vector<TSettingsKeyInfo> TIniFileSectionWatchlist::Keys() {
  std::vector<TSettingsKeyInfo> keys;
  for (const TKey& key : TKey::cTable) {
    keys.push_back({TString(cSettingsSectionWatchlist), TString(key.Name), key.Type,
                    key.DefaultText(), key.Min, key.Max, TString(key.Meaning), key.Numbered});
  }
  return keys;
}

int TIniFileSectionWatchlist::ReadNumber(const TKey& iKey) const {
  return ReadInteger(iKey.Name, iKey.Default, iKey.Min, iKey.Max);
}

void TIniFileSectionWatchlist::WriteNumber(const TKey& iKey, int iValue) {
  WriteInteger(iKey.Name, iValue, iKey.Default);
}

bool TIniFileSectionWatchlist::ReadFlag(const TKey& iKey) const {
  return ReadBoolean(iKey.Name, iKey.Default != 0);
}

void TIniFileSectionWatchlist::WriteFlag(const TKey& iKey, bool iValue) {
  WriteBoolean(iKey.Name, iValue, iKey.Default != 0);
}

TString TIniFileSectionWatchlist::ReadText(const TKey& iKey) const {
  return ReadString(iKey.Name, iKey.DefaultText());
}

void TIniFileSectionWatchlist::WriteText(const TKey& iKey, TStringView iValue) {
  WriteString(iKey.Name, iValue, iKey.DefaultText());
}

int TIniFileSectionWatchlist::GetCategoryTreeWidth() const {
  return ReadNumber(TKey::Of(u"CategoryTreeWidth"));
}
void TIniFileSectionWatchlist::SetCategoryTreeWidth(int iValue) {
  WriteNumber(TKey::Of(u"CategoryTreeWidth"), iValue);
}

int TIniFileSectionWatchlist::GetExplorerBarWidth() const {
  return ReadNumber(TKey::Of(u"ExplorerBarWidth"));
}
void TIniFileSectionWatchlist::SetExplorerBarWidth(int iValue) {
  WriteNumber(TKey::Of(u"ExplorerBarWidth"), iValue);
}

bool TIniFileSectionWatchlist::GetShowItemCountInTree() const {
  return ReadFlag(TKey::Of(u"ShowItemCountInTree"));
}
void TIniFileSectionWatchlist::SetShowItemCountInTree(bool iValue) {
  WriteFlag(TKey::Of(u"ShowItemCountInTree"), iValue);
}

bool TIniFileSectionWatchlist::GetShowItemCountInTreeRecursive() const {
  return ReadFlag(TKey::Of(u"ShowItemCountInTreeRecursive"));
}
void TIniFileSectionWatchlist::SetShowItemCountInTreeRecursive(bool iValue) {
  WriteFlag(TKey::Of(u"ShowItemCountInTreeRecursive"), iValue);
}

bool TIniFileSectionWatchlist::GetShowAddDialog() const {
  return ReadFlag(TKey::Of(u"ShowAddDialog"));
}
void TIniFileSectionWatchlist::SetShowAddDialog(bool iValue) {
  WriteFlag(TKey::Of(u"ShowAddDialog"), iValue);
}

bool TIniFileSectionWatchlist::GetStoreLastSelectedSoundFile() const {
  return ReadFlag(TKey::Of(u"StoreLastSelectedSoundFile"));
}
void TIniFileSectionWatchlist::SetStoreLastSelectedSoundFile(bool iValue) {
  WriteFlag(TKey::Of(u"StoreLastSelectedSoundFile"), iValue);
}

TString TIniFileSectionWatchlist::GetSoundFile() const { return ReadText(TKey::Of(u"SoundFile")); }
void TIniFileSectionWatchlist::SetSoundFile(TStringView iValue) {
  WriteText(TKey::Of(u"SoundFile"), iValue);
}

bool TIniFileSectionWatchlist::GetUpdateOnStartup() const {
  return ReadFlag(TKey::Of(u"UpdateOnStartup"));
}
void TIniFileSectionWatchlist::SetUpdateOnStartup(bool iValue) {
  WriteFlag(TKey::Of(u"UpdateOnStartup"), iValue);
}

bool TIniFileSectionWatchlist::GetUpdateOnInterval() const {
  return ReadFlag(TKey::Of(u"UpdateOnInterval"));
}
void TIniFileSectionWatchlist::SetUpdateOnInterval(bool iValue) {
  WriteFlag(TKey::Of(u"UpdateOnInterval"), iValue);
}

int TIniFileSectionWatchlist::GetUpdateIntervalInHrs() const {
  return ReadNumber(TKey::Of(u"UpdateIntervalInHrs"));
}
void TIniFileSectionWatchlist::SetUpdateIntervalInHrs(int iValue) {
  WriteNumber(TKey::Of(u"UpdateIntervalInHrs"), iValue);
}

TDateTime TIniFileSectionWatchlist::GetUpdateLastDate() const {
  TDateTime date;
  return TryStrToDateTime(ReadText(TKey::Of(u"UpdateLastDate")), date) ? date : TDateTime();
}
void TIniFileSectionWatchlist::SetUpdateLastDate(TDateTime iValue) {
  WriteText(TKey::Of(u"UpdateLastDate"), iValue.IsZero() ? TString() : DateTimeToStr(iValue));
}

TString TIniFileSectionWatchlist::GetLastSelected() const {
  return ReadText(TKey::Of(u"LastSelected"));
}
void TIniFileSectionWatchlist::SetLastSelected(TStringView iValue) {
  WriteText(TKey::Of(u"LastSelected"), iValue);
}

int TIniFileSectionWatchlist::GetRemindType() const { return ReadNumber(TKey::Of(u"RemindType")); }
void TIniFileSectionWatchlist::SetRemindType(int iValue) {
  WriteNumber(TKey::Of(u"RemindType"), iValue);
}

int TIniFileSectionWatchlist::GetRemindTimeSpanOffsetInSecs() const {
  return ReadNumber(TKey::Of(u"RemindTimeSpanOffsetInSecs"));
}
void TIniFileSectionWatchlist::SetRemindTimeSpanOffsetInSecs(int iValue) {
  WriteNumber(TKey::Of(u"RemindTimeSpanOffsetInSecs"), iValue);
}

int TIniFileSectionWatchlist::GetRemindTimeRelative() const {
  return ReadNumber(TKey::Of(u"RemindTimeRelativeIndex"));
}
void TIniFileSectionWatchlist::SetRemindTimeRelative(int iValue) {
  WriteNumber(TKey::Of(u"RemindTimeRelativeIndex"), iValue);
}

bool TIniFileSectionWatchlist::GetAutoActivateReminder() const {
  return ReadFlag(TKey::Of(u"AutoActivateReminder"));
}
void TIniFileSectionWatchlist::SetAutoActivateReminder(bool iValue) {
  WriteFlag(TKey::Of(u"AutoActivateReminder"), iValue);
}

bool TIniFileSectionWatchlist::GetUseDefaultReminderTimes() const {
  return ReadFlag(TKey::Of(u"UseDefaultReminderTimes"));
}
void TIniFileSectionWatchlist::SetUseDefaultReminderTimes(bool iValue) {
  WriteFlag(TKey::Of(u"UseDefaultReminderTimes"), iValue);
}

bool TIniFileSectionWatchlist::GetDefaultReminderAfterTime() const {
  return ReadFlag(TKey::Of(u"DefaultReminderAfterTime"));
}
void TIniFileSectionWatchlist::SetDefaultReminderAfterTime(bool iValue) {
  WriteFlag(TKey::Of(u"DefaultReminderAfterTime"), iValue);
}

int TIniFileSectionWatchlist::GetDefaultReminderHours() const {
  return ReadNumber(TKey::Of(u"DefaultReminderHours"));
}
void TIniFileSectionWatchlist::SetDefaultReminderHours(int iValue) {
  WriteNumber(TKey::Of(u"DefaultReminderHours"), iValue);
}

int TIniFileSectionWatchlist::GetDefaultReminderMinutes() const {
  return ReadNumber(TKey::Of(u"DefaultReminderMinutes"));
}
void TIniFileSectionWatchlist::SetDefaultReminderMinutes(int iValue) {
  WriteNumber(TKey::Of(u"DefaultReminderMinutes"), iValue);
}

int TIniFileSectionWatchlist::GetDefaultReminderSeconds() const {
  return ReadNumber(TKey::Of(u"DefaultReminderSeconds"));
}
void TIniFileSectionWatchlist::SetDefaultReminderSeconds(int iValue) {
  WriteNumber(TKey::Of(u"DefaultReminderSeconds"), iValue);
}

int TIniFileSectionWatchlist::GetRelativeTimeIndex() const {
  return ReadNumber(TKey::Of(u"RelativeTimeInMinutes"));
}
void TIniFileSectionWatchlist::SetRelativeTimeIndex(int iValue) {
  WriteNumber(TKey::Of(u"RelativeTimeInMinutes"), iValue);
}

int TIniFileSectionWatchlist::GetDefaultRemindType() const {
  return ReadNumber(TKey::Of(u"DefaultRemindType"));
}
void TIniFileSectionWatchlist::SetDefaultRemindType(int iValue) {
  WriteNumber(TKey::Of(u"DefaultRemindType"), iValue);
}

void TIniFileSectionWatchlist::GetDefaultCategory(TStringList& ioList) const {
  ioList.Clear();
  TStringList lines;
  File().ReadSectionValues(Section(), lines);
  // Every line of the section, whatever its key: looks like a mistake and is required.
  for (int i = 0; i < lines.GetCount(); ++i) {
    TString line = lines.GetValueFromIndex(i);
    const size_t at = line.find(u';');
    if (at != TString::npos) line[at] = u'=';
    ioList.Add(line);
  }
}

TGuid TIniFileSectionWatchlist::GetDefaultCategory(const TGuid& iIntegrationId) const {
  TStringList list;
  GetDefaultCategory(list);
  TGuid categoryId;
  const int index = list.IndexOfName(GUIDToString(iIntegrationId));
  if (index >= 0) TryStringToGuid(list.GetValueFromIndex(index), categoryId);
  return categoryId;
}

void TIniFileSectionWatchlist::SetDefaultCategory(const TGuid& iIntegrationId,
                                                  const TGuid& iCategoryId) {
  TStringList list;
  GetDefaultCategory(list);
  const TString name = GUIDToString(iIntegrationId);
  if (!SameGuid(iCategoryId, cEmptyGuid)) {
    list.SetValue(name, GUIDToString(iCategoryId));
  } else if (const int index = list.IndexOfName(name); index >= 0) {
    list.Delete(index);
  }
  // In one go, because the section gains lines at every call.
  TStringList lines;
  for (int i = 0; i < list.GetCount(); ++i) {
    lines.Add(TString(cDefaultCategory) + IntToStr(i) + u"=" + list.GetName(i) + u";" +
              list.GetValueFromIndex(i));
  }
  File().InOneWrite([&] {
    DeleteDefaultCategoryNodes();
    File().WriteSectionValues(Section(), lines);
  });
}

void TIniFileSectionWatchlist::GetDefaultCategoryNodes(TStringList& ioList) const {
  ioList.Clear();
  File().ReadSection(Section(), ioList);
  for (int i = ioList.GetCount() - 1; i >= 0; --i) {
    if (!StartsWith(ioList.Get(i), cDefaultCategory)) ioList.Delete(i);
  }
}

bool TIniFileSectionWatchlist::HasDefaultCategoryNodes() const {
  TStringList nodes;
  GetDefaultCategoryNodes(nodes);
  return nodes.GetCount() > 0;
}

void TIniFileSectionWatchlist::DeleteDefaultCategoryNodes() {
  TStringList nodes;
  GetDefaultCategoryNodes(nodes);
  File().DeleteKeys(Section(), nodes);
}

void TIniFileSectionWatchlist::SetDefaultCategoryNodes(const TStringList& iList) {
  DeleteDefaultCategoryNodes();
  // The list is counted and not written: looks like a mistake and is required.
  (void)iList.GetCount();
}

}  // namespace kk
