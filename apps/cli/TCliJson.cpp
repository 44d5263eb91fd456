#include "apps/cli/TCliJson.h"

#include <array>
#include <nlohmann/json.hpp>

namespace kk {
namespace {

using TJson = nlohmann::ordered_json;

constexpr std::array<TStringView, 5> cReminderTypes = {u"sound", u"window", u"sms", u"calendar",
                                                       u"email"};

TJson Id(const TGuid& iId) { return ToUtf8(GUIDToString(iId)); }

TJson Time(TDateTime iTime) {
  return iTime.IsZero() ? TJson(nullptr) : TJson(ToUtf8(DateTimeToIso(iTime)));
}

TJson Lines(const std::vector<TString>& iLines) {
  TJson result = TJson::array();
  for (const TString& line : iLines) result.push_back(ToUtf8(line));
  return result;
}

TJson ToJson(const TWatchlistItemInfo& iItem) {
  return {{"id", Id(iItem.Id)},
          {"name", ToUtf8(iItem.Name)},
          {"lastUpdate", Time(iItem.LastUpdate)},
          {"endTime", Time(iItem.EndTime)},
          {"note", Lines(iItem.Note)}};
}

TJson ToJson(const TWatchlistGroupInfo& iGroup) {
  TJson items = TJson::array();
  for (const TWatchlistItemInfo& item : iGroup.Items) items.push_back(ToJson(item));
  return {{"pluginId", Id(iGroup.PluginId)}, {"name", ToUtf8(iGroup.Name)}, {"items", items}};
}

TJson ToJson(const TWatchlistCategoryInfo& iCategory) {
  TJson groups = TJson::array();
  for (const TWatchlistGroupInfo& group : iCategory.Groups) groups.push_back(ToJson(group));
  TJson categories = TJson::array();
  for (const TWatchlistCategoryInfo& child : iCategory.Categories) {
    categories.push_back(ToJson(child));
  }
  return {{"id", Id(iCategory.Id)},
          {"name", ToUtf8(iCategory.Name)},
          {"description", Lines(iCategory.Description)},
          {"expanded", iCategory.Expanded},
          {"groups", groups},
          {"categories", categories}};
}

TJson ToJson(const TWatchlistReminderInfo& iReminder) {
  TJson types = TJson::array();
  for (int type : iReminder.Types) types.push_back(ToUtf8(ReminderTypeName(type)));
  return {{"id", Id(iReminder.Id)},
          {"time", Time(iReminder.Time)},
          {"types", types},
          {"soundFile",
           iReminder.SoundFile.empty() ? TJson(nullptr) : TJson(ToUtf8(iReminder.SoundFile))}};
}

// JSON leaves U+007F to U+009F as they are; in UTF-8 they stand inside of texts alone.
std::string Write(const TJson& iJson) {
  constexpr char cHex[] = "0123456789abcdef";
  const std::string text = iJson.dump(2);
  std::string result;
  result.reserve(text.size());
  for (size_t i = 0; i < text.size(); ++i) {
    const auto byte = static_cast<unsigned char>(text[i]);
    const auto next = static_cast<unsigned char>(i + 1 < text.size() ? text[i + 1] : '\0');
    const bool isC1 = byte == 0xC2 && next >= 0x80 && next <= 0x9F;
    if (byte != 0x7F && !isC1) {
      result += text[i];
      continue;
    }
    const unsigned char value = isC1 ? next : byte;
    result.append("\\u00").append(1, cHex[value >> 4]).append(1, cHex[value & 15]);
    if (isC1) ++i;
  }
  return result;
}

const char* TypeName(TSettingsKeyType iType) {
  switch (iType) {
    case TSettingsKeyType::sktBoolean:
      return "boolean";
    case TSettingsKeyType::sktInteger:
      return "integer";
    case TSettingsKeyType::sktSecret:
      return "secret";
    case TSettingsKeyType::sktString:
      break;
  }
  return "string";
}

}  // namespace

TStringView ReminderTypeName(int iType) {
  if (iType < 0 || static_cast<size_t>(iType) >= cReminderTypes.size()) return u"?";
  return cReminderTypes[static_cast<size_t>(iType)];
}

std::string TCliJson::Tree(const TWatchlistInfo& iTree) {
  TJson categories = TJson::array();
  for (const TWatchlistCategoryInfo& category : iTree.Categories) {
    categories.push_back(ToJson(category));
  }
  TJson reminders = TJson::array();
  for (const TWatchlistReminderInfo& reminder : iTree.Reminders) {
    reminders.push_back(ToJson(reminder));
  }
  return Write({{"categories", categories}, {"reminders", reminders}});
}

std::string TCliJson::Item(const TCliItemDetails& iDetails) {
  TJson result = ToJson(iDetails.Item);
  result["source"] = ToUtf8(iDetails.Source);
  result["category"] = ToUtf8(iDetails.Category);
  TJson values = TJson::array();
  for (const auto& [title, value] : iDetails.Values) {
    values.push_back({{"title", ToUtf8(title)}, {"value", ToUtf8(value)}});
  }
  result["values"] = values;
  result["reminder"] = iDetails.Reminder == nullptr ? TJson(nullptr) : ToJson(*iDetails.Reminder);
  return Write(result);
}

std::string TCliJson::Reminders(const std::vector<TCliReminder>& iReminders) {
  TJson result = TJson::array();
  for (const TCliReminder& reminder : iReminders) {
    TJson entry = ToJson(reminder.Info);
    entry["name"] = reminder.HasItem ? TJson(ToUtf8(reminder.ItemName)) : TJson(nullptr);
    entry["overdue"] = reminder.Overdue;
    result.push_back(entry);
  }
  return Write(result);
}

std::string TCliJson::Settings(const std::vector<TCliSetting>& iSettings) {
  TJson result = TJson::array();
  for (const TCliSetting& setting : iSettings) {
    TJson entry = {{"section", ToUtf8(setting.Info.Section)}, {"key", ToUtf8(setting.Info.Key)},
                   {"type", TypeName(setting.Info.Type)},     {"value", ToUtf8(setting.Value)},
                   {"default", ToUtf8(setting.Info.Default)}, {"isDefault", setting.IsDefault}};
    if (setting.Info.Type == TSettingsKeyType::sktInteger) {
      entry["min"] = setting.Info.Min;
      entry["max"] = setting.Info.Max;
    }
    entry["meaning"] = ToUtf8(setting.Info.Meaning);
    result.push_back(entry);
  }
  return Write(result);
}

}  // namespace kk
