#include "apps/cli/TCliRefresh.h"

#include "apps/cli/TCliLookup.h"
#include "apps/cli/TCliUpdates.h"
#include "apps/cli/TerminalText.h"

namespace kk {

int TCliRefresh::Start(const TWatchlistInfo& iTree, const TCliArguments& iCall) {
  IWatchlistAccess& list = FContext.Plugins.List();
  if (iCall.Words.empty()) return list.RefreshAll();
  const TCliLookup::TEntry entry = TCliLookup(iTree).ItemOrCategory(iCall.Words[0]);
  if (const auto category = std::get_if<const TWatchlistCategoryInfo*>(&entry)) {
    return list.RefreshCategory((*category)->Id);
  }
  return list.RefreshItems({std::get<const TWatchlistItemInfo*>(entry)->Id});
}

bool TCliRefresh::Run(const TCliArguments& iCall) {
  // Names as they stood before: a refresh that fails has nothing better.
  const TWatchlistInfo tree = FContext.Plugins.List().GetTree();
  const TCliLookup lookup(tree);
  TCliUpdates updates(FContext);
  const int total = Start(tree, iCall);
  if (total == 0) {
    FContext.Console.Print(u"Es gibt nichts zu aktualisieren.");
    return true;
  }
  int done = 0;
  int failed = 0;
  const bool complete = updates.Wait(u"Aktualisieren", [&](const TCliUpdates::TEnd& iEnd) {
    const TWatchlistItemInfo* const item =
        iEnd.Result ? lookup.FindItem(iEnd.Result->GetId()) : nullptr;
    const TString name = item != nullptr ? item->Name : TString(u"?");
    FContext.Console.Print(Format(
        u"%d von %d: %s: %s",
        {++done, total, ForTerminal(name), iEnd.Succeeded ? u"aktualisiert" : u"fehlgeschlagen"}));
    if (!iEnd.Succeeded) ++failed;
  });
  if (!complete) return false;
  if (failed == 0) return true;
  FContext.Console.Complain(
      Format(u"Fehler: %d von %d konnten nicht aktualisiert werden.", {failed, total}));
  return false;
}

}  // namespace kk
