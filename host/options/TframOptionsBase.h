#pragma once

#include <vector>

#include "host/controls/TPanel.h"
#include "host/options/TOptionsField.h"
#include "host/options/TOptionsSecret.h"

namespace kk {

/// The base of the frames of the host's pages: it loads, validates and saves the fields and secrets
/// that a descendant names. Main thread.
class TframOptionsBase : public TPanel {
 public:
  explicit TframOptionsBase(TStringView iName) : TPanel(nullptr, iName) {}

  virtual void LoadSettings();
  /// As ISettingsNode has it.
  bool ValidateSettings(TString& oMessage, TControl*& oControl);
  virtual void SaveSettings();

 protected:
  /// Borrowed; in the order in which they are validated and saved.
  void Hold(std::initializer_list<TOptionsField*> iFields,
            std::initializer_list<TOptionsSecret*> iSecrets = {});
  /// What a trial needs: saves this page. False if the user has to mend something first, which was
  /// said then.
  bool SaveForTrial();

 private:
  std::vector<TOptionsField*> FFields;
  std::vector<TOptionsSecret*> FSecrets;
};

}  // namespace kk
