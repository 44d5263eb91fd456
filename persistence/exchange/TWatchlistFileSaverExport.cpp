#include "persistence/exchange/TWatchlistFileSaverExport.h"

#include <filesystem>

#include "host/base/Exception.h"
#include "host/common/TFileHelper.h"
#include "persistence/TWatchlistHandler.h"
#include "plugin/texts/UnitKKPluginWatchlistResourceStrings.h"

namespace kk {

namespace {

// Also by another path or name.
bool IsLiveFile(TStringView iFileName) {
  std::error_code none;  // one of them is not there
  return Handler() != nullptr &&
         std::filesystem::equivalent(ToUtf8(iFileName), ToUtf8(Handler()->GetFileName()), none);
}

}  // namespace

void TWatchlistFileSaverExport::SetIncludeIntegrations(const IInterfaceList& iIntegrations) {
  for (int i = 0; i < iIntegrations.GetCount(); ++i) {
    const auto integration = GetAs<IWatchlistIntegration>(iIntegrations, i);
    if (integration) FIncludeIntegrations.Add(FOwnRecords.Add(integration));
  }
}

void TWatchlistFileSaverExport::SaveToFile(const TLstWatchlistCategory& iLstCategory,
                                           const TLstRemindItem& iLstRemindItem,
                                           const TLstWatchlistIntegration& iLstIntegration) {
  if (IsLiveFile(FileName())) throw Exception(Format(_resExportOwnFile, {FileName()}));
  if (FileExists(FileName())) DeleteFile(FileName());
  TWatchlistFileSaver::SaveToFile(iLstCategory, iLstRemindItem, iLstIntegration);
}

bool TWatchlistFileSaverExport::CanSaveIntegration(
    const TWatchlistIntegration& iIntegration) const {
  return FIncludeIntegrations.IndexOf(&iIntegration) >= 0;
}

}  // namespace kk
