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

  TLabel lblText{this, u"lblText"};
  TButton btnCancel{this, u"btnCancel", u"&Abbrechen"};

  /// The work has returned and the window waits for its turn to end.
  bool IsDone() const { return FDone; }

 private:
  explicit TfrmKKCommonWait(TStringView iText);
  void btnCancelClick(TObject* Sender);
  void CloseQuery(TObject* Sender, bool& ioCanClose);
  void Done();

  std::stop_source FStop;
  bool FDone = false;
};

}  // namespace kk
