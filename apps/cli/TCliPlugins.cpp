#include "apps/cli/TCliPlugins.h"

#include <algorithm>

#include "apps/cli/TerminalText.h"
#include "host/base/Guard.h"
#include "host/contract/IMultiThreadPlugin.h"
#include "host/contract/IPluginIntegration.h"
#include "host/contract/IReminderHost.h"
#include "host/contract/ISearchResultConverter.h"
#include "host/contract/TPlugins.h"

namespace kk {
namespace {

/// The host as the plug-ins see it: it has no section, and pop-ups only where reminders are
/// delivered.
class TCliApplication : public TInterfaced<IApplication, IReminderHost> {
 public:
  explicit TCliApplication(TCliPlugins::TShowPopUp iShow) : FShow(std::move(iShow)) {}

  void SectionClosed() override {}
  bool ShowNotificationWindow(TForm* iForm) override {
    if (!FShow || iForm == nullptr) return false;
    FShow(*iForm);
    const std::unique_ptr<TForm> taken(iForm);  // not before: what failed is freed by the caller
    return true;
  }
  bool DeliversReminders() const override { return FShow != nullptr; }

 private:
  const TCliPlugins::TShowPopUp FShow;
};

/// A host that asks what a plug-in offers before it is told who asks.
class TCliIntegrationInfo : public TInterfaced<IIntegrationInfo> {
 public:
  TGuid GetId() const override { return cEmptyGuid; }
};

std::vector<TIntf<IPlugin>> All() {
  std::vector<TIntf<IPlugin>> result;
  for (int i = 0; i < Plugins().GetCount(); ++i) result.push_back(Plugins().GetItems(i));
  return result;
}

TIntf<IInterfaceList> Offers(const TIntf<IPlugin>& iPlugin, const TIntf<IIntegrationInfo>& iTo) {
  const auto door = Supports<IPluginIntegration>(iPlugin);
  TIntf<IInterfaceList> result;
  if (door) result = door->GetIntegrations(iTo);
  return result ? result : NewInterfaceList();
}

template <class I>
std::vector<TIntf<I>> AllOf(const IInterfaceList& iList) {
  std::vector<TIntf<I>> result;
  for (int i = 0; i < iList.GetCount(); ++i) {
    if (auto entry = GetAs<I>(iList, i)) result.push_back(entry);
  }
  return result;
}

void LogFailure(TStringView iFormat, const TIntf<IPlugin>& iPlugin, const std::exception& iCause) {
  LogError(u"Host", iFormat, {ForTerminal(iPlugin->GetDescription()), ForTerminal(iCause)});
}

}  // namespace

void TCliPlugins::Find() {
  const TIntf<IIntegrationInfo> info = MakeIntf<TCliIntegrationInfo>();
  for (const TIntf<IPlugin>& plugin : All()) {
    const auto offered = AllOf<IWatchlist>(*Offers(plugin, info));
    if (offered.empty()) continue;
    FWatchlistPlugin = plugin;
    FWatchlist = offered.front();
    return;
  }
}

TCliPlugins::~TCliPlugins() { Uninitialize(); }

void TCliPlugins::Exchange() {
  for (const TIntf<IPlugin>& taker : All()) {
    const auto door = Supports<IPluginIntegration>(taker);
    if (!door) continue;
    for (const TIntf<IPlugin>& giver : All()) {
      if (giver == taker) continue;
      const TIntf<IInterfaceList> offered = Offers(giver, door->GetIntegrationInfo());
      door->AddIntegrations(offered);
      if (!(taker == FWatchlistPlugin)) continue;
      for (const auto& source : AllOf<IWatchlistIntegration>(*offered)) FSources.push_back(source);
    }
  }
}

void TCliPlugins::Initialize() {
  Exchange();
  const TIntf<IApplication> application = MakeIntf<TCliApplication>(FShowPopUp);
  for (const TIntf<IPlugin>& plugin : All()) {
    if (plugin == FWatchlistPlugin) continue;
    try {
      plugin->Initialize(application);
      FInitialized.push_back(plugin);
    } catch (const std::exception& e) {
      LogFailure(u"Das Plug-in \"%s\" lässt sich nicht starten: %s", plugin, e);
    }
  }
  FWatchlistPlugin->Initialize(application);
  FInitialized.push_back(FWatchlistPlugin);
  FAccess = Supports<IWatchlistAccess>(FWatchlistPlugin);
  if (!FAccess) throw Exception(u"Diese Beobachtenliste lässt sich im Terminal nicht bedienen");
}

void TCliPlugins::ProcessCommandLine(TStringView iLine) {
  for (const TIntf<IPlugin>& plugin : All()) plugin->ProcessCdmLineParams(iLine);
}

void TCliPlugins::TerminateThreads() {
  for (auto plugin = FInitialized.rbegin(); plugin != FInitialized.rend(); ++plugin) {
    const auto working = Supports<IMultiThreadPlugin>(*plugin);
    if (working) Guarded(u"TCliPlugins.TerminateThreads", [&] { working->TerminateThreads(); });
  }
}

void TCliPlugins::LeaveWork() { DeliversReminders() ? List().CancelUpdates() : TerminateThreads(); }

int TCliPlugins::ThreadCount() const {
  int result = 0;
  for (const TIntf<IPlugin>& plugin : FInitialized) {
    if (const auto working = Supports<IMultiThreadPlugin>(plugin)) result += working->ThreadCount();
  }
  return result;
}

void TCliPlugins::Uninitialize() {
  FAccess = nullptr;
  while (!FInitialized.empty()) {
    const TIntf<IPlugin> plugin = FInitialized.back();
    FInitialized.pop_back();
    try {
      plugin->Uninitialize();
    } catch (const std::exception& e) {
      LogFailure(u"Das Plug-in \"%s\" lässt sich nicht beenden: %s", plugin, e);
    }
  }
  FWatchlist = nullptr;
  FSources.clear();
  FWatchlistPlugin = nullptr;
}

std::vector<std::pair<TString, TString>> TCliPlugins::Details(
    const TGuid& iSource, const TIntf<ISearchResult>& iResult) const {
  std::vector<std::pair<TString, TString>> result;
  if (!iResult) return result;
  for (const TIntf<IPlugin>& plugin : All()) {
    const auto converter = Supports<ISearchResultConverter>(plugin);
    if (!converter || plugin->GetId() != iSource) continue;
    TStringList titles;
    TStringList values;
    Guarded(u"TCliPlugins.Details", [&] {
      converter->Convert(true, iResult, titles);
      converter->Convert(false, iResult, values);
    });
    for (int i = 0; i < std::min(titles.GetCount(), values.GetCount()); ++i) {
      result.emplace_back(titles.Get(i), values.Get(i));
    }
  }
  return result;
}

std::vector<TSettingsKeyInfo> TCliPlugins::SettingsKeys() const {
  std::vector<TSettingsKeyInfo> result;
  for (const TIntf<IPlugin>& plugin : All()) {
    const auto keys = Supports<ISettingsKeys>(plugin);
    if (!keys) continue;
    const auto more = keys->GetSettingsKeys();
    result.insert(result.end(), more.begin(), more.end());
  }
  return result;
}

}  // namespace kk
