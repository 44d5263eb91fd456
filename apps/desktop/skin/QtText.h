#pragma once

#include <QString>

#include "host/base/TString.h"

namespace kk {

/// The one place where texts change sides. Both are UTF-16, so nothing is lost, not even an
/// unpaired surrogate.
inline QString ToQt(TStringView iText) {
  return QString(reinterpret_cast<const QChar*>(iText.data()),
                 static_cast<qsizetype>(iText.size()));
}
inline TString FromQt(QStringView iText) {
  return TString(iText.utf16(), static_cast<size_t>(iText.size()));
}

/// A text in which "&" is a letter, for a place of Qt's that takes it as the mark of an access key.
QString ToQtVerbatim(TStringView iText);

}  // namespace kk
