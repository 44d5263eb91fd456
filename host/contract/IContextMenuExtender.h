#pragma once

#include "host/contract/ISearchResult.h"

namespace kk {

class TMenuItem;

/// Entries in the context menu of a result view. Main thread.
class IContextMenuExtender : public IInterface {
 public:
  using TParent = IInterface;
  static constexpr TGuid cIid = GuidLiteral("{482AEBB2-8D09-4250-AF1F-AECE0CB9C653}");

  virtual int GetCount() const = 0;
  /// Owned by the extender. An index out of range raises EListError.
  virtual TMenuItem& GetItems(int iIndex) = 0;
  /// Called just before the menu opens, with the result under the mouse, possibly empty, and the id
  /// of the column.
  virtual void BeforeContextMenuPopup(const TIntf<ISearchResult>& iSearchResult,
                                      const TGuid& iColumnId) = 0;
};

}  // namespace kk
