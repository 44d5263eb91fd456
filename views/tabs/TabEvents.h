#pragma once

#include "host/base/IInterfaceList.h"
#include "host/base/TDelegate.h"

namespace kk {

class TTab;
class TWatchlistCategory;

/// The tab switched from and the one switched to; either may be absent.
using TSwitchTabEvent = TDelegate<void(TObject* Sender, TTab* iFrom, TTab* iTo)>;
using TTabEvent = TDelegate<void(TObject* Sender, TTab& iTab)>;
/// A command for these search results of the tab's view.
using TTabEventWithInterfaces =
    TDelegate<void(TObject* Sender, TTab& iTab, const TIntf<IInterfaceList>& iInterfaceList)>;
/// The same with the category that they go to; null for none.
using TTabEventCategoryWithInterfaces =
    TDelegate<void(TObject* Sender, TTab& iTab, TWatchlistCategory* iWatchlistCategory,
                   const TIntf<IInterfaceList>& iInterfaceList)>;

}  // namespace kk
