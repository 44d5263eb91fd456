#include "apps/cli/AskToReplace.h"

#include "apps/cli/TerminalText.h"
#include "host/base/Exception.h"
#include "host/common/TFileHelper.h"
#include "host/controls/TfrmMessageDlg.h"

namespace kk {

void AskToReplace(TStringView iFileName) {
  if (!FileExists(iFileName)) return;
  const TString name = ForTerminal(iFileName);
  const int answer =
      MessageDlg(Format(u"Die Datei %s gibt es schon. Soll sie ersetzt werden?", {name}),
                 TMsgDlgType::mtConfirmation, {TMsgDlgBtn::mbNo, TMsgDlgBtn::mbYes});
  if (answer == cModalYes) return;
  throw Exception(Format(u"Die Datei %s bleibt, wie sie ist (--yes ersetzt sie).", {name}));
}

}  // namespace kk
