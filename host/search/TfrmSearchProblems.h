#pragma once

#include <vector>

#include "host/controls/TButton.h"
#include "host/controls/TLabel.h"
#include "host/controls/TMemo.h"
#include "host/controls/TfrmKKCommonBase.h"

namespace kk {

/// What went wrong in a search, in full, one line each.
class TfrmSearchProblems final : public TfrmKKCommonBase {
 public:
  /// Modal.
  static void Display(TForm* iOwner, const std::vector<TString>& iProblems);

  TMemo mmProblems{this, u"mmProblems"};
  TPanel pnlButtons{this, u"pnlButtons"};
  TButton btnClose{&pnlButtons, u"btnClose", {}, cModalCancel};

 private:
  explicit TfrmSearchProblems(TForm* iOwner, const std::vector<TString>& iProblems);
};

}  // namespace kk
