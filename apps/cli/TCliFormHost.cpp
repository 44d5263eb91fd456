#include "apps/cli/TCliFormHost.h"

#include "apps/cli/ICliConsole.h"
#include "apps/cli/TCliDialog.h"
#include "apps/cli/TerminalText.h"
#include "host/base/Exception.h"
#include "host/base/TMainLoop.h"
#include "host/common/TFileHelper.h"
#include "host/controls/TOpenDialog.h"
#include "host/controls/TfrmKKCommonWait.h"

namespace kk {
namespace {

constexpr int cTurnMs = 50;

// How often a window may refuse the answer of nobody before it counts as one that can't end.
constexpr int cMaxRefusals = 3;

}  // namespace

void TCliFormHost::ShowModal(TForm& ioForm) {
  const bool isWait = dynamic_cast<TfrmKKCommonWait*>(&ioForm) != nullptr ||
                      TCliDialog(FConsole, ioForm).IsWaitWindow();
  isWait ? Wait(ioForm) : Answer(ioForm);
  FLastResult = ioForm.ModalResult();
}

void TCliFormHost::Answer(TForm& ioForm) {
  TCliDialog dialog(FConsole, ioForm);
  int refusals = 0;
  while (!ioForm.EndModalIfDone()) {
    MainLoop().ProcessMessages();
    if (ioForm.EndModalIfDone()) return;
    if (FAnswer && refusals == 0 && FAnswer(ioForm)) {
      ++refusals;
    } else if (FYesToAll && dialog.PressYes()) {
      ++refusals;
    } else if (FConsole.IsInteractive()) {
      if (dialog.Ask()) continue;
      dialog.Cancel();
      ++refusals;
    } else {
      dialog.ShowTexts();
      refusals < cMaxRefusals - 1 ? dialog.PressDefault() : dialog.Cancel();
      ++refusals;
    }
    if (refusals > cMaxRefusals && !ioForm.EndModalIfDone()) {
      throw Exception(Format(u"Die Frage \"%s\" ließ sich nicht beantworten", {ioForm.Caption()}));
    }
  }
}

bool TCliFormHost::MayReplace(TStringView iFileName) {
  const auto line = FConsole.ReadLine(
      Format(u"Die Datei %s gibt es schon. Ersetzen? [j/N] ", {ForTerminal(iFileName)}));
  return line && SameText(Trim(*line), u"j");
}

bool TCliFormHost::ShowOpenDialog(TOpenDialog& ioDialog) {
  if (!FConsole.IsInteractive()) return false;
  FConsole.Complain(ForTerminal(ioDialog.Title));
  const TString prompt = Format(u"Datei [%s] ", {ForTerminal(ioDialog.FileName)});
  while (true) {
    const auto line = FConsole.ReadLine(prompt);
    if (!line) return false;
    const TString name = Trim(*line).empty() ? ioDialog.FileName : Trim(*line);
    if (ioDialog.FileMustExist && !FileExists(name)) {
      FConsole.Complain(Format(u"Die Datei %s gibt es nicht.", {ForTerminal(name)}));
      continue;
    }
    if (ioDialog.ForSaving && FileExists(name) && !MayReplace(name)) continue;
    ioDialog.FileName = name;
    return true;
  }
}

void TCliFormHost::Wait(TForm& ioForm) {
  const auto* const wait = dynamic_cast<TfrmKKCommonWait*>(&ioForm);
  const TString text = ForTerminal(wait != nullptr ? wait->lblText.Caption() : ioForm.Caption());
  FConsole.Progress(text.ends_with(u"...") ? text : text + u" ...");
  TButton* const cancel = ioForm.CancelButton();
  while (!ioForm.EndModalIfDone()) {
    MainLoop().ProcessMessages();
    if (ioForm.EndModalIfDone()) break;
    if (cancel != nullptr && FConsole.TakeInterrupt()) cancel->Click();
    MainLoop().WaitForMessage(cTurnMs);
  }
  FConsole.Progress({});
}

}  // namespace kk
