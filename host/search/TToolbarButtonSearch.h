#pragma once

#include "host/base/TDelegate.h"
#include "host/base/TObject.h"
#include "host/contract/TCommonToolbar.h"

namespace kk {

/// The button "Suchen" in the host's main toolbar. Main thread.
class TToolbarButtonSearch : public TCommonToolbarButton, public TObject {
 public:
  TGuid GetId() const override;
  TGuid GetPluginId() const override;
  int GetSortOrder() const override;
  TString GetCaption() const override;
  TBitmap GetImage() override;
  TBitmap GetImageSelected() override;
  /// Raises the event, if there is one, with the button as the sender.
  void Click() override;

  /// The receiver takes it back (an empty event) before it dies.
  void SetOnClick(TNotifyEvent iEvent) { FOnClick = iEvent; }

 private:
  TNotifyEvent FOnClick;
};

}  // namespace kk
