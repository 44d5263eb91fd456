#pragma once

#include "views/TWatchlistImport.h"
#include "views/TWatchlistReminderEditor.h"
#include "views/TWatchlistView.h"

namespace kk {

/// What the section's commands reach of rooms that are not there in every host; the form owns the
/// one and the commands look at it on every call. All are borrowed and never null.
struct TWatchlistSeams {
  TWatchlistView* View;
  TWatchlistReminderEditor* ReminderEditor;
  TWatchlistImport* Import;
};

}  // namespace kk
