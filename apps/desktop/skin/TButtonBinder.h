#pragma once

#include <QPushButton>

#include "apps/desktop/skin/TBinder.h"
#include "host/controls/TButton.h"

namespace kk {

/// A push button; one with a description from the start is a large one with both texts.
class TButtonBinder final : public TBinderOf<TButton, QPushButton> {
 public:
  TButtonBinder(TSkin& ioSkin, TButton& ioButton);

 protected:
  void Render() override;
};

}  // namespace kk
