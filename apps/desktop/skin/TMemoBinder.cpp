#include "apps/desktop/skin/TMemoBinder.h"

#include "apps/desktop/skin/QtOwned.h"
#include "apps/desktop/skin/QtText.h"

namespace kk {

TMemoBinder::TMemoBinder(TSkin& ioSkin, TMemo& ioMemo)
    : TBinderOf(ioSkin, ioMemo, QtOwned<QPlainTextEdit>()) {
  View().setTabChangesFocus(true);
  RenderHeight();  // its panel is arranged before it is rendered
  OnUser(&View(), &QPlainTextEdit::textChanged,
         [this] { Control().EnterText(FromQt(View().toPlainText())); });
}

void TMemoBinder::RenderHeight() {
  const int lines = Control().VisibleLines();
  if (lines <= 0) return;
  const int frame =
      2 * View().frameWidth() + static_cast<int>(2 * View().document()->documentMargin());
  View().setFixedHeight(lines * View().fontMetrics().lineSpacing() + frame);
  View().setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

// A line break at the end makes no line: what the user has just typed stays.
void TMemoBinder::Render() {
  View().setReadOnly(Control().ReadOnly());
  RenderHeight();
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
