#pragma once

#include "host/base/IInterfaceList.h"
#include "model/TWatchlistCategory.h"
#include "model/TWatchlistIntegration.h"

namespace kk {

/// A batch: results of one source on their way to one category. Main thread.
class TAddItem : public TObject {
 public:
  /// The list is kept as it is handed in, not copied. Source and category are borrowed.
  TAddItem(TIntf<IInterfaceList> iList, TWatchlistIntegration& iIntegration,
           TWatchlistCategory& iTargetCategory)
      : FIntegration(iIntegration), FTargetCategory(iTargetCategory), FList(std::move(iList)) {}

  TWatchlistIntegration& Integration() const { return FIntegration; }
  /// The user may have deleted it meanwhile: ask for it by its address alone before using it.
  TWatchlistCategory& TargetCategory() const { return FTargetCategory; }
  /// The results still open.
  IInterfaceList& List() const { return *FList; }
  /// The first open result with this id; -1 if there is none.
  int IndexOfId(const TGuid& iId) const;

 private:
  TWatchlistIntegration& FIntegration;
  TWatchlistCategory& FTargetCategory;
  TIntf<IInterfaceList> FList;
};

}  // namespace kk
