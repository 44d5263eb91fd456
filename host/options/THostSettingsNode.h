#pragma once

#include <memory>

#include "host/controls/TCommonSettingsNode.h"
#include "host/options/TframOptionsBase.h"

namespace kk {

/// A page of the host's own: an id and a caption for a frame that does the work. Main thread.
class THostSettingsNode : public TCommonSettingsNode {
 public:
  THostSettingsNode(const TGuid& iId, TStringView iCaption,
                    std::unique_ptr<TframOptionsBase> iFrame)
      : FId(iId), FCaption(iCaption), FFrame(std::move(iFrame)) {}

  TGuid GetId() const override { return FId; }
  TString GetCaption() const override { return FCaption; }
  bool ValidateSettings(TString& oMessage, TControl*& oControl) override {
    return FFrame->ValidateSettings(oMessage, oControl);
  }
  void LoadSettings() override { FFrame->LoadSettings(); }
  void SaveSettings() override { FFrame->SaveSettings(); }
  TPanel& GetFrame() override { return *FFrame; }

 private:
  TGuid FId;
  TString FCaption;
  std::unique_ptr<TframOptionsBase> FFrame;
};

}  // namespace kk
