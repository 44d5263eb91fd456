#pragma once

#include <QComboBox>

#include "apps/desktop/skin/TBinder.h"
#include "host/controls/TComboBox.h"

namespace kk {

/// A list to choose from, with a line of text if the control has one. The wheel turns it only while
/// it has the focus.
class TComboBoxBinder final : public TBinderOf<TComboBox, QComboBox> {
 public:
  TComboBoxBinder(TSkin& ioSkin, TComboBox& ioList);

  bool eventFilter(QObject* iObject, QEvent* iEvent) override;

 protected:
  void Render() override;

 private:
  void RenderItems();
  void RenderText();
};

}  // namespace kk
