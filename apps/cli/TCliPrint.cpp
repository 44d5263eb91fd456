#include "apps/cli/TCliPrint.h"

#include "apps/cli/TCliLookup.h"
#include "apps/cli/TerminalText.h"
#include "host/base/TInstalled.h"
#include "host/controls/TfrmKKCommonWait.h"
#include "host/printing/TPdfPrinting.h"

namespace kk {

bool TCliPrint::Run(const TCliArguments& iCall) {
  IWatchlistAccess& list = FContext.Plugins.List();
  const TWatchlistInfo tree = list.GetTree();
  const TWatchlistCategoryInfo& category = TCliLookup(tree).Category(*iCall.Category);
  TPdfPrinting printing;
  {
    const TInstalled<IPrinting> installed(&SetPrinting, &printing);
    list.PrintCategory(category.Id);
  }
  if (printing.Contents().empty()) {
    FContext.Console.Complain(Format(u"In der Kategorie \"%s\" gibt es nichts zu drucken.",
                                     {ForTerminal(category.Name)}));
    return false;
  }
  TfrmKKCommonWait::Run(u"Das PDF wird erstellt",
                        [&](const std::stop_token& iStop) { printing.WriteTo(*iCall.Pdf, iStop); });
  FContext.Console.Print(
      Format(u"Gedruckt: \"%s\" in %s", {ForTerminal(category.Name), ForTerminal(*iCall.Pdf)}));
  return true;
}

}  // namespace kk
