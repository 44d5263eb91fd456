#pragma once

#include "apps/desktop/skin/TPanelBinder.h"
#include "apps/desktop/skin/TWindow.h"
#include "host/controls/TForm.h"

namespace kk {

/// A form, as the content of a window or a part of one. It brings the keyboard to the control that
/// has the focus.
class TFormBinder : public TPanelBinder {
 public:
  TFormBinder(TSkin& ioSkin, TForm& ioForm);
  ~TFormBinder() override;

  bool eventFilter(QObject* iObject, QEvent* iEvent) override;

 protected:
  void Render() override;
  QSize MinSize() const override;
  TString Heading() const override { return {}; }
  TForm& Form() const { return FForm; }

 private:
  void RenderDefaultButton();

  TForm& FForm;
  const TButton* FDefault = nullptr;  // how it looks; it may be gone
};

}  // namespace kk
