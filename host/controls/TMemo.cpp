#include "host/controls/TMemo.h"

namespace kk {

void TMemo::SetLines(const TStringList& iLines) {
  if (FLines.Lines() == iLines.Lines()) return;
  FLines.Assign(iLines);
  Changed();
}

bool TMemo::EnterText(TStringView iText) {
  return AsUser([this, iText] {
    if (FReadOnly) return false;
    TStringList lines;
    lines.SetText(iText);
    if (FLines.Lines() == lines.Lines()) return false;
    SetLines(lines);
    return true;
  });
}

}  // namespace kk
