#include "host/contract/TPlugins.h"

#include <algorithm>

#include "host/base/Exception.h"

namespace kk {

TIntf<IPlugin> TPlugins::GetItems(int iIndex) const {
  return FPlugins[CheckedIndex(iIndex, FPlugins.size())];
}

void TPlugins::Remove(const TIntf<IPlugin>& iPlugin) { std::erase(FPlugins, iPlugin); }

void TPlugins::Clear() {
  while (!FPlugins.empty()) FPlugins.pop_back();
}

TPlugins& Plugins() {
  static TPlugins plugins;
  return plugins;
}

}  // namespace kk
