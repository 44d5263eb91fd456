#pragma once

#include "host/contract/TAdditionalColumn.h"

namespace kk {

/// The column "Erinnerung" in the section's own lists. A click on the image of a reminder raises
/// the handler's OnAdditionalColumnEditClick with the column as the sender. Main thread.
class TAdditionalColumnReminder : public TAdditionalColumnTransparentBitmap {
 public:
  TAdditionalColumnReminder();

  void Click(const TIntf<ICellMouseInfo>& iCellMouseInfo) override;
  void MouseMove(const TIntf<ICellMouseInfo>& iCellMouseInfo) override;
  /// Also asks whether there is a reminder; whatever goes wrong is a no.
  bool IsMouseOverBitmap(const TIntf<ICellMouseInfo>& iCellMouseInfo) const override;
};

}  // namespace kk
