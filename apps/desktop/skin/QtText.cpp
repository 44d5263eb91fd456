#include "apps/desktop/skin/QtText.h"

namespace kk {

QString ToQtVerbatim(TStringView iText) {
  return ToQt(iText).replace(QLatin1Char('&'), QLatin1String("&&"));
}

}  // namespace kk
