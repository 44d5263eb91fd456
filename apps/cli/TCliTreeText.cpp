#include "apps/cli/TCliTreeText.h"

#include <algorithm>

#include "apps/cli/TCliLookup.h"
#include "apps/cli/TCliReminderText.h"
#include "apps/cli/TerminalText.h"

namespace kk {
namespace {

constexpr TStringView cBetweenFacts = u" · ";
// A source tells what matters most in its first columns; the rest stands in the item's own view.
constexpr size_t cMaxColumns = 4;
constexpr size_t cMaxShortValue = 40;

TString Branch(bool iLast) { return iLast ? u"└─ " : u"├─ "; }
TString Below(bool iLast) { return iLast ? u"   " : u"│  "; }

void AddFact(TString& ioFacts, TStringView iFact) {
  if (!ioFacts.empty()) ioFacts += cBetweenFacts;
  ioFacts += iFact;
}

TString ReminderText(const TWatchlistReminderInfo& iReminder) {
  return Format(u"%s (%s)", {DateTimeToStr(iReminder.Time), ReminderKinds(iReminder)});
}

size_t CountCategories(const std::vector<TWatchlistCategoryInfo>& iCategories) {
  size_t result = iCategories.size();
  for (const auto& category : iCategories) result += CountCategories(category.Categories);
  return result;
}

TString TimeOrNever(TDateTime iTime) {
  return iTime.IsZero() ? TString(u"nie") : DateTimeToStr(iTime);
}

}  // namespace

std::vector<TString> TCliTreeText::Tree(const TWatchlistInfo& iTree) {
  FTree = &iTree;
  FLines.clear();
  const size_t items = TCliLookup(iTree).ItemCount();
  FLines.push_back(
      Format(u"Beobachten: %d Artikel in %s",
             {items, Counted(CountCategories(iTree.Categories), u"Kategorie", u"Kategorien")}));
  for (const TWatchlistCategoryInfo& category : iTree.Categories) {
    AddCategory(category, {}, &category == &iTree.Categories.back());
  }
  return std::move(FLines);
}

void TCliTreeText::AddCategory(const TWatchlistCategoryInfo& iCategory, const TString& iIndent,
                               bool iLast) {
  FLines.push_back(iIndent + Branch(iLast) + ForTerminal(iCategory.Name) + u"  " +
                   GUIDToString(iCategory.Id));
  const TString indent = iIndent + Below(iLast);
  const bool hasChildren = !iCategory.Groups.empty() || !iCategory.Categories.empty();
  for (const TString& line : iCategory.Description) {
    FLines.push_back(indent + (hasChildren ? u"│  " : u"   ") + ForTerminal(line));
  }
  for (const TWatchlistGroupInfo& group : iCategory.Groups) {
    AddGroup(group, indent, iCategory.Categories.empty() && &group == &iCategory.Groups.back());
  }
  for (const TWatchlistCategoryInfo& child : iCategory.Categories) {
    AddCategory(child, indent, &child == &iCategory.Categories.back());
  }
}

void TCliTreeText::AddGroup(const TWatchlistGroupInfo& iGroup, const TString& iIndent, bool iLast) {
  FLines.push_back(iIndent + Branch(iLast) + u"[" + ForTerminal(iGroup.Name) + u"]");
  for (const TWatchlistItemInfo& item : iGroup.Items) {
    AddItem(item, iGroup.PluginId, iIndent + Below(iLast), &item == &iGroup.Items.back());
  }
}

void TCliTreeText::AddItem(const TWatchlistItemInfo& iItem, const TGuid& iSource,
                           const TString& iIndent, bool iLast) {
  FLines.push_back(iIndent + Branch(iLast) + ForTerminal(iItem.Name) + u"  " +
                   GUIDToString(iItem.Id));
  const TString indent = iIndent + Below(iLast);
  const TString facts = Facts(iItem, iSource);
  if (!facts.empty()) FLines.push_back(indent + facts);
  for (const TString& line : iItem.Note) FLines.push_back(indent + u"Notiz: " + ForTerminal(line));
}

TString TCliTreeText::Facts(const TWatchlistItemInfo& iItem, const TGuid& iSource) const {
  TString result;
  const TValues values = FTell(iSource, iItem.SearchResult);
  for (size_t i = 0; i < std::min(values.size(), cMaxColumns); ++i) {
    const TString& value = values[i].second;
    const bool isTold = value == iItem.Name || value.size() > cMaxShortValue;
    if (!value.empty() && !isTold) AddFact(result, ForTerminal(value));
  }
  if (!iItem.EndTime.IsZero()) AddFact(result, u"endet " + DateTimeToStr(iItem.EndTime));
  AddFact(result, u"Stand " + TimeOrNever(iItem.LastUpdate));
  for (const TWatchlistReminderInfo& reminder : FTree->Reminders) {
    if (reminder.Id == iItem.Id) AddFact(result, u"Erinnerung " + ReminderText(reminder));
  }
  return result;
}

std::vector<TString> TCliTreeText::Item(const TCliItemDetails& iDetails) {
  const TWatchlistItemInfo& item = iDetails.Item;
  TValues rows = {{u"Name", item.Name}, {u"Id", GUIDToString(item.Id)}};
  rows.emplace_back(u"Quelle", iDetails.Source);
  rows.emplace_back(u"Kategorie", iDetails.Category);
  rows.emplace_back(u"Stand", TimeOrNever(item.LastUpdate));
  if (!item.EndTime.IsZero()) rows.emplace_back(u"Endet", DateTimeToStr(item.EndTime));
  for (const auto& value : iDetails.Values) {
    const bool isTold = std::ranges::find(rows, value) != rows.end();
    if (!value.second.empty() && !isTold) rows.push_back(value);
  }
  if (iDetails.Reminder != nullptr)
    rows.emplace_back(u"Erinnerung", ReminderText(*iDetails.Reminder));
  for (const TString& line : item.Note) rows.emplace_back(u"Notiz", line);
  size_t width = 0;
  for (const auto& row : rows) width = std::max(width, row.first.size());
  std::vector<TString> result;
  for (const auto& [title, value] : rows) {
    result.push_back(ForTerminal(title) + u":" + TString(width - title.size() + 1, u' ') +
                     ForTerminal(value));
  }
  return result;
}

}  // namespace kk
