#pragma once

#include "host/contract/TCommonToolbar.h"

namespace kk {

/// The button "Suchen" in the host's main toolbar. Main thread.
class TToolbarButtonSearch : public TCommonToolbarEventButton {
 public:
  TGuid GetId() const override;
  TGuid GetPluginId() const override;
  int GetSortOrder() const override;
  TString GetCaption() const override;
  TBitmap GetImage() override;
  TBitmap GetImageSelected() override;
};

}  // namespace kk
