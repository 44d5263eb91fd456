#pragma once

#include <optional>

#include "host/base/TMainLoop.h"
#include "host/controls/TForm.h"

namespace kk {

/// The base of the small windows that come up at the edge of the screen by themselves and go by
/// themselves. A skin shows them without a frame, blended with what lies below, several beside each
/// other, and slides them if it likes; a host without a screen writes out their labels and the
/// link. Main thread.
///
/// A host that has taken one over calls Prepare, then PopUp, or MakeVisible by itself when it has
/// slid the window in. The window waits, and goes by MakeInvisible when the display period is over,
/// or by Close; OnClose tells the host, which frees it in a later turn of the loop. A host may free
/// it at any other time, too.
class TfrmMSNPopUpBase : public TForm {
 public:
  /// How long a window stands, and how long it waits before it asks again whether it may go.
  static constexpr int cDisplayPeriodMs = 8000;

  TfrmMSNPopUpBase(TForm* iOwner, TStringView iName);
  ~TfrmMSNPopUpBase() override;

  /// Makes it ready, still unseen: in front of other windows, where its skin puts pop-ups.
  void Prepare();
  /// Shows it at once and begins the wait.
  void PopUp();
  /// It stands on the screen, and the wait begins. No effect if it does so already.
  void MakeVisible();
  /// Whether it may close at this moment; every way of closing asks. The base has no objection.
  virtual bool CanClose() { return true; }
  /// The display period is over, or the host wants it to go: it goes if its close check lets it.
  virtual void MakeInvisible();
  /// The address that it leads to; empty if there is none.
  virtual TString Link() const { return {}; }

  void Close() override;

  /// Whether the pointer rests on it. The skin tells by EnterMouse and LeaveMouse of the window
  /// itself when the pointer comes into its bounds and when it leaves them, whatever lies there.
  bool IsMouseInside() const { return FMouseInside; }

 protected:
  /// The wait starts over from zero; for a window that stays for another display period.
  void RestartWait();

 private:
  void FormCloseQuery(TObject* Sender, bool& ioCanClose);
  void FormMouseEnter(TObject* Sender);
  void FormMouseLeave(TObject* Sender);
  void StopWait();

  std::optional<TMainLoop::TTimerId> FWait;
  bool FMouseInside = false;
};

}  // namespace kk
