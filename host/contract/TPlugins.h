#pragma once

#include <vector>

#include "host/contract/IPlugin.h"

namespace kk {

/// The plug-ins of this process, in the order of their loading. Main thread.
class TPlugins {
 public:
  void Add(const TIntf<IPlugin>& iPlugin) { FPlugins.push_back(iPlugin); }
  int GetCount() const { return static_cast<int>(FPlugins.size()); }
  /// An index out of range raises EListError.
  TIntf<IPlugin> GetItems(int iIndex) const;
  /// Takes it out; no effect if it is not in the list.
  void Remove(const TIntf<IPlugin>& iPlugin);
  /// Drops all, the last one first.
  void Clear();

 private:
  std::vector<TIntf<IPlugin>> FPlugins;
};

/// The process-wide list.
TPlugins& Plugins();

}  // namespace kk
