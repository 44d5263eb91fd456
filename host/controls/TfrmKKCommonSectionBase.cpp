#include "host/controls/TfrmKKCommonSectionBase.h"

#include <utility>

#include "host/contract/ISectionHost.h"
#include "host/controls/IMouseWheel.h"

namespace kk {

TfrmKKCommonSectionBase::~TfrmKKCommonSectionBase() { TfrmKKCommonSectionBase::Uninitialize(); }

void TfrmKKCommonSectionBase::Initialize(const TIntf<IApplication>& iApplication) {
  FApplication = iApplication;
  if (const auto host = Supports<ISectionHost>(FApplication)) host->AddSection(*this);
}

void TfrmKKCommonSectionBase::Uninitialize() {
  if (const auto host = Supports<ISectionHost>(FApplication)) host->RemoveSection(*this);
  FApplication = nullptr;
}

void TfrmKKCommonSectionBase::Show() {
  TfrmKKCommonBase::Show();
  if (!std::exchange(FWasShown, true)) FirstShow();
  if (const auto host = Supports<ISectionHost>(FApplication)) host->ShowSection(*this);
}

void TfrmKKCommonSectionBase::Resize(int iWidth, int iHeight) {
  FShownWidth = iWidth;
  FShownHeight = iHeight;
}

void TfrmKKCommonSectionBase::MouseWheelHandler(IMouseWheel& ioWheel) { ioWheel.PerformDefault(); }

}  // namespace kk
