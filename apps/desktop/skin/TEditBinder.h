#pragma once

#include <QLineEdit>

#include "apps/desktop/skin/TBinder.h"
#include "host/controls/TEdit.h"

namespace kk {

/// A line of text. The caret stays where it is, unless the text becomes another one.
class TEditBinder final : public TBinderOf<TEdit, QLineEdit> {
 public:
  TEditBinder(TSkin& ioSkin, TEdit& ioEdit);

 protected:
  void Render() override;
};

}  // namespace kk
