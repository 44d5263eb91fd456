#pragma once

#include "views/TWatchlistCategoryCommands.h"
#include "views/TWatchlistItemCommands.h"
#include "views/TWatchlistUpdateCommands.h"

namespace kk {

/// The section's commands on the model, and what they reach of the section.
struct TWatchlistCommands {
  explicit TWatchlistCommands(const TWatchlistSeams& iSeams) : Seams(iSeams) {}
  TWatchlistCommands(const TWatchlistCommands&) = delete;
  TWatchlistCommands& operator=(const TWatchlistCommands&) = delete;

  TWatchlistSeams Seams;
  TWatchlistCategoryCommands Categories{Seams};
  TWatchlistReminderCommands Reminders{Seams};
  TWatchlistItemCommands Items{Seams, Reminders};
  TWatchlistUpdateCommands Updates;
};

}  // namespace kk
