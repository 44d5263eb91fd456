#pragma once

#include <QString>

#include "host/base/TString.h"

namespace kk {

/// A text as Qt's tool tips show it: word for word, since names come from users and from shops and
/// are no markup, in lines of readable length, and cut off where it would cover the window. An
/// empty one is no tool tip.
QString ToHint(TStringView iText);

}  // namespace kk
