#include "host/program/THostPlugins.h"

#include <algorithm>

#include "host/base/Guard.h"
#include "host/contract/IMultiThreadPlugin.h"
#include "host/contract/IPluginIntegration.h"
#include "host/contract/IReminderHost.h"
#include "host/contract/ISearchResultConverter.h"
#include "host/contract/TPlugins.h"

namespace kk {
namespace {

/// A host that asks what a plug-in offers before it is told who asks.
class THostIntegrationInfo : public TInterfaced<IIntegrationInfo> {
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
  LogError(u"Host", iFormat, {iPlugin->GetDescription(), ToSingleLine(MessageOf(iCause))});
}

}  // namespace

void THostPlugins::Find() {
  const TIntf<IIntegrationInfo> info = MakeIntf<THostIntegrationInfo>();
  for (const TIntf<IPlugin>& plugin : All()) {
    const auto offered = AllOf<IWatchlist>(*Offers(plugin, info));
    if (offered.empty()) continue;
    FWatchlistPlugin = plugin;
    FWatchlist = offered.front();
    return;
  }
}

THostPlugins::~THostPlugins() { Uninitialize(); }

void THostPlugins::Exchange() {
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

void THostPlugins::Initialize(const TIntf<IApplication>& iApplication) {
  const auto reminders = Supports<IReminderHost>(iApplication);
  FDeliversReminders = !reminders || reminders->DeliversReminders();
  Exchange();
  for (const TIntf<IPlugin>& plugin : All()) {
    if (plugin == FWatchlistPlugin) continue;
    try {
      plugin->Initialize(iApplication);
      FInitialized.push_back(plugin);
    } catch (const std::exception& e) {
      LogFailure(u"Das Plug-in \"%s\" lässt sich nicht starten: %s", plugin, e);
    }
  }
  FWatchlistPlugin->Initialize(iApplication);
  FInitialized.push_back(FWatchlistPlugin);
  FAccess = Supports<IWatchlistAccess>(FWatchlistPlugin);
}

void THostPlugins::ProcessCommandLine(TStringView iLine) {
  for (const TIntf<IPlugin>& plugin : All()) plugin->ProcessCdmLineParams(iLine);
}

void THostPlugins::TerminateThreads() {
  for (auto plugin = FInitialized.rbegin(); plugin != FInitialized.rend(); ++plugin) {
    const auto working = Supports<IMultiThreadPlugin>(*plugin);
    if (working) Guarded(u"THostPlugins.TerminateThreads", [&] { working->TerminateThreads(); });
  }
}

void THostPlugins::LeaveWork() {
  DeliversReminders() ? List().CancelUpdates() : TerminateThreads();
}

int THostPlugins::ThreadCount() const {
  int result = 0;
  for (const TIntf<IPlugin>& plugin : FInitialized) {
    if (const auto working = Supports<IMultiThreadPlugin>(plugin)) result += working->ThreadCount();
  }
  return result;
}

void THostPlugins::Uninitialize() {
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

std::vector<THostPlugins::TSearch> THostPlugins::Searches() const {
  std::vector<TSearch> result;
  for (const TIntf<IPlugin>& plugin : FInitialized) {
    if (const auto source = Supports<ISearchSource>(plugin)) {
      result.push_back({source, ExtensionsFor(plugin, *source)});
    }
  }
  return result;
}

std::vector<TIntf<IInterfaceList>> THostPlugins::ExtensionsFor(const TIntf<IPlugin>& iOwner,
                                                               const ISearchSource& iSource) const {
  std::vector<TIntf<IInterfaceList>> result;
  for (const TIntf<IPlugin>& giver : FInitialized) {
    const auto extends = Supports<ISearchLocationIntegration>(giver);
    if (!extends || giver == iOwner) continue;
    try {
      result.push_back(extends->GetIntegrations(iSource.GetIntegrationInfo()));
    } catch (const std::exception& e) {
      LogFailure(u"Was das Plug-in \"%s\" zur Suche beiträgt, fehlt: %s", giver, e);
    }
  }
  return result;
}

std::vector<TIntf<IToolbarButton>> THostPlugins::ToolbarButtons() const {
  std::vector<TIntf<IToolbarButton>> result;
  for (const TIntf<IPlugin>& plugin : FInitialized) {
    const auto extender = Supports<IToolbarExtender>(plugin);
    if (!extender) continue;
    for (int i = 0; i < extender->GetCount(); ++i) result.push_back(extender->GetItems(i));
  }
  std::ranges::stable_sort(result, {}, [](const auto& iButton) { return iButton->GetSortOrder(); });
  return result;
}

std::vector<TIntf<ISettingsExtender>> THostPlugins::SettingsPages() const {
  std::vector<TIntf<ISettingsExtender>> result;
  for (const TIntf<IPlugin>& plugin : FInitialized) {
    if (auto extender = Supports<ISettingsExtender>(plugin)) result.push_back(extender);
  }
  return result;
}

bool THostPlugins::MayMinimizeToTray() const {
  bool result = true;
  for (const TIntf<IPlugin>& plugin : FInitialized) {
    bool allowed = true;
    Guarded(u"THostPlugins.MayMinimizeToTray", [&] { plugin->MinimizeToTrayQuery(allowed); });
    result = result && allowed;
  }
  return result;
}

void THostPlugins::MinimizeToTray() {
  for (const TIntf<IPlugin>& plugin : FInitialized) {
    Guarded(u"THostPlugins.MinimizeToTray", [&] { plugin->MinimizeToTray(); });
  }
}

void THostPlugins::RestoreFromTray() {
  for (const TIntf<IPlugin>& plugin : FInitialized) {
    Guarded(u"THostPlugins.RestoreFromTray", [&] { plugin->RestoreFromTray(); });
  }
}

std::vector<std::pair<TString, TString>> THostPlugins::Details(
    const TGuid& iSource, const TIntf<ISearchResult>& iResult) const {
  std::vector<std::pair<TString, TString>> result;
  if (!iResult) return result;
  for (const TIntf<IPlugin>& plugin : All()) {
    const auto converter = Supports<ISearchResultConverter>(plugin);
    if (!converter || plugin->GetId() != iSource) continue;
    TStringList titles;
    TStringList values;
    Guarded(u"THostPlugins.Details", [&] {
      converter->Convert(true, iResult, titles);
      converter->Convert(false, iResult, values);
    });
    for (int i = 0; i < std::min(titles.GetCount(), values.GetCount()); ++i) {
      result.emplace_back(titles.Get(i), values.Get(i));
    }
  }
  return result;
}

std::vector<TSettingsKeyInfo> THostPlugins::SettingsKeys() const {
  std::vector<TSettingsKeyInfo> result;
  for (const TIntf<IPlugin>& plugin : All()) {
    const auto keys = Supports<ISettingsKeys>(plugin);
    if (!keys) continue;
    const auto more = keys->GetSettingsKeys();
    result.insert(result.end(), more.begin(), more.end());
  }
  return result;
}

std::vector<TIntf<ISettingsPublisher>> THostPlugins::SettingsPublishers() const {
  std::vector<TIntf<ISettingsPublisher>> result;
  for (const TIntf<IPlugin>& plugin : All()) {
    if (auto publisher = Supports<ISettingsPublisher>(plugin)) result.push_back(publisher);
  }
  return result;
}

}  // namespace kk
