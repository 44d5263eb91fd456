#pragma once

#include <functional>
#include <stop_token>

#include "host/controls/TLabel.h"
#include "host/controls/TfrmKKCommonBase.h"

namespace kk {

/// The small window that stands while work runs elsewhere: the main loop goes on, and the user may
/// give the wait up.
class TfrmKKCommonWait final : public TfrmKKCommonBase {
 public:
  /// The work gets a token that tells it when nobody waits any more; it returns soon then.
  using TWork = std::function<void(std::stop_token iStop)>;

  /// Main thread: runs the work on a thread of its own while the window stands; "Abbrechen"
  /// requests the stop, and the window stays until the work has returned. On any other thread the
  /// work runs right there, without a window. What the work raises passes to the caller.
  static void Run(TStringView iText, const TWork& iWork);

  /// Work that only the main thread may do. It calls Step between two pieces of it.
  using TWorkInSteps = std::function<void(TfrmKKCommonWait& ioWait)>;

  /// Main thread: runs the work there while the window stands, from the window's own message, so
  /// that it is on the screen before the work begins. False if the user has given the wait up; the
  /// work may have ended well all the same, or not have begun. What the work raises passes to the
  /// caller otherwise.
  static bool RunInSteps(TStringView iText, const TWorkInSteps& iWork);
  /// The main loop turns, if it has not for 5 ms. Raises Exception once nobody waits any more.
  void Step(TObject* Sender);

  TLabel lblText{this, u"lblText"};
  TPanel pnlButtons{this, u"pnlButtons"};
  TButton btnCancel{&pnlButtons, u"btnCancel", u"&Abbrechen"};

  /// The work has returned and the window waits for its turn to end.
  bool IsDone() const { return FDone; }

 protected:
  void UserMessage(int iMessage) override;

 private:
  explicit TfrmKKCommonWait(TStringView iText);
  void btnCancelClick(TObject* Sender);
  void CloseQuery(TObject* Sender, bool& ioCanClose);
  void Done();

  std::stop_source FStop;
  bool FDone = false;
  std::function<void()> FWork;  // in steps
  int64_t FNextTurn = 0;        // of the main loop, by SteadyMs
};

}  // namespace kk
