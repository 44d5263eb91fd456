#pragma once

#include "host/contract/TAdditionalColumn.h"

namespace kk {

/// The column "Daten vom" in the section's own lists: the day of the last refresh. Main thread.
class TAdditionalColumnDateOffer : public TAdditionalColumnText {
 public:
  TAdditionalColumnDateOffer();

 protected:
  std::unique_ptr<ITreeViewCellPainter> CreateCellPainter() const override;
};

}  // namespace kk
