#pragma once

#include "host/controls/TGauge.h"
#include "host/controls/TLabel.h"
#include "host/controls/TfrmKKCommonBase.h"
#include "model/TLstWatchlistIntegration.h"
#include "plugin/texts/UnitKKPluginWatchlistResourceStrings.h"

namespace kk {

/// The window that makes the end of the program wait for running refreshes. It has no button and
/// closes by itself. Main thread.
class TfrmWaitForThreads final : public TfrmKKCommonBase {
 public:
  /// Stops all updaters and waits until no request runs any more. At once, without a window, if
  /// there is none. The updaters can't be used again.
  static void Display(const TLstWatchlistIntegration& iIntegrations);

  TLabel lblInfo{this, u"lblInfo", _resWaitForThreadsInfo};
  TLabel lblName{this, u"lblName"};
  TKK5SkinGauge prgrsbarWait{this, u"prgrsbarWait"};

 protected:
  void Loaded() override { SetWhiteBackground(true); }
  void UserMessage(int iMessage) override;

 private:
  explicit TfrmWaitForThreads(const TLstWatchlistIntegration& iIntegrations);
  void WmGoOn();

  const TLstWatchlistIntegration& FIntegrations;
};

}  // namespace kk
