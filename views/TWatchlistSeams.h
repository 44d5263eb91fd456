#pragma once

#include "views/TWatchlistView.h"

namespace kk {

class TForm;

/// What the section's commands reach of the section: its views, and the window to which their
/// dialogs belong, which may be null. Borrowed.
struct TWatchlistSeams {
  TWatchlistView& View;
  TForm* Form;
};

}  // namespace kk
