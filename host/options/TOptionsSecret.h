#pragma once

#include "host/controls/TButton.h"
#include "host/controls/TEdit.h"
#include "host/controls/TLabel.h"
#include "host/controls/TPanel.h"

namespace kk {

/// A password or token of the section "Communication" on a page. It lies in SecretStore() and is
/// never shown: the line is for a new one alone, and a label says whether and where there is one.
/// Main thread.
class TOptionsSecret : public TObject {
 public:
  /// iName: what follows "pnl", "lbl", "edt" and "btn" in the controls' names.
  TOptionsSecret(TPanel& ioFrame, TStringView iName, TStringView iCaption,
                 TStringView iRemoveCaption, TStringView iKey);

  void Load();
  /// Keeps a new secret or takes the old one away, and leaves it alone if the user did neither.
  /// Raises Exception if it could be kept nowhere.
  void Save();

  TPanel Row;
  TLabel Label;
  TEdit Edit;
  TButton Remove;
  TLabel State;

 private:
  void ShowState();
  void RemoveClick(TObject* Sender);
  void EditChange(TObject* Sender);

  TString FKey;
  bool FIsStored = false;
  bool FIsToGo = false;
};

}  // namespace kk
