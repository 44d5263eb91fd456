#pragma once

#include "host/base/TString.h"

namespace kk {

class TControl;

/// How a screen reader names the control: by its caption, without the mark of the access key; else
/// by the label that belongs to it; else by the group or the window that it stands in.
///
/// The label stands before the control. In a row that begins with something else, such as a number
/// and its unit, it stands behind it. A box or a choice without a caption means what follows it.
TString NameForReader(const TControl& iControl);

}  // namespace kk
