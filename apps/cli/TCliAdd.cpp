#include "apps/cli/TCliAdd.h"

#include <algorithm>

#include "apps/cli/ECliUsage.h"
#include "apps/cli/FindControl.h"
#include "apps/cli/TCliUpdates.h"
#include "apps/cli/TerminalText.h"
#include "host/base/Guard.h"
#include "host/contract/IWatchlistVisualization.h"
#include "host/controls/TComboBox.h"

namespace kk {
namespace {

// The list of categories in the window that asks for the place of new results.
constexpr TStringView cCategoryBox = u"cmbxCategory";
constexpr TStringView cAddNewButton = u"btnOnlyNew";

// The item that now stands for the result that was added.
const TWatchlistItemInfo* FindSame(const std::vector<TWatchlistCategoryInfo>& iCategories,
                                   const TGuid& iSource, const TIntf<ISearchResult>& iResult,
                                   TGuid& oCategory) {
  for (const TWatchlistCategoryInfo& category : iCategories) {
    for (const TWatchlistGroupInfo& group : category.Groups) {
      if (group.PluginId != iSource) continue;
      for (const TWatchlistItemInfo& item : group.Items) {
        if (!item.SearchResult || !item.SearchResult->IsSame(iResult)) continue;
        oCategory = category.Id;
        return &item;
      }
    }
    if (const auto found = FindSame(category.Categories, iSource, iResult, oCategory)) return found;
  }
  return nullptr;
}

}  // namespace

bool TCliAdd::Run(const TCliArguments& iCall) {
  CheckCategory(iCall);
  std::optional<TCliFormHost::TAnswering> answering;
  if (!FCategory.empty()) {
    answering.emplace(FContext.Forms, [this](TForm& ioForm) { return AnswerDialog(ioForm); });
  }
  const size_t total = iCall.Words.size();
  size_t done = 0;
  size_t added = 0;
  for (const TString& address : iCall.Words) {
    const TString progress = Format(u"%d von %d: %s", {++done, total, ForTerminal(address)});
    FContext.Console.Progress(progress);
    const TOutcome outcome = Add(address, progress);
    if (outcome == TOutcome::Added) ++added;
    if (outcome == TOutcome::Interrupted || LeavesAfterQuestion()) break;
  }
  FContext.Console.Progress({});
  if (total > 1) FContext.Console.Print(Format(u"%d von %d aufgenommen.", {added, total}));
  return added == total;
}

// Ctrl+C in a question means the whole command.
bool TCliAdd::LeavesAfterQuestion() {
  if (!FContext.Console.TakeInterrupt()) return false;
  FContext.Console.Complain(u"Abgebrochen.");
  return true;
}

void TCliAdd::CheckCategory(const TCliArguments& iCall) {
  if (!iCall.Category) return;
  const TWatchlistInfo tree = FContext.Plugins.List().GetTree();
  const TCliLookup lookup(tree);
  TGuid id;
  const bool mayBeNew = iCall.Create && !TryStringToGuid(*iCall.Category, id);
  if (mayBeNew && lookup.CountCategories(*iCall.Category) == 0) {
    FCategory = Trim(*iCall.Category);
    return;
  }
  try {
    const TWatchlistCategoryInfo& category = lookup.Category(*iCall.Category);
    FCategory = category.Name;
    FTarget = category.Id;
  } catch (const ECliUsage& e) {
    if (lookup.CountCategories(*iCall.Category) > 0) throw;
    throw ECliUsage(e.Message(), e.Hint() + u"\nMit --create wird sie angelegt.");
  }
}

TCliAdd::TNew TCliAdd::Find(TStringView iAddress) const {
  for (const TIntf<IWatchlistIntegration>& source : FContext.Plugins.Sources()) {
    const auto view = Supports<IWatchlistVisualization>(source);
    if (!view) continue;
    TIntf<ISearchResult> result;
    Guarded(u"TCliAdd.Find", [&] { result = view->CreateSearchResultFromCmdLine(iAddress); });
    if (result) return {source->GetId(), result};
  }
  return {};
}

TCliAdd::TOutcome TCliAdd::Refuse(TStringView iFormat, TStringView iAddress) {
  FContext.Console.Complain(u"Fehler: " + Format(iFormat, {ForTerminal(iAddress)}));
  return TOutcome::Refused;
}

TCliAdd::TOutcome TCliAdd::Add(const TString& iAddress, const TString& iProgress) {
  const TNew added = Find(iAddress);
  if (!added.Result) return Refuse(u"Keine Quelle kennt diese Adresse: %s", iAddress);
  IWatchlist& watchlist = FContext.Plugins.Adding();
  if (watchlist.HasItem(added.Source, added.Result)) {
    return Refuse(u"Der Artikel wird schon beobachtet: %s", iAddress);
  }
  TCliUpdates updates(FContext);
  if (!watchlist.AddItem(added.Source, added.Result)) {
    return Refuse(u"Nicht aufgenommen, die Frage nach der Kategorie wurde abgebrochen: %s",
                  iAddress);
  }
  if (!updates.Wait(iProgress, [](const TCliUpdates::TEnd&) {})) {
    return TOutcome::Interrupted;
  }
  if (!watchlist.HasItem(added.Source, added.Result)) {
    return Refuse(u"Der Artikel konnte nicht abgerufen werden und ist nicht aufgenommen: %s",
                  iAddress);
  }
  PutIntoCategory(added);
  return TOutcome::Added;
}

bool TCliAdd::AnswerDialog(TForm& ioForm) const {
  auto* const box = dynamic_cast<TComboBox*>(FindControl(ioForm, cCategoryBox));
  auto* const add = dynamic_cast<TButton*>(FindControl(ioForm, cAddNewButton));
  if (box == nullptr || add == nullptr) return false;
  const auto& items = box->Items();
  const auto entry = std::ranges::find_if(
      items, [this](const TString& iEntry) { return SameText(iEntry, FCategory); });
  if (entry != items.end()) {
    box->Select(static_cast<int>(entry - items.begin()));
  } else {
    box->EnterText(FCategory);
  }
  return add->Click();
}

void TCliAdd::PutIntoCategory(const TNew& iNew) {
  IWatchlistAccess& list = FContext.Plugins.List();
  const TWatchlistInfo tree = list.GetTree();
  TGuid category;
  const auto item = FindSame(tree.Categories, iNew.Source, iNew.Result, category);
  if (item == nullptr) return;
  if (!FCategory.empty() && !FTarget) {
    // The window has made it, unless the settings have switched the window off.
    const TCliLookup lookup(tree);
    FTarget = lookup.CountCategories(FCategory) > 0 ? lookup.Category(FCategory).Id
                                                    : list.AddCategory(std::nullopt, FCategory, {});
  }
  if (FTarget && *FTarget != category) list.MoveItems({item->Id}, *FTarget);
  const TWatchlistInfo after = list.GetTree();
  const TCliLookup lookup(after);
  if (const auto* const placed = lookup.FindItem(item->Id)) {
    FContext.Console.Print(
        Format(u"Aufgenommen: %s (in %s)",
               {ForTerminal(placed->Name), ForTerminal(lookup.PathOf(*placed))}));
  }
}

}  // namespace kk
