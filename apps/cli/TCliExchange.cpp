#include "apps/cli/TCliExchange.h"

#include <algorithm>
#include <array>
#include <unordered_set>

#include "apps/cli/AskToReplace.h"
#include "apps/cli/ECliUsage.h"
#include "apps/cli/TCliLookup.h"
#include "apps/cli/TerminalText.h"
#include "host/common/TFileHelper.h"

namespace kk {
namespace {

template <class T>
bool HasOrAll(const std::vector<T>& iLst, const T& iValue) {
  return iLst.empty() || std::ranges::find(iLst, iValue) != iLst.end();
}

// The ids of the items that go.
void Collect(const std::vector<TWatchlistCategoryInfo>& iCategories,
             const TWatchlistExportChoice& iChoice, bool iChosenAbove,
             std::unordered_set<TGuid>& oIds) {
  for (const TWatchlistCategoryInfo& category : iCategories) {
    const bool chosen = iChosenAbove || HasOrAll(iChoice.Categories, category.Id);
    for (const TWatchlistGroupInfo& group : category.Groups) {
      if (!chosen || !HasOrAll(iChoice.Sources, group.PluginId)) continue;
      for (const TWatchlistItemInfo& item : group.Items) oIds.insert(item.Id);
    }
    Collect(category.Categories, iChoice, chosen, oIds);
  }
}

size_t CountCategories(const std::vector<TWatchlistCategoryInfo>& iCategories) {
  size_t count = iCategories.size();
  for (const auto& category : iCategories) count += CountCategories(category.Categories);
  return count;
}

// A reminder may have come due meanwhile.
size_t Grown(size_t iBefore, size_t iAfter) { return iAfter > iBefore ? iAfter - iBefore : 0; }

}  // namespace

bool TCliExchange::Knows(const TCliCommandInfo& iCommand) {
  constexpr auto cNames = std::to_array<TStringView>({u"export", u"import"});
  return StartsWith(iCommand.Name, u"mobile ") ||
         std::ranges::find(cNames, iCommand.Name) != cNames.end();
}

bool TCliExchange::Run(const TCliArguments& iCall) {
  if (iCall.IsCommand(u"export")) return Export(iCall);
  if (iCall.IsCommand(u"mobile export")) return ExportMobile(iCall);
  return Import(iCall);
}

TGuid TCliExchange::SourceId(TStringView iName) const {
  TGuid id;
  const bool isId = TryStringToGuid(iName, id);
  TString hint = u"Quellen:";
  for (const TIntf<IWatchlistIntegration>& source : FContext.Plugins.Sources()) {
    if (isId ? source->GetId() == id : SameText(source->GetName(), iName)) return source->GetId();
    hint += Format(u"\n  %s %s", {GUIDToString(source->GetId()), ForTerminal(source->GetName())});
  }
  throw ECliUsage(Format(u"Die Quelle gibt es nicht: %s", {ForTerminal(iName)}), hint);
}

bool TCliExchange::Export(const TCliArguments& iCall) {
  const TString& file = iCall.Words[0];
  const TWatchlistInfo tree = FContext.Plugins.List().GetTree();
  const TCliLookup lookup(tree);
  TWatchlistExportChoice choice;
  for (const TString& name : iCall.Categories) {
    choice.Categories.push_back(lookup.Category(name).Id);
  }
  for (const TString& name : iCall.Sources) choice.Sources.push_back(SourceId(name));
  AskToReplace(file);
  if (!FContext.Plugins.List().ExportToFile(file, choice)) return false;
  std::unordered_set<TGuid> items;
  Collect(tree.Categories, choice, false, items);
  FContext.Console.Print(Format(u"%d Artikel geschrieben: %s", {items.size(), ForTerminal(file)}));
  return true;
}

bool TCliExchange::ExportMobile(const TCliArguments& iCall) {
  const TString& file = iCall.Words[0];
  AskToReplace(file);
  FContext.Plugins.List().ExportToMobile(file);
  FContext.Console.Print(Format(u"Für Kaufkobolde Mobile geschrieben: %s", {ForTerminal(file)}));
  return true;
}

// An id means the category that bears it.
TString TCliExchange::CategoryName(const TCliArguments& iCall) const {
  if (!iCall.Category) return {};
  const TWatchlistInfo tree = FContext.Plugins.List().GetTree();
  const TCliLookup lookup(tree);
  TGuid id;
  const bool isNew =
      !TryStringToGuid(*iCall.Category, id) && lookup.CountCategories(*iCall.Category) == 0;
  return isNew ? Trim(*iCall.Category) : lookup.Category(*iCall.Category).Name;
}

bool TCliExchange::Import(const TCliArguments& iCall) {
  const TString& file = iCall.Words[0];
  if (!FileExists(file)) {
    throw Exception(Format(u"Datei nicht vorhanden: %s", {ForTerminal(file)}));
  }
  IWatchlistAccess& list = FContext.Plugins.List();
  const TWatchlistInfo before = list.GetTree();
  FContext.Forms.TakeLastResult();
  const bool done = iCall.IsCommand(u"import") ? list.ImportFromFile(file, CategoryName(iCall))
                                               : list.ImportFromMobile(file);
  if (!done && FContext.Forms.TakeLastResult() == cModalCancel) {
    FContext.Console.Complain(u"Abgebrochen.");
  }
  TellWhatCame(before, done);
  return done;
}

void TCliExchange::TellWhatCame(const TWatchlistInfo& iBefore, bool iDone) {
  const TWatchlistInfo after = FContext.Plugins.List().GetTree();
  const size_t items = Grown(TCliLookup(iBefore).ItemCount(), TCliLookup(after).ItemCount());
  const size_t categories =
      Grown(CountCategories(iBefore.Categories), CountCategories(after.Categories));
  const size_t reminders = Grown(iBefore.Reminders.size(), after.Reminders.size());
  if (items + categories + reminders > 0) {
    const TString what =
        Format(u"%s, %s, %s", {Counted(items, u"Artikel", u"Artikel"),
                               Counted(categories, u"Kategorie", u"Kategorien"),
                               Counted(reminders, u"Erinnerung", u"Erinnerungen")});
    return iDone ? FContext.Console.Print(Format(u"Übernommen: %s", {what}))
                 : FContext.Console.Complain(
                       Format(u"Hinweis: Nicht alles ist übernommen, nur: %s", {what}));
  }
  iDone ? FContext.Console.Print(u"Es ist nichts darin, was neu wäre.")
        : FContext.Console.Complain(u"Fehler: Es ist nichts übernommen worden.");
}

}  // namespace kk
