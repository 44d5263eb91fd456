#pragma once

#include "host/base/TDelegate.h"
#include "host/base/TObject.h"
#include "host/contract/IWatchlist.h"

namespace kk {

class TfrmKKWatchlist;

/// Reaches the section's form at the time of a call; null while there is none.
using TNotifyGetForm = TDelegate<TfrmKKWatchlist*(TObject* Sender)>;

/// The watch list as other plug-ins reach it. It keeps no state of its own: every call looks at the
/// handler and the form as they stand then, and refuses while there are none. Main thread.
class TWatchlist : public TInterfaced<IWatchlist>, public TObject {
 public:
  explicit TWatchlist(TNotifyGetForm iOnGetForm) : FOnGetForm(iOnGetForm) {}

  bool AddItem(const TGuid& iTargetPluginId, const TIntf<ISearchResult>& iSearchResult) override;
  bool HasItem(const TGuid& iTargetPluginId, const TIntf<ISearchResult>& iSearchResult) override;

 private:
  TNotifyGetForm FOnGetForm;
};

}  // namespace kk
