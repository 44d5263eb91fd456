#pragma once

#include "host/base/TObject.h"
#include "host/contract/ISettingsExtender.h"
#include "host/controls/TPanel.h"

namespace kk {

/// The base of a settings page: one without a rule that can fail, first among its like, and not
/// interested in others. A descendant says what it is called and what it shows. Main thread.
class TCommonSettingsNode : public TInterfaced<ISettingsNode>, public TObject {
 public:
  int GetSortOrder() const override { return 0; }
  bool ValidateSettings(TString& oMessage, TControl*& oControl) override {
    oMessage.clear();
    oControl = nullptr;
    return true;
  }
  void SettingsChanged() override {}
};

}  // namespace kk
