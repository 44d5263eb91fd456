#pragma once

#include "host/controls/IPrinting.h"

namespace kk {

enum class TPrintRange { prAllPages, prPageNums };

/// The host's dialog that asks for the printer, the pages and the copies. Main thread.
struct TPrintDialog {
  /// Whether the user may choose pages by their numbers.
  bool AllowsPageNums = false;
  /// What there is to choose from, both included; with OK what there is on the paper that the user
  /// has chosen.
  int MinPage = 1;
  int MaxPage = 1;
  /// The user's choice; before, what is proposed. The pages count with prPageNums alone.
  TPrintRange PrintRange = TPrintRange::prAllPages;
  int FromPage = 1;
  int ToPage = 1;
  int Copies = 1;
  /// One whole copy after the other, instead of each page as often as there are copies.
  bool Collate = false;
  /// What a preview shows; borrowed, null for none.
  IPrintJob* Job = nullptr;

  /// Shows it through the installed printing; true for OK. On a cancel everything stays.
  bool Execute();
};

}  // namespace kk
