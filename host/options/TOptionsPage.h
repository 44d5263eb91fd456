#pragma once

#include "host/base/TObject.h"
#include "host/contract/ISettingsExtender.h"
#include "host/controls/TLabel.h"
#include "host/controls/TPanel.h"

namespace kk {

/// A page in the settings dialog: a settings node and the place of its frame. A node that can't
/// load its settings, or has no frame, is replaced by a text that says so, and is neither validated
/// nor saved. Main thread.
class TOptionsPage : public TObject {
 public:
  /// Loads the settings and puts the frame into its place, which is hidden. The panel is borrowed.
  TOptionsPage(TIntf<ISettingsNode> iNode, TPanel& ioPages);
  /// Takes the frame out of the dialog.
  ~TOptionsPage() override;

  const TIntf<ISettingsNode>& Node() const { return FNode; }
  const TString& Caption() const { return FCaption; }
  /// Whether its settings are on show, and are to be saved.
  bool IsLoaded() const { return FFrame != nullptr; }
  void SetVisible(bool iVisible) { FPlace.SetVisible(iVisible); }
  TPanel& Place() { return FPlace; }
  TLabel& Failure() { return FFailure; }

 private:
  void Load();

  TIntf<ISettingsNode> FNode;
  TString FCaption;
  TPanel FPlace;
  TLabel FFailure;
  TPanel* FFrame = nullptr;
};

}  // namespace kk
