#pragma once

#include "host/base/Exception.h"
#include "host/controls/TControl.h"

namespace kk {

/// The control of this name below the parent, depth first; null if there is none.
TControl* FindControl(const TControl& iParent, TStringView iName);

/// The same for a control that has to be there, and of its kind. Raises Exception for a window that
/// can't be served by its names.
template <class T>
T& ControlOf(const TControl& iParent, TStringView iName) {
  T* const control = dynamic_cast<T*>(FindControl(iParent, iName));
  if (control == nullptr) throw Exception(Format(u"Dem Fenster fehlt das Feld %s", {iName}));
  return *control;
}

}  // namespace kk
