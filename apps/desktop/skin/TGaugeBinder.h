#pragma once

#include <QProgressBar>

#include "apps/desktop/skin/TBinder.h"
#include "host/controls/TGauge.h"

namespace kk {

/// A bar that fills; without a maximum it stays empty.
class TGaugeBinder final : public TBinderOf<TGauge, QProgressBar> {
 public:
  TGaugeBinder(TSkin& ioSkin, TGauge& ioGauge);

 protected:
  void Render() override;
};

}  // namespace kk
