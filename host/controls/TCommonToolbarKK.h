#pragma once

#include <memory>
#include <vector>

#include "host/contract/IApplication.h"
#include "host/contract/IToolbarExtender.h"
#include "host/controls/TToolButton.h"
#include "host/controls/TToolbar.h"

namespace kk {

/// Fills the toolbar of a section with the buttons of the host's main toolbar, by which the user
/// goes from section to section. The host offers them as IToolbarExtender of its application; where
/// it does not, as on a terminal, the toolbar stays empty. Main thread.
class TCommonToolbarKK : public TObject {
 public:
  /// iPluginId: whose section this is; its button is drawn as the selected one. The toolbar is
  /// borrowed and lives longer.
  TCommonToolbarKK(TIntf<IApplication> iApplication, const TGuid& iPluginId, TToolbar& ioToolbar);
  ~TCommonToolbarKK() override;

  /// Makes the buttons, in ascending order; those of an earlier call go.
  void Init();

 private:
  class TButtonOfPlugin;

  TIntf<IApplication> FApplication;
  TGuid FPluginId;
  TToolbar& FToolbar;
  std::vector<std::unique_ptr<TButtonOfPlugin>> FButtons;
};

}  // namespace kk
