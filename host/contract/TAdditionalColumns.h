#pragma once

#include "host/base/TObject.h"
#include "host/contract/IAdditionalColumns.h"

namespace kk {

/// The base of an extension with columns: a descendant adds its own in the constructor. Main
/// thread.
class TAdditionalColumns : public TInterfaced<IAdditionalColumns>, public TObject {
 public:
  TIntf<IInterfaceList> GetColumns() const override { return FColumns; }

 private:
  TIntf<IInterfaceList> FColumns = NewInterfaceList();
};

}  // namespace kk
