#pragma once

#include "host/controls/TForm.h"

namespace kk {

/// The base of all dialogs.
class TfrmKKCommonBase : public TForm {
 public:
  using TForm::TForm;

  void Show() override;
  bool WhiteBackground() const { return FWhiteBackground; }

 protected:
  /// Runs once, before the form is shown for the first time, when its controls stand.
  virtual void Loaded() {}
  void SetWhiteBackground(bool iWhite) { SetValue(FWhiteBackground, iWhite); }

 private:
  bool FLoaded = false;
  bool FWhiteBackground = false;
};

}  // namespace kk
