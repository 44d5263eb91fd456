#pragma once

#include <QRadioButton>

#include "apps/desktop/skin/TBinder.h"
#include "host/controls/TRadioButton.h"

namespace kk {

/// One choice of several; the arrow keys go through them.
class TRadioButtonBinder final : public TBinderOf<TRadioButton, QRadioButton> {
 public:
  TRadioButtonBinder(TSkin& ioSkin, TRadioButton& ioButton);

 protected:
  void Render() override;
};

}  // namespace kk
