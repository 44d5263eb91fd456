#pragma once

#include "host/contract/IApplication.h"
#include "host/controls/TComboBox.h"
#include "host/options/TOptionsTrial.h"
#include "host/options/TframOptionsBase.h"

namespace kk {

/// The page "Benachrichtigung": where reminders come up, and trials of that and of the sound. What
/// fails behind a button raises Exception.
class TframOptionsNotification final : public TframOptionsBase {
 public:
  /// iApplication: shows the pop-up of the program's own; may be absent.
  explicit TframOptionsNotification(const TIntf<IApplication>& iApplication);

  void LoadSettings() override;
  void SaveSettings() override;

  TLabel lblPosition{this, u"lblPosition", u"&Meldungsfenster erscheinen als"};
  /// An entry for each TWindowPosition, in that order.
  TComboBox cmbxPosition{this, u"cmbxPosition"};
  TPanel pnlTest{this, u"pnlTest"};
  TButton btnTestWindow{&pnlTest, u"btnTestWindow", u"M&eldung testen"};
  TButton btnTestSound{&pnlTest, u"btnTestSound", u"&Ton testen"};
  TLabel lblTest{&pnlTest, u"lblTest", cOptionsTrialNote};

 private:
  void btnTestWindowClick(TObject* Sender);
  void btnTestSoundClick(TObject* Sender);

  TIntf<IApplication> FApplication;
};

}  // namespace kk
