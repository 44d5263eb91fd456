#pragma once

#include <QHBoxLayout>
#include <QToolButton>

#include "apps/desktop/skin/TBinder.h"
#include "host/controls/TToolButton.h"
#include "host/controls/TToolbar.h"

namespace kk {

/// A row of tool buttons; an empty one takes no room.
class TToolbarBinder final : public TBinderOf<TToolbar> {
 public:
  TToolbarBinder(TSkin& ioSkin, TToolbar& ioToolbar);

 protected:
  void Render() override;

 private:
  QHBoxLayout* FRow;  // the widget's
};

/// A button in a toolbar: the image above its caption, and pressed while it is selected.
class TToolButtonBinder final : public TBinderOf<TToolButton, QToolButton> {
 public:
  TToolButtonBinder(TSkin& ioSkin, TToolButton& ioButton);

 protected:
  void Render() override;
};

}  // namespace kk
