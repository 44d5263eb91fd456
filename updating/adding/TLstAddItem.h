#pragma once

#include "host/base/TLstBase.h"
#include "updating/adding/TAddItem.h"

namespace kk {

/// The open batches of the add panel. Main thread.
class TLstAddItem : public TLstBase<TAddItem> {
 public:
  explicit TLstAddItem(bool iOwnsObjects);

  /// A batch for this source and category takes the entries of the list behind its own; if there is
  /// none, a new one keeps the list. A list for a new batch is not empty (EListError).
  TAddItem& Add(const TIntf<IInterfaceList>& iList, TWatchlistIntegration& iIntegration,
                TWatchlistCategory& iTargetCategory);
  using TLstBase::IndexOf;
  /// By the objects; -1 if there is none.
  int IndexOf(const TWatchlistIntegration& iIntegration,
              const TWatchlistCategory& iTargetCategory) const;
  /// The first batch with an open result of this id; -1 if there is none.
  int IndexOfItemId(const TGuid& iId) const;
  /// Takes the result out of every batch, one entry in each, and deletes emptied batches. Raises
  /// EListError behind its work if the batch deleted was not the last: see the source.
  void RemoveItemById(const TGuid& iId);
  /// LstItem. An index out of range raises EListError.
  TAddItem& GetItems(int iIndex) const { return At(iIndex); }
  void Clear() override;

 private:
  TIntf<IInterfaceList> FInterfaceList;
};

}  // namespace kk
