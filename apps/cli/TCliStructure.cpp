#include "apps/cli/TCliStructure.h"

#include <algorithm>
#include <array>

#include "apps/cli/TCliLookup.h"
#include "apps/cli/TerminalText.h"

namespace kk {
namespace {

using TWords = std::vector<TString>;

// Each item once, in the order of the words.
std::vector<TGuid> ItemIds(const TWatchlistInfo& iTree, TWords::const_iterator iFrom,
                           TWords::const_iterator iTo) {
  const TCliLookup lookup(iTree);
  std::vector<TGuid> result;
  for (auto word = iFrom; word != iTo; ++word) {
    const TGuid& id = lookup.Item(*word).Id;
    if (std::ranges::find(result, id) == result.end()) result.push_back(id);
  }
  return result;
}

// A text of one empty line is no text. A word may hold several lines.
std::vector<TString> Lines(const TWords& iWords) {
  if (iWords.size() == 1 && iWords[0].empty()) return {};
  std::vector<TString> result;
  for (const TString& word : iWords) {
    if (word.empty()) result.emplace_back();
    for (TString& line : Split(word, u'\n')) {
      if (!line.empty() && line.back() == u'\r') line.pop_back();
      result.push_back(std::move(line));
    }
  }
  return result;
}

std::vector<TString> LinesFrom(const TCliArguments& iCall) {
  if (iCall.Text) return Lines(*iCall.Text);
  return Lines({iCall.Words.begin() + 1, iCall.Words.end()});
}

}  // namespace

bool TCliStructure::Knows(const TCliCommandInfo& iCommand) {
  constexpr auto cNames = std::to_array<TStringView>({u"move", u"delete", u"note"});
  return StartsWith(iCommand.Name, u"category ") ||
         std::ranges::find(cNames, iCommand.Name) != cNames.end();
}

bool TCliStructure::Run(const TCliArguments& iCall) {
  const TStringView name = iCall.Command->Name;
  if (name == u"category add") return AddCategory(iCall);
  if (name == u"category rename") return RenameCategory(iCall);
  if (name == u"category describe") return DescribeCategory(iCall);
  if (name == u"category move") return MoveCategory(iCall);
  if (name == u"category delete") return DeleteCategory(iCall);
  if (name == u"move") return MoveItems(iCall);
  if (name == u"delete") return DeleteItems(iCall);
  return SetNote(iCall);
}

bool TCliStructure::Told(bool iDone, TStringView iText) {
  if (iDone) {
    FContext.Console.Print(iText);
    return true;
  }
  FContext.Console.Complain(
      FContext.Console.IsInteractive()
          ? TString(u"Abgebrochen.")
          : TString(
                u"Fehler: Nicht ausgeführt, die Rückfrage blieb unbeantwortet (--yes sagt ja)."));
  return false;
}

bool TCliStructure::AddCategory(const TCliArguments& iCall) {
  IWatchlistAccess& list = FContext.Plugins.List();
  std::optional<TGuid> parent;
  if (iCall.In) {
    const TWatchlistInfo tree = list.GetTree();
    parent = TCliLookup(tree).Category(*iCall.In).Id;
  }
  const auto lines = iCall.Text ? Lines(*iCall.Text) : std::vector<TString>();
  const TGuid id = list.AddCategory(parent, iCall.Words[0], lines);
  return Told(
      true, Format(u"Kategorie angelegt: %s %s", {ForTerminal(iCall.Words[0]), GUIDToString(id)}));
}

bool TCliStructure::RenameCategory(const TCliArguments& iCall) {
  const TWatchlistInfo tree = FContext.Plugins.List().GetTree();
  const TWatchlistCategoryInfo& category = TCliLookup(tree).Category(iCall.Words[0]);
  FContext.Plugins.List().RenameCategory(category.Id, iCall.Words[1]);
  return Told(true, Format(u"Kategorie umbenannt: %s heißt jetzt %s",
                           {ForTerminal(category.Name), ForTerminal(iCall.Words[1])}));
}

bool TCliStructure::DescribeCategory(const TCliArguments& iCall) {
  const TWatchlistInfo tree = FContext.Plugins.List().GetTree();
  const TWatchlistCategoryInfo& category = TCliLookup(tree).Category(iCall.Words[0]);
  FContext.Plugins.List().DescribeCategory(category.Id, LinesFrom(iCall));
  return Told(true, Format(u"Beschreibung geändert: %s", {ForTerminal(category.Name)}));
}

bool TCliStructure::MoveCategory(const TCliArguments& iCall) {
  const TWatchlistInfo tree = FContext.Plugins.List().GetTree();
  const TCliLookup lookup(tree);
  const TWatchlistCategoryInfo& category = lookup.Category(iCall.Words[0]);
  std::optional<TGuid> target;
  if (!iCall.Top) target = lookup.Category(iCall.Words[1]).Id;
  FContext.Plugins.List().MoveCategory(category.Id, target);
  return Told(true, Format(u"Kategorie verschoben: %s", {ForTerminal(category.Name)}));
}

bool TCliStructure::DeleteCategory(const TCliArguments& iCall) {
  const TWatchlistInfo tree = FContext.Plugins.List().GetTree();
  const TWatchlistCategoryInfo& category = TCliLookup(tree).Category(iCall.Words[0]);
  const bool done = FContext.Plugins.List().DeleteCategory(category.Id);
  return Told(done, Format(u"Kategorie gelöscht: %s", {ForTerminal(category.Name)}));
}

bool TCliStructure::MoveItems(const TCliArguments& iCall) {
  const TWatchlistInfo tree = FContext.Plugins.List().GetTree();
  const auto last = iCall.Words.end() - 1;
  const TWatchlistCategoryInfo& target = TCliLookup(tree).Category(*last);
  const auto items = ItemIds(tree, iCall.Words.begin(), last);
  FContext.Plugins.List().MoveItems(items, target.Id);
  return Told(true,
              Format(u"%d Artikel verschoben: nach %s", {items.size(), ForTerminal(target.Name)}));
}

bool TCliStructure::DeleteItems(const TCliArguments& iCall) {
  const TWatchlistInfo tree = FContext.Plugins.List().GetTree();
  const auto items = ItemIds(tree, iCall.Words.begin(), iCall.Words.end());
  const bool done = FContext.Plugins.List().DeleteItems(items);
  return Told(done, Format(u"%d Artikel gelöscht.", {items.size()}));
}

bool TCliStructure::SetNote(const TCliArguments& iCall) {
  const TWatchlistInfo tree = FContext.Plugins.List().GetTree();
  const auto first = iCall.Words.begin();
  const auto items = ItemIds(tree, first, iCall.Text ? iCall.Words.end() : first + 1);
  const bool done = FContext.Plugins.List().SetNote(items, LinesFrom(iCall));
  return Told(done, Format(u"Notiz geändert bei %d Artikel.", {items.size()}));
}

}  // namespace kk
