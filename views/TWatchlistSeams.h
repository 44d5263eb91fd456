#pragma once

#include "views/TWatchlistImport.h"
#include "views/TWatchlistView.h"

namespace kk {

class TForm;

/// What the section's commands reach of rooms that are not there in every host, and the window to
/// which their dialogs belong; the form owns the one and the commands look at it on every call. All
/// are borrowed and never null.
struct TWatchlistSeams {
  TWatchlistView* View;
  TWatchlistImport* Import;
  TForm* Form;
};

}  // namespace kk
