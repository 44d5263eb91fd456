#pragma once

#include "host/controls/TCommonSettingsNode.h"
#include "settings/page/TframKKSettingsWatchlist.h"

namespace kk {

/// The watch list's page in the settings dialog; the frame does the work. Main thread.
class TSettingsNodeWatchlist final : public TCommonSettingsNode {
 public:
  TGuid GetId() const override;
  TString GetCaption() const override;
  int GetSortOrder() const override { return 0; }
  bool ValidateSettings(TString& oMessage, TControl*& oControl) override {
    return FFrame.ValidateSettings(oMessage, oControl);
  }
  void SettingsChanged() override {}
  void LoadSettings() override { FFrame.LoadSettings(); }
  void SaveSettings() override { FFrame.SaveSettings(); }
  TframKKSettingsWatchlist& GetFrame() override { return FFrame; }

 private:
  TframKKSettingsWatchlist FFrame;
};

}  // namespace kk
