#pragma once

namespace kk {

/// The questions that the section asks before it changes much; each answers true for yes. Main
/// thread, modal.

/// iCount: at least 1.
bool AskDeleteItems(int iCount);
/// A group of a source, by the number of its items.
bool AskDeleteGroup(int iItemCount);
bool AskDeleteCategory(bool iEmpty);
/// iCount: at least 2.
bool AskEditDescriptions(int iCount);
/// iCount: at least 2.
bool AskEditReminders(int iCount);
/// One text for any number of results, as required.
bool AskDeleteReminder();

}  // namespace kk
