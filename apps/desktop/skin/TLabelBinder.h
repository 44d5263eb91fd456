#pragma once

#include "apps/desktop/skin/TBinder.h"
#include "apps/desktop/skin/TTextLabel.h"
#include "host/controls/TLabel.h"

namespace kk {

/// A text on a form. One that looks like a link can also be reached and clicked by the keyboard. A
/// "&" is the mark of an access key only where the label stands before something to fill in, which
/// the key leads to; elsewhere it is a letter.
class TLabelBinder final : public TBinderOf<TLabel, TTextLabel> {
 public:
  TLabelBinder(TSkin& ioSkin, TLabel& ioLabel);

  bool eventFilter(QObject* iObject, QEvent* iEvent) override;

 protected:
  void Render() override;

 private:
  /// What its access key leads to; null for none.
  QWidget* Buddy() const;
  bool IsWrapped() const;
};

}  // namespace kk
