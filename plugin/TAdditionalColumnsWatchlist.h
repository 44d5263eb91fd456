#pragma once

#include "host/base/TDelegate.h"
#include "host/base/TObject.h"
#include "host/contract/IAdditionalColumns.h"
#include "host/contract/ISearchResult.h"

namespace kk {

/// A click in a column of a result view.
using TNotifyEventColumn = TDelegate<void(TObject* Sender, const TIntf<ISearchResult>& iResult)>;

/// The columns that the watch list adds to the views of other plug-ins, with what a click in them
/// does. There are none yet. Main thread.
class TAdditionalColumnsWatchlist : public TInterfaced<IAdditionalColumns>, public TObject {
 public:
  /// iSearchLocationPluginId: whose view it is. The receivers take their events back (Detach)
  /// before they die.
  TAdditionalColumnsWatchlist(const TGuid& iSearchLocationPluginId, TNotifyEventColumn iOnAdd,
                              TNotifyEventColumn iOnCheck)
      : FSearchLocationPluginId(iSearchLocationPluginId), FOnAdd(iOnAdd), FOnCheck(iOnCheck) {}
  void Detach();

  TIntf<IInterfaceList> GetColumns() const override { return FColumns; }
  const TGuid& SearchLocationPluginId() const { return FSearchLocationPluginId; }

  /// What a column calls when the user wants the result of a row added, or looked up.
  void Add(const TIntf<ISearchResult>& iResult);
  void Check(const TIntf<ISearchResult>& iResult);

 private:
  TGuid FSearchLocationPluginId;
  TNotifyEventColumn FOnAdd;
  TNotifyEventColumn FOnCheck;
  TIntf<IInterfaceList> FColumns = NewInterfaceList();
};

}  // namespace kk
