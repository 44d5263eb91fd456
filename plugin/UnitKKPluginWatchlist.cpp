#include "plugin/UnitKKPluginWatchlist.h"

#include "host/base/Guard.h"
#include "host/base/WithCleanup.h"
#include "host/common/TCmdParams.h"
#include "host/common/TFileHelper.h"
#include "host/contract/IWatchlistVisualization.h"
#include "host/contract/TPlugins.h"
#include "persistence/TWatchlistHandler.h"
#include "plugin/InsertSearchResult.h"
#include "plugin/TSearchLocationIntegrationWatchlist.h"
#include "plugin/TSettingsExtenderWatchlist.h"
#include "plugin/texts/UnitKKPluginWatchlistConsts.h"
#include "plugin/texts/UnitKKPluginWatchlistResourceStrings.h"
#include "settings/TIniFileSectionWatchlist.h"
#include "settings/TSettingsTextWatchlist.h"

namespace kk {

namespace {

constexpr TGroupIdentification cGroup{3};
constexpr TPluginAttributes cAttributes = 3;  // the two lowest members

}  // namespace

void RegisterWatchlist() {
  for (int i = 0; i < Plugins().GetCount(); ++i) {
    if (SameGuid(Plugins().GetItems(i)->GetId(), cPluginId)) return;
  }
  Plugins().Add(MakeIntf<TPluginWatchlist>());
}

TPluginWatchlist::TPluginWatchlist() {
  FIntegration =
      MakeIntf<TPluginIntegrationWatchlist>(MakeIntf<TPluginIntegrationInfo>(cPluginId, cGroup),
                                            TNotifyGetForm::Of<&TPluginWatchlist::DoGetForm>(this));
  CreateHandler(TIntf<IPlugin>(this));
}

TPluginWatchlist::~TPluginWatchlist() {
  if (FToolbarButton) FToolbarButton->SetOnClick({});  // the host may keep it
  LetGo();
  // The packages of the sources may be unloaded from here on.
  FreeBuriedCategories();
}

TGuid TPluginWatchlist::GetId() const { return cPluginId; }

TGroupIdentification TPluginWatchlist::GetGroup() const { return cGroup; }

TPluginAttributes TPluginWatchlist::GetAttributes() const { return cAttributes; }

TString TPluginWatchlist::GetSignature() const { return TString(_resPluginSignature); }

TString TPluginWatchlist::GetDescription() const { return TString(_resToolButtonCaption); }

TString TPluginWatchlist::GetLongDescription() const { return TString(_resPluginLongDescription); }

bool TPluginWatchlist::QueryDelegated(const TGuid& iIid, void** oInterface) {
  const auto ask = [&](IInterface* iObject) {
    return iObject != nullptr && iObject->QueryInterface(iIid, oInterface);
  };
  if (iIid == IID_PluginIntegration) return ask(GetIntegration().Get());
  if (iIid == IToolbarExtender::cIid) return ask(FToolbarExtender.Get());
  if (iIid == IPluginDataPublisher::cIid) return ask(GetDataPublisher().Get());
  if (iIid == ISettingsExtender::cIid) return ask(GetSettingsExtender().Get());
  if (iIid == IWatchlistAccess::cIid) return ask(FAccess.Get());
  return false;
}

void TPluginWatchlist::Initialize(const TIntf<IApplication>& iApplication) {
  if (Handler() == nullptr) throw Exception(_resRefusedNotReady);
  TCommonPlugin::Initialize(iApplication);
  CreateToolbarButton();
  AddIntegrations();
  FRemindThreadSite.emplace(iApplication);
  Handler()->Initialize(iApplication);
  SetLoaded(true);
  CreateForm(iApplication);
}

void TPluginWatchlist::CreateToolbarButton() {
  FToolbarExtender = MakeIntf<TCommonToolbarExtender>();
  FToolbarButton = MakeIntf<TToolbarButtonWatchlist>();
  FToolbarButton->SetOnClick(TNotifyEvent::Of<&TPluginWatchlist::DoToolbarButtonClick>(this));
  FToolbarExtender->Add(FToolbarButton);
}

void TPluginWatchlist::AddIntegrations() {
  const auto injected = Supports<IPluginIntegrations>(FIntegration);
  for (int i = 0; i < injected->GetCount(); ++i) {
    const auto integration = Supports<IWatchlistIntegration>(injected->GetItem(i));
    if (!integration) continue;
    LogInfo(_resLoggingSenderPlugin, _resLoggingWatchlistIntegrationFound,
            {integration->GetName(), GUIDToString(integration->GetId())});
    Handler()->LstIntegration().Add(integration);
  }
}

void TPluginWatchlist::CreateForm(const TIntf<IApplication>& iApplication) {
  FForm = std::make_unique<TfrmKKWatchlist>();
  FForm->Initialize(iApplication);
  FAccess = MakeIntf<TWatchlistAccess>(*FForm);
}

void TPluginWatchlist::Uninitialize() {
  // What a source raises on the way goes to the host; nothing is left behind even so.
  WithCleanup(
      u"TPluginWatchlist.Uninitialize",
      [this] {
        // A list that was never loaded must not be saved over the file.
        if (FLoaded) Handler()->Uninitialize();
        if (FForm) FForm->Uninitialize();
      },
      [this] { LetGo(); });
}

void TPluginWatchlist::SetLoaded(bool iLoaded) {
  FLoaded = iLoaded;
  if (FDataPublisher) FDataPublisher->SetEnabled(iLoaded);
}

void TPluginWatchlist::LetGo() {
  SetLoaded(false);
  if (FAccess) FAccess->Detach();
  FAccess = nullptr;
  FForm.reset();
  FreeHandler();
  FRemindThreadSite.reset();
  FIntegration = nullptr;
  FToolbarExtender = nullptr;
  FDataPublisher = nullptr;
  TCommonPlugin::Uninitialize();
}

void TPluginWatchlist::MinimizeToTray() {
  if (FForm) FForm->MinimizeToTray();
}

void TPluginWatchlist::RestoreFromTray() {
  if (FForm) FForm->RestoreFromTray();
}

int TPluginWatchlist::ThreadCount() const {
  return Handler() != nullptr ? Handler()->ThreadCount() : 0;
}

void TPluginWatchlist::TerminateThreads() {
  if (Handler() != nullptr) Handler()->TerminateThreads();
}

void TPluginWatchlist::ProcessCdmLineParams(TStringView iParamsAsStr) {
  TCommonPlugin::ProcessCdmLineParams(iParamsAsStr);
  bool handled = false;
  const TCmdParams params(iParamsAsStr);
  for (int i = 0; i < params.Count() && !handled; ++i) {
    if (SameText(params.GetName(i), cCmdParamAdd)) {
      handled = CmdLineAddItem(params.GetValue(i));
    } else if (SameText(params.GetName(i), cCmdParamImportFromFile)) {
      handled = CmdLineImportFromFile(params.GetValue(i));
    }
  }
  if (handled) DoToolbarButtonClick(nullptr);
}

bool TPluginWatchlist::CmdLineAddItem(TStringView iValue) {
  LogInfo(_resLoggingSenderPlugin, _resLoggingCmdParamAdd, {iValue});
  if (Handler() == nullptr) return false;
  for (TWatchlistIntegration* integration : Handler()->LstIntegration()) {
    const auto visualization = Supports<IWatchlistVisualization>(integration->Integration());
    if (!visualization) continue;
    const TIntf<ISearchResult> result = visualization->CreateSearchResultFromCmdLine(iValue);
    if (result) return InsertSearchResult(result, *integration, FForm.get());
  }
  return false;
}

bool TPluginWatchlist::CmdLineImportFromFile(TStringView iFileName) {
  LogInfo(_resLoggingSenderPlugin, _resLoggingcmdParamImportFromFile, {iFileName});
  bool imported = false;
  Guarded(u"CmdLineImportFromFile", [&] {
    imported = FForm && FileExists(iFileName) && FForm->ImportInBackgroundFromFile(iFileName);
  });
  return imported;
}

TIntf<IInterfaceList> TPluginWatchlist::GetIntegrations(const TIntf<IIntegrationInfo>& iInfo) {
  const TIntf<IInterfaceList> integrations = NewInterfaceList();
  if (Handler() == nullptr || !iInfo) return integrations;
  const TGuid id = iInfo->GetId();
  const TLstWatchlistIntegration& sources = Handler()->LstIntegration();
  int index = sources.IndexOfId(id);
  // A source whose affiliate is unknown counts as not found.
  if (index >= 0) index = sources.IndexOfId(sources.GetIntegrations(index)->GetAffiliateId());
  if (index >= 0 || SameGuid(id, cShoppingCartPluginId)) {
    integrations->Add(TIntf<IContextMenuExtender>(
        MakeIntf<TSearchLocationIntegrationWatchlist>(GetId(), id, FForm.get())));
  }
  return integrations;
}

std::vector<TSettingsKeyInfo> TPluginWatchlist::GetSettingsKeys() const {
  return TIniFileSectionWatchlist::Keys();
}

TString TPluginWatchlist::GetSettingsNode() const {
  return TSettingsTextWatchlist::GetSettingsNode();
}

const TStringList& TPluginWatchlist::GetSettings() {
  TSettingsTextWatchlist::GetSettings(FSettingslist);
  return FSettingslist;
}

TString TPluginWatchlist::GetSettingsName() const {
  return TSettingsTextWatchlist::GetSettingsName();
}

void TPluginWatchlist::SetSettings(const TStringList& iList) {
  TSettingsTextWatchlist::SetSettings(iList);
}

TIntf<ISettingsExtender> TPluginWatchlist::GetSettingsExtender() const {
  return MakeIntf<TSettingsExtenderWatchlist>();
}

TIntf<IPluginDataPublisher> TPluginWatchlist::GetDataPublisher() {
  if (!FDataPublisher) {
    FDataPublisher = MakeIntf<TWatchlistDataPublisher>(
        TNotifyEventImportFromFile::Of<&TPluginWatchlist::DoDataPublisherImportFromFile>(this),
        TNotifyEventImportFromKKMobile::Of<&TPluginWatchlist::DoDataPublisherImportFromKKMobile>(
            this));
    FDataPublisher->SetEnabled(FLoaded);
  }
  return FDataPublisher;
}

TfrmKKWatchlist* TPluginWatchlist::DoGetForm(TObject*) { return FForm.get(); }

bool TPluginWatchlist::DoDataPublisherImportFromFile(TObject*, TStringView iFileName) {
  return FForm && FForm->ImportInBackgroundFromFile(iFileName);
}

bool TPluginWatchlist::DoDataPublisherImportFromKKMobile(TObject*, TMemoryStream& iStream) {
  return FForm && FForm->ImportInBackgroundFromKKMobileStream(iStream);
}

void TPluginWatchlist::DoToolbarButtonClick(TObject*) {
  if (FForm) FForm->Show();
}

}  // namespace kk
