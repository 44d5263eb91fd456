#pragma once

#include "apps/desktop/skin/TFormBinder.h"
#include "host/controls/TfrmMessageDlg.h"

namespace kk {

/// A message box: the desktop's picture for its kind stands beside the text.
class TMessageBinder final : public TFormBinder {
 public:
  using TModel = TfrmMessageDlg;

  TMessageBinder(TSkin& ioSkin, TfrmMessageDlg& ioForm);

 protected:
  QLayout* MakeLayout() override;

 private:
  TfrmMessageDlg& FBox;
  QPointer<QLabel> FPicture;
};

}  // namespace kk
