#include "apps/desktop/skin/ToHint.h"

#include <QTextDocument>

#include "apps/desktop/skin/QtText.h"

namespace kk {

namespace {

// More of a name or a note would cover what it tells of.
constexpr qsizetype cMost = 2000;

}  // namespace

QString ToHint(TStringView iText) {
  if (iText.empty()) return {};
  QString text = ToQt(iText).remove(u'\r');
  if (text.size() > cMost) {
    text.truncate(text.at(cMost - 1).isHighSurrogate() ? cMost - 1 : cMost);
    text += u'…';
  }
  return Qt::convertFromPlainText(text, Qt::WhiteSpaceNormal);
}

}  // namespace kk
