#pragma once

#include <QSpinBox>

#include "apps/desktop/skin/TBinder.h"
#include "host/controls/TSpinEdit.h"

namespace kk {

/// A number with its arrows. The wheel turns it only while it has the focus.
class TSpinEditBinder final : public TBinderOf<TSpinEdit, QSpinBox> {
 public:
  TSpinEditBinder(TSkin& ioSkin, TSpinEdit& ioEdit);

  bool eventFilter(QObject* iObject, QEvent* iEvent) override;

 protected:
  void Render() override;
};

}  // namespace kk
