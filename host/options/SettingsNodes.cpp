#include "host/options/SettingsNodes.h"

#include <algorithm>
#include <utility>

#include "host/base/Guard.h"
#include "host/options/THostSettingsNode.h"
#include "host/options/TframOptionsCalendar.h"
#include "host/options/TframOptionsEmail.h"
#include "host/options/TframOptionsGeneral.h"
#include "host/options/TframOptionsNotification.h"
#include "host/options/TframOptionsSms.h"

namespace kk {

namespace {

struct TPlaced {
  TGuid Id;
  TGuid Before;
  int SortOrder = 0;
  TIntf<ISettingsNode> Node;
};

std::vector<TPlaced> PlacesOf(const std::vector<TIntf<ISettingsExtender>>& iExtenders) {
  std::vector<TPlaced> result;
  for (const TIntf<ISettingsExtender>& extender : iExtenders) {
    Guarded(u"ISettingsExtender", [&] {
      for (int i = 0; i < extender->GetCount(); ++i) {
        const TIntf<ISettingsNode> node = extender->GetNode(i);
        if (!node) continue;
        Guarded(u"ISettingsNode", [&] {
          result.push_back({node->GetId(), extender->GetBefore(i), node->GetSortOrder(), node});
        });
      }
    });
  }
  std::ranges::stable_sort(result, {}, &TPlaced::SortOrder);
  return result;
}

bool TryInsert(std::vector<TPlaced>& ioPages, const TPlaced& iPage) {
  const auto before = std::ranges::find(ioPages, iPage.Before, &TPlaced::Id);
  if (before == ioPages.end()) return false;
  ioPages.insert(before, iPage);
  return true;
}

}  // namespace

std::vector<TIntf<ISettingsNode>> HostSettingsNodes(const TIntf<IApplication>& iApplication) {
  const auto node = [](const TGuid& iId, TStringView iCaption,
                       std::unique_ptr<TframOptionsBase> iFrame) {
    return TIntf<ISettingsNode>(MakeIntf<THostSettingsNode>(iId, iCaption, std::move(iFrame)));
  };
  return {
      node(cSettingsNodeIdGeneral, u"Allgemein", std::make_unique<TframOptionsGeneral>()),
      node(cSettingsNodeIdEmail, u"E-Mail", std::make_unique<TframOptionsEmail>()),
      node(cSettingsNodeIdSms, u"SMS", std::make_unique<TframOptionsSms>()),
      node(cSettingsNodeIdCalendar, u"Kalender", std::make_unique<TframOptionsCalendar>()),
      node(cSettingsNodeIdNotification, u"Benachrichtigung",
           std::make_unique<TframOptionsNotification>(iApplication)),
  };
}

std::vector<TIntf<ISettingsNode>> OrderedSettingsNodes(
    std::vector<TIntf<ISettingsNode>> iHost,
    const std::vector<TIntf<ISettingsExtender>>& iExtenders) {
  std::vector<TPlaced> pages;
  for (TIntf<ISettingsNode>& node : iHost) {
    const TGuid id = node->GetId();
    pages.push_back({id, {}, 0, std::move(node)});
  }
  // A page may stand before one that comes later: as long as one finds its place, others may.
  std::vector<TPlaced> open = PlacesOf(iExtenders);
  size_t count = open.size() + 1;
  while (open.size() < count) {
    count = open.size();
    std::erase_if(open, [&pages](const TPlaced& iPage) { return TryInsert(pages, iPage); });
  }
  pages.insert(pages.end(), open.begin(), open.end());
  std::vector<TIntf<ISettingsNode>> result;
  for (TPlaced& page : pages) result.push_back(std::move(page.Node));
  return result;
}

}  // namespace kk
