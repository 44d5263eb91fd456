#pragma once

#include "host/base/IInterface.h"
#include "host/base/TDateTime.h"

namespace kk {

/// One article, auction or offer as its source knows it. The watch list never looks inside it: it
/// keeps the reference, asks for the few facts below, and hands it back to its source for saving,
/// showing, printing and refreshing. Made by its source alone. Main thread.
class ISearchResult : public IInterface {
 public:
  using TParent = IInterface;
  static constexpr TGuid cIid = GuidLiteral("{C9D3ED8A-46F5-4480-BFC6-6D8D0DD9524F}");

  /// The identity of this result; it stays over its life in the watch list.
  virtual TGuid GetId() const = 0;
  virtual TString GetName() const = 0;
  /// True for offers that end at a known time, such as auctions.
  virtual bool HasEndTime() const = 0;
  /// Local time; only meaningful when HasEndTime is true.
  virtual TDateTime GetEndTime() const = 0;
  /// Gives a refreshed copy the identity of the result that it replaces.
  virtual void SetId(const TGuid& iId) = 0;
  /// True when both mean the same article in the eyes of the source, whatever the ids say. An empty
  /// result is the same as none.
  virtual bool IsSame(const TIntf<ISearchResult>& iOther) const = 0;
  /// A separate copy, the id included.
  virtual TIntf<ISearchResult> Clone() const = 0;
};

}  // namespace kk
