#include "persistence/exchange/TWatchlistFileSaverExport.h"

#include "host/common/TFileHelper.h"

namespace kk {

void TWatchlistFileSaverExport::SetIncludeIntegrations(const IInterfaceList& iIntegrations) {
  for (int i = 0; i < iIntegrations.GetCount(); ++i) {
    const auto integration = GetAs<IWatchlistIntegration>(iIntegrations, i);
    if (integration) FIncludeIntegrations.Add(FOwnRecords.Add(integration));
  }
}

void TWatchlistFileSaverExport::SaveToFile(const TLstWatchlistCategory& iLstCategory,
                                           const TLstRemindItem& iLstRemindItem,
                                           const TLstWatchlistIntegration& iLstIntegration) {
  if (FileExists(FileName())) DeleteFile(FileName());
  TWatchlistFileSaver::SaveToFile(iLstCategory, iLstRemindItem, iLstIntegration);
}

bool TWatchlistFileSaverExport::CanSaveIntegration(
    const TWatchlistIntegration& iIntegration) const {
  return FIncludeIntegrations.IndexOf(&iIntegration) >= 0;
}

}  // namespace kk
