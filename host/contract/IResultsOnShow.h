#pragma once

#include "host/base/IInterface.h"

namespace kk {

/// What a view may offer beside ISearchResults, for an extension whose columns have come to show
/// something else. Main thread.
class IResultsOnShow : public IInterface {
 public:
  using TParent = IInterface;
  static constexpr TGuid cIid = GuidLiteral("{5E0B7C1D-93A4-4D26-8F6E-71C20D9A4B38}");

  /// All rows are painted anew, once in the next turn of the loop however often it is called.
  virtual void Repaint() = 0;
};

}  // namespace kk
