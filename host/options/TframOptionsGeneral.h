#pragma once

#include "host/controls/TCheckBox.h"
#include "host/options/TframOptionsBase.h"

namespace kk {

/// The page "Allgemein": how the program starts and what closing its window means.
class TframOptionsGeneral final : public TframOptionsBase {
 public:
  TframOptionsGeneral() : TframOptionsBase(u"framOptionsGeneral") {}

  void LoadSettings() override;
  void SaveSettings() override;

  TCheckBox chckbxDelayedStart{this, u"chckbxDelayedStart",
                               u"Bereiche einen Augenblick &nach dem Programm starten"};
  TCheckBox chckbxCloseToTray{this, u"chckbxCloseToTray",
                              u"Beim &Schließen im Infobereich weiterlaufen"};
  TCheckBox chckbxStartInTray{this, u"chckbxStartInTray", u"Im &Infobereich starten"};
};

}  // namespace kk
