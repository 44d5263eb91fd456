#include "apps/cli/TCliHostLine.h"

#include "apps/cli/TCliLookup.h"
#include "apps/cli/TCliUpdates.h"
#include "apps/cli/TerminalText.h"
#include "host/common/TCmdParams.h"
#include "host/common/TFileHelper.h"

namespace kk {
namespace {

constexpr TStringView cImportParameter = u"-remimport";

}  // namespace

bool TCliHostLine::Run(const TCliArguments& iCall) {
  const TString line = TCmdParams::Join(iCall.HostLine);
  IWatchlistAccess& list = FContext.Plugins.List();
  const TWatchlistInfo before = list.GetTree();
  TCliUpdates updates(FContext);
  FContext.Plugins.ProcessCommandLine(line);
  if (!updates.Wait(u"Aufnehmen", [](const TCliUpdates::TEnd&) {})) return false;
  const TWatchlistInfo after = list.GetTree();
  const TCliLookup known(before);
  const TCliLookup lookup(after);
  size_t added = 0;
  for (const TWatchlistItemInfo* item : lookup.Items()) {
    if (known.FindItem(item->Id) != nullptr) continue;
    ++added;
    FContext.Console.Print(Format(u"Aufgenommen: %s (in %s)",
                                  {ForTerminal(item->Name), ForTerminal(lookup.PathOf(*item))}));
  }
  if (added > 0) return true;
  TellWhatIsWrong(line);
  return false;
}

void TCliHostLine::TellWhatIsWrong(TStringView iLine) {
  const TCmdParams params(iLine);
  for (int i = 0; i < params.Count(); ++i) {
    if (!SameText(params.GetName(i), cImportParameter) || FileExists(params.GetValue(i))) continue;
    FContext.Console.Complain(
        Format(u"Fehler: Datei nicht vorhanden: %s", {ForTerminal(params.GetValue(i))}));
  }
  FContext.Console.Complain(u"Fehler: Es ist nichts in die Beobachtenliste gekommen.");
}

}  // namespace kk
