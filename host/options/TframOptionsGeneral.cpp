#include "host/options/TframOptionsGeneral.h"

#include "host/common/TIniFileSectionBase.h"

namespace kk {

void TframOptionsGeneral::LoadSettings() {
  const TIniFileSectionGeneral settings;
  chckbxDelayedStart.SetChecked(settings.GetDelayedStart());
  chckbxCloseToTray.SetChecked(settings.GetCloseToTray());
  chckbxStartInTray.SetChecked(settings.GetStartInTray());
}

void TframOptionsGeneral::SaveSettings() {
  TIniFileSectionGeneral settings;
  settings.SetDelayedStart(chckbxDelayedStart.Checked());
  settings.SetCloseToTray(chckbxCloseToTray.Checked());
  settings.SetStartInTray(chckbxStartInTray.Checked());
}

}  // namespace kk
