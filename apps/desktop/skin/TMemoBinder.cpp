#include "apps/desktop/skin/TMemoBinder.h"

#include "apps/desktop/skin/QtOwned.h"
#include "apps/desktop/skin/QtText.h"

namespace kk {

TMemoBinder::TMemoBinder(TSkin& ioSkin, TMemo& ioMemo)
    : TBinderOf(ioSkin, ioMemo, QtOwned<QPlainTextEdit>()) {
  View().setTabChangesFocus(true);
  OnUser(&View(), &QPlainTextEdit::textChanged,
         [this] { Control().EnterText(FromQt(View().toPlainText())); });
}

// A line break at the end makes no line: what the user has just typed stays.
void TMemoBinder::Render() {
  View().setReadOnly(Control().ReadOnly());
  TStringList shown;
  shown.SetText(FromQt(View().toPlainText()));
  const TStringList& lines = Control().Lines();
  if (shown.Lines() == lines.Lines()) return;
  QString text;
  for (const TString& line : lines.Lines()) {
    if (!text.isEmpty() || &line != &lines.Lines().front()) text += QLatin1Char('\n');
    text += ToQt(line);
  }
  View().setPlainText(text);
}

}  // namespace kk
