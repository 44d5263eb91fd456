#pragma once

#include <QCheckBox>

#include "apps/desktop/skin/TBinder.h"
#include "host/controls/TCheckBox.h"

namespace kk {

/// A box to tick.
class TCheckBoxBinder final : public TBinderOf<TCheckBox, QCheckBox> {
 public:
  TCheckBoxBinder(TSkin& ioSkin, TCheckBox& ioBox);

 protected:
  void Render() override;
};

}  // namespace kk
