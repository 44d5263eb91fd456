#pragma once

#include "host/base/IInterfaceList.h"
#include "host/contract/IAdditionalColumn.h"

namespace kk {

/// Columns that an extension adds to a result view. Main thread.
class IAdditionalColumns : public IInterface {
 public:
  using TParent = IInterface;
  static constexpr TGuid cIid = GuidLiteral("{A55A7DD2-231B-4C73-8267-5BC52531F25F}");

  /// The columns, in order, each an IAdditionalColumn; the list stays the extension's.
  virtual TIntf<IInterfaceList> GetColumns() const = 0;
};

}  // namespace kk
