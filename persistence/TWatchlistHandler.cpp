#include "persistence/TWatchlistHandler.h"

#include <utility>

#include "host/base/Guard.h"
#include "host/base/TMainLoop.h"
#include "host/common/TFileHelper.h"
#include "host/contract/ISearchLocationIntegration.h"
#include "host/contract/IWatchlistVisualization.h"
#include "host/contract/TPlugins.h"
#include "persistence/IWatchlistHandlerSite.h"
#include "persistence/TWatchlistFileLoader.h"
#include "persistence/TWatchlistFileSaver.h"
#include "persistence/TWatchlistFileSaverMobileExport.h"
#include "plugin/texts/UnitKKPluginWatchlistConsts.h"
#include "plugin/texts/UnitKKPluginWatchlistResourceStrings.h"
#include "reminders/TRemindHandler.h"

namespace kk {

namespace {

TWatchlistHandler* currentHandler = nullptr;

// Categories and their items outlive the handler on purpose: their end would tell listeners of a
// handler on its way out. Here they stay in reach until FreeBuriedCategories.
TLstWatchlistCategory* graveyard = nullptr;

void Bury(TLstWatchlistCategory& ioCategories) {
  if (graveyard == nullptr) graveyard = std::make_unique<TLstWatchlistCategory>(false).release();
  const std::vector<TWatchlistCategory*> categories(ioCategories.begin(), ioCategories.end());
  ioCategories.ClearWithoutFree();
  for (TWatchlistCategory* category : categories) graveyard->Add(*category);
}

// What every other plug-in adds to a source's view.
void AddExtensionsOfPlugins(IWatchlistVisualization& ioVisualization) {
  for (int i = 0; i < Plugins().GetCount(); ++i) {
    const TIntf<IPlugin> plugin = Plugins().GetItems(i);
    if (SameGuid(plugin->GetId(), cPluginId)) continue;
    const auto extender = Supports<ISearchLocationIntegration>(plugin);
    if (!extender) continue;
    ioVisualization.AddExtensions(extender->GetIntegrations(ioVisualization.GetIntegrationInfo()));
  }
}

}  // namespace

TWatchlistHandler* Handler() { return currentHandler; }

void CreateHandler(const TIntf<IPlugin>& iPlugin) {
  if (currentHandler != nullptr) return;
  currentHandler = std::make_unique<TWatchlistHandler>(iPlugin).release();
}

void FreeHandler() {
  // The pointer is emptied last: what dies with the handler may still ask for it.
  std::unique_ptr<TWatchlistHandler>(currentHandler).reset();
  currentHandler = nullptr;
}

void FreeBuriedCategories() {
  if (HasWatchlistModelRoot()) return;
  const std::unique_ptr<TLstWatchlistCategory> buried(std::exchange(graveyard, nullptr));
  if (!buried) return;
  TLstWatchlistCategory owner(true);
  for (TWatchlistCategory* category : *buried) {
    owner.Add(std::unique_ptr<TWatchlistCategory>(category));
  }
  buried->ClearWithoutFree();  // before what it borrows dies
}

TWatchlistHandler::TWatchlistHandler(const TIntf<IPlugin>& iPlugin)
    : FPlugin(iPlugin),
      FLstIntegration(std::make_unique<TLstWatchlistIntegration>(true)),
      FLstCategory(std::make_unique<TLstWatchlistCategory>(true)),
      FLstNotifyItemAdd(std::make_unique<TNotifyEventListSecure>()),
      FLstNotifyItemDelete(std::make_unique<TNotifyEventListSecure>()),
      FRemindHandler(std::make_unique<TRemindHandler>()),
      FModelRootBefore(SetWatchlistModelRoot(this)) {}

TWatchlistHandler::~TWatchlistHandler() {
  // An updater waits for its source with the message loop alive, so the list stays until it is
  // empty.
  Guarded(u"TWatchlistHandler.Destroy", [this] { FLstIntegration->Clear(); });
  FLstIntegration.reset();
  Guarded(u"TWatchlistHandler.Destroy", [this] { Bury(*FLstCategory); });
  FLstCategory.reset();
  FLstNotifyItemAdd.reset();
  FLstNotifyItemDelete.reset();
  FRemindHandler.reset();
  FPlugin = {};
  SetWatchlistModelRoot(FModelRootBefore);
}

TLstRemindItemSync& TWatchlistHandler::GetLstRemind() const { return FRemindHandler->LstRemind(); }

TString TWatchlistHandler::GetFileName() const {
  return TFileHelper::GetAppDataFileName(cWatchlistFileName);
}

void TWatchlistHandler::Initialize(const TIntf<IApplication>& iApplication) {
  AssertMainThread();
  FRemindHandler->StartThread(iApplication);
  if (IWatchlistHandlerSite* site = WatchlistHandlerSite()) {
    FAdditionalColumns = site->CreateAdditionalColumns();
  }
  for (const TWatchlistIntegration* record : *FLstIntegration) {
    const auto visualization = Supports<IWatchlistVisualization>(record->Integration());
    if (!visualization) continue;
    if (FAdditionalColumns) visualization->AddExtension(FAdditionalColumns);
    AddExtensionsOfPlugins(*visualization);
  }
  LoadFromFile();
}

void TWatchlistHandler::Uninitialize() {
  AssertMainThread();
  FRemindHandler->EndThread();
  // Whatever happens in a window, the data are saved.
  Guarded(u"TWatchlistHandler.Uninitialize", [this] { WaitForThreads(); });
  FAdditionalColumns = {};
  SaveToFile();
  FLstNotifyItemAdd->Clear();
  FLstNotifyItemDelete->Clear();
}

void TWatchlistHandler::WaitForThreads() {
  if (IWatchlistHandlerSite* site = WatchlistHandlerSite()) {
    site->WaitForThreads(*FLstIntegration);
    return;
  }
  if (!FLstIntegration->HasActiveIntegrations()) return;
  for (const TWatchlistIntegration* record : *FLstIntegration) record->Updater().Uninitialize();
  for (const TWatchlistIntegration* record : *FLstIntegration) record->Updater().WaitFor();
}

void TWatchlistHandler::LoadFromFile() {
  AssertMainThread();
  const TString fileName = GetFileName();
  TLstRemindItem reminders(true);
  TWatchlistFileLoader loader(fileName);
  const bool loaded = loader.LoadFromFile(*FLstCategory, reminders, *FLstIntegration);
  // A later save makes what could not be read the backup, in place of the last good state.
  if (!loaded) {
    for (const TString& name : {fileName, TWatchlistFileSaver::BackupFileName(fileName)}) {
      if (FileExists(name)) PutAside(name);
    }
  }
  SetIntegrationsUnchanged();
  GetLstRemind().Append(reminders, true);
}

void TWatchlistHandler::SaveToFile() {
  AssertMainThread();
  FLastSaveFailed = !WriteFile();
  // Also after a failure, as required: the next save writes only what changes from now on.
  GetLstRemind().SetChanged(false);
  SetIntegrationsUnchanged();
}

bool TWatchlistHandler::WriteFile() {
  try {
    const TString fileName = GetFileName();
    // A save that failed has left the last good state in the backup alone, and the save after the
    // next would write over it.
    const TString backup = TWatchlistFileSaver::BackupFileName(fileName);
    if (!FileExists(fileName) && FileExists(backup)) PutAside(backup);
    TWatchlistFileSaver saver(fileName);
    const TLstRemindItemSync::TReading reading(GetLstRemind());
    saver.SaveToFile(*FLstCategory, GetLstRemind(), *FLstIntegration);
    return !saver.LastSaveFailed();
  } catch (const std::exception& e) {  // the data folder can't be made
    LogError(_resLoggingSenderWatchlistHandler, _resLoggingFileSaveFailed,
             {cWatchlistFileName, ToSingleLine(MessageOf(e))});
    return false;
  }
}

void TWatchlistHandler::SetIntegrationsUnchanged() {
  for (TWatchlistIntegration* record : *FLstIntegration) record->SetUnchanged();
}

void TWatchlistHandler::SaveAllForMobileExport(TStringView iFileName) const {
  TWatchlistFileSaverMobileExport::Save(iFileName, LstCategory(), LstIntegration());
}

void TWatchlistHandler::MakeBackup() const { TWatchlistFileSaver::MakeBackup(GetFileName()); }

void TWatchlistHandler::GetAllStreamsInFile(TLstStreamForCompression& ioLst) const {
  TWatchlistFileSaver::GetAllStreamsInFile(GetFileName(), ioLst);
}

bool TWatchlistHandler::HasSearchResult(const TGuid& iPluginId,
                                        const TIntf<ISearchResult>& iSearchResult) const {
  return FLstCategory->HasSearchResult(iPluginId, iSearchResult);
}

TIntf<ISearchResult> TWatchlistHandler::FindSameSearchResult(
    const TGuid& iPluginId, const TIntf<ISearchResult>& iSearchResult) const {
  return FLstCategory->FindSameSearchResult(iPluginId, iSearchResult);
}

int TWatchlistHandler::GetItemCount() const {
  int count = 0;
  for (const TWatchlistCategory* category : *FLstCategory) count += category->GetItemCount(true);
  return count;
}

void TWatchlistHandler::AddNotificationItem(const TNotifyEvent& iCallbackAdd,
                                            const TNotifyEvent& iCallbackDelete) {
  FLstNotifyItemAdd->Add(iCallbackAdd);
  FLstNotifyItemDelete->Add(iCallbackDelete);
}

void TWatchlistHandler::RemoveNotificationItem(const TNotifyEvent& iCallbackAdd,
                                               const TNotifyEvent& iCallbackDelete) {
  if (!FLstNotifyItemAdd) return;  // what dies with the plug-in's last reference
  FLstNotifyItemAdd->Remove(iCallbackAdd);
  FLstNotifyItemDelete->Remove(iCallbackDelete);
}

void TWatchlistHandler::NotifyItemAdd(TWatchlistItem& iItem) { FLstNotifyItemAdd->Fire(&iItem); }

void TWatchlistHandler::NotifyItemDelete(TWatchlistItem& iItem) {
  FLstNotifyItemDelete->Fire(&iItem);
}

void TWatchlistHandler::TerminateThreads() {
  AssertMainThread();
  FRemindHandler->EndThread();
  for (const TWatchlistIntegration* record : *FLstIntegration) record->Updater().Uninitialize();
}

int TWatchlistHandler::ThreadCount() const {
  if (!FLstIntegration->HasActiveIntegrations()) return 0;
  int count = 0;
  for (const TWatchlistIntegration* record : *FLstIntegration) {
    if (record->Updater().IsActiveWithItem()) ++count;
  }
  return count;
}

}  // namespace kk
