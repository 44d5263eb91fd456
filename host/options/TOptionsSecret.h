#pragma once

#include "host/controls/TButton.h"
#include "host/options/TOptionsRow.h"

namespace kk {

/// A password or token of the section "Communication" on a page. It lies in SecretStore() and is
/// never shown: the line is for a new one alone, and a label says whether and where there is one.
/// Main thread.
class TOptionsSecret : public TOptionsRow {
 public:
  /// iName: also what follows "btn" in the name of the button.
  TOptionsSecret(TPanel& ioFrame, TStringView iName, TStringView iCaption,
                 TStringView iRemoveCaption, TStringView iKey);

  void Load();
  /// Keeps a new secret or takes the old one away, and leaves it alone if the user did neither.
  /// Raises Exception if it could be kept nowhere.
  void Save();

  TButton Remove;
  TLabel State;

 private:
  void ShowState();
  void RemoveClick(TObject* Sender);
  void EditChange(TObject* Sender);

  bool FIsStored = false;
  bool FIsToGo = false;
};

}  // namespace kk
