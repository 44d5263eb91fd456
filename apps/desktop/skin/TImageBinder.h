#pragma once

#include <QToolButton>

#include "apps/desktop/skin/TBinder.h"
#include "host/controls/TImage.h"

namespace kk {

/// A picture on a form, drawn by the program's drawings for the screen that it stands on.
class TImageBinder final : public TBinderOf<TImage, QToolButton> {
 public:
  TImageBinder(TSkin& ioSkin, TImage& ioImage);

 protected:
  void Render() override;
};

}  // namespace kk
