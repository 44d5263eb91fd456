#include "apps/cli/TCliPopUps.h"

#include "apps/cli/ICliConsole.h"
#include "apps/cli/TerminalText.h"
#include "host/base/TClock.h"
#include "host/base/TStringList.h"
#include "host/controls/TLabel.h"
#include "host/controls/TfrmMSNPopUpBase.h"

namespace kk {
namespace {

// It only says that there is a link.
constexpr TStringView cOpenLink = u"lblOpenLink";

void AddLines(std::vector<TString>& ioLines, TStringView iText) {
  TStringList lines;
  lines.SetText(iText);
  for (const TString& line : lines.Lines()) ioLines.push_back(line);
}

void Collect(const TControl& iParent, std::vector<TString>& ioLines) {
  for (const TControl* child : iParent.Children()) {
    const auto* const label = dynamic_cast<const TLabel*>(child);
    if (label != nullptr && label->Name() != cOpenLink) AddLines(ioLines, label->Caption());
    Collect(*child, ioLines);
  }
}

}  // namespace

void TCliPopUps::Show(const TForm& iForm) {
  std::vector<TString> lines;
  Collect(iForm, lines);
  const auto* const popUp = dynamic_cast<const TfrmMSNPopUpBase*>(&iForm);
  Print(lines, popUp != nullptr ? popUp->Link() : TString());
}

void TCliPopUps::Show(const TNotification& iNotification) {
  std::vector<TString> lines;
  AddLines(lines, iNotification.Caption);
  AddLines(lines, iNotification.Text);
  Print(lines, iNotification.Link);
}

void TCliPopUps::Print(const std::vector<TString>& iLines, TStringView iLink) {
  const TString first = iLines.empty() ? TString() : ForTerminal(iLines.front());
  FConsole.Print(Format(u"%s Erinnerung: %s", {DateTimeToStr(Now()), first}));
  for (size_t i = 1; i < iLines.size(); ++i) FConsole.Print(u"    " + ForTerminal(iLines[i]));
  if (!iLink.empty()) FConsole.Print(u"    " + ForTerminal(iLink));
  FConsole.Flush();
}

}  // namespace kk
