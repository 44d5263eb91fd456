#include "plugin/TfrmWaitForThreads.h"

#include "host/base/Guard.h"
#include "host/base/TMainLoop.h"
#include "plugin/texts/UnitKKPluginWatchlistConsts.h"

namespace kk {

TfrmWaitForThreads::TfrmWaitForThreads(const TLstWatchlistIntegration& iIntegrations)
    : TfrmKKCommonBase(nullptr, u"TfrmWaitForThreads", _resWaitForThreadsCaption),
      FIntegrations(iIntegrations) {
  SetPosition(TPosition::poScreenCenter);
}

void TfrmWaitForThreads::Display(const TLstWatchlistIntegration& iIntegrations) {
  TfrmWaitForThreads form(iIntegrations);
  if (!iIntegrations.HasActiveIntegrations()) return;
  form.prgrsbarWait.SetMaximum(iIntegrations.GetCount());
  form.prgrsbarWait.SetProgress(0);
  // From within the modal loop, so that the window is on the screen before the waiting begins.
  form.PostUserMessage(cUserMessageGoOn);
  form.ShowModal();
}

void TfrmWaitForThreads::UserMessage(int iMessage) {
  if (iMessage != cUserMessageGoOn) return;
  // What fails here must not keep the end of the program from saving the file.
  Guarded(u"TfrmWaitForThreads", [this] { WmGoOn(); });
  Close();
}

void TfrmWaitForThreads::WmGoOn() {
  for (TWatchlistIntegration* integration : FIntegrations) integration->Updater().Uninitialize();
  for (TWatchlistIntegration* integration : FIntegrations) {
    prgrsbarWait.SetProgress(prgrsbarWait.Progress() + 1);
    lblName.SetCaption(integration->Integration()->GetName());
    MainLoop().ProcessMessages();
    integration->Updater().WaitFor();
  }
}

}  // namespace kk
