#pragma once

#include <optional>

#include "host/contract/TCommonToolbar.h"

namespace kk {

/// The button "Beobachten" in the host's main toolbar. Main thread.
class TToolbarButtonWatchlist : public TCommonToolbarEventButton {
 public:
  TGuid GetId() const override;
  TGuid GetPluginId() const override;
  int GetSortOrder() const override;
  TString GetCaption() const override;
  TBitmap GetImage() override;
  TBitmap GetImageSelected() override;

 private:
  std::optional<TBitmap> FBitmap;
  std::optional<TBitmap> FBitmapSelected;
};

}  // namespace kk
