#pragma once

#include <QPlainTextEdit>

#include "apps/desktop/skin/TBinder.h"
#include "host/controls/TMemo.h"

namespace kk {

/// Lines of text. Return is a new line here, Tab leads on.
class TMemoBinder final : public TBinderOf<TMemo, QPlainTextEdit> {
 public:
  TMemoBinder(TSkin& ioSkin, TMemo& ioMemo);

 protected:
  void Render() override;
  void RenderHeight();
  bool SharesKey(char16_t iKey) const override { return iKey == cKeyReturn; }
  bool LeavesKey() override { return Control().TakeNewLine(); }
};

}  // namespace kk
