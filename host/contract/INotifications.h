#pragma once

#include "host/contract/ISearchResults.h"

namespace kk {

/// What a result view tells an extension. Main thread.
class INotifications : public IInterface {
 public:
  using TParent = IInterface;
  static constexpr TGuid cIid = GuidLiteral("{3870DD27-ADBB-4151-87BD-BB788ABCF2A6}");

  virtual TIntf<ISearchResults> GetSearchResults() const = 0;
  virtual void SetSearchResults(const TIntf<ISearchResults>& iSearchResults) = 0;
  virtual void SelectionChanged() = 0;
  virtual void Close() = 0;
  virtual void WaitFor() = 0;
};

}  // namespace kk
