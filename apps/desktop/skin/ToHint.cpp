#include "apps/desktop/skin/ToHint.h"

#include <QTextDocument>

#include "apps/desktop/skin/QtText.h"

namespace kk {

QString ToHint(TStringView iText) {
  if (iText.empty()) return {};
  return Qt::convertFromPlainText(ToQt(iText).remove(u'\r'), Qt::WhiteSpaceNormal);
}

}  // namespace kk
