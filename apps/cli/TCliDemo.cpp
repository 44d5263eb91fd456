#include "apps/cli/TCliDemo.h"

#include "apps/cli/TCliAdd.h"
#include "apps/cli/TCliRefresh.h"
#include "apps/cli/TCliShow.h"
#include "apps/cli/TerminalText.h"
#include "host/common/TFileHelper.h"
#include "host/program/TExampleShop.h"

namespace kk {
namespace {

constexpr int cRounds = 2;

void ForEachItem(
    const std::vector<TWatchlistCategoryInfo>& iCategories,
    const std::function<void(const TWatchlistGroupInfo&, const TWatchlistItemInfo&)>& iDo) {
  for (const TWatchlistCategoryInfo& category : iCategories) {
    for (const TWatchlistGroupInfo& group : category.Groups) {
      for (const TWatchlistItemInfo& item : group.Items) iDo(group, item);
    }
    ForEachItem(category.Categories, iDo);
  }
}

}  // namespace

bool TCliDemo::Run() {
  FContext.Console.Print(
      Format(u"Ein kleiner Beispielshop läuft auf %s, nur auf diesem Rechner.", {FShop.Address()}));
  FContext.Console.Print(u"");
  FContext.Console.Print(u"Drei seiner Artikel kommen in die Beobachtenliste:");
  if (!Add()) return false;
  for (int i = 0; i < cRounds; ++i) {
    if (!Refresh()) return false;
  }
  FContext.Console.Print(u"");
  TCliShow(FContext).List(false);
  Conclude();
  return true;
}

bool TCliDemo::Add() {
  std::vector<TString> words = {u"add", u"--category", u"Beispielshop", u"--create"};
  for (const TString& address : FShop.Articles()) words.push_back(address);
  return TCliAdd(FContext).Run(TCliArguments::Parse(words));
}

bool TCliDemo::Refresh() {
  FContext.Console.Print(u"");
  FContext.Console.Print(u"Die Preise im Shop ändern sich, die Liste wird aktualisiert:");
  const TSnapshot before = Snapshot();
  if (!TCliRefresh(FContext).Run(TCliArguments::Parse({u"refresh"}))) return false;
  PrintChanges(before);
  return true;
}

TCliDemo::TSnapshot TCliDemo::Snapshot() const {
  TSnapshot result;
  const TWatchlistInfo tree = FContext.Plugins.List().GetTree();
  ForEachItem(tree.Categories, [&](const auto& iGroup, const auto& iItem) {
    result[iItem.Id] = FContext.Plugins.Details(iGroup.PluginId, iItem.SearchResult);
  });
  return result;
}

void TCliDemo::PrintChanges(const TSnapshot& iBefore) {
  const TSnapshot after = Snapshot();
  const TWatchlistInfo tree = FContext.Plugins.List().GetTree();
  ForEachItem(tree.Categories, [&](const auto&, const auto& iItem) {
    const auto old = iBefore.find(iItem.Id);
    if (old == iBefore.end()) return;
    for (const auto& [title, value] : after.at(iItem.Id)) {
      for (const auto& [oldTitle, oldValue] : old->second) {
        if (oldTitle != title || oldValue == value) continue;
        FContext.Console.Print(
            Format(u"  %s: %s %s -> %s", {ForTerminal(iItem.Name), ForTerminal(title),
                                          ForTerminal(oldValue), ForTerminal(value)}));
      }
    }
  });
}

void TCliDemo::Conclude() {
  const TString& folder = HostFolders().Data;
  FContext.Console.Print(u"");
  FContext.Console.Print(Format(u"Die Beobachtenliste des Beispiels liegt in %s.", {folder}));
  FContext.Console.Print(u"Der Shop schließt jetzt; weiter geht es zum Beispiel so:");
  FContext.Console.Print(Format(u"  ./run --data %s list", {folder}));
  FContext.Console.Print(Format(u"  ./run --data %s show \"Tischlampe Luna\"", {folder}));
  FContext.Console.Print(u"  ./run add https://ADRESSE-EINES-ARTIKELS");
  FContext.Console.Print(u"  ./run --help");
}

}  // namespace kk
