#pragma once

#include <vector>

#include "host/base/IInterface.h"

namespace kk {

/// A list of counted references that itself is counted: how search results and extensions travel.
/// An entry may be empty. Main thread.
class IInterfaceList : public IInterface {
 public:
  using TParent = IInterface;
  static constexpr TGuid cIid = GuidLiteral("{285DEA8A-B865-11D1-AAA7-00C04FB17A72}");

  virtual int GetCount() const = 0;
  /// An index out of range raises EListError, here and below.
  virtual TIntf<IInterface> Get(int iIndex) const = 0;
  virtual void Add(TIntf<IInterface> iObject) = 0;
  virtual void Insert(int iIndex, TIntf<IInterface> iObject) = 0;
  virtual void Delete(int iIndex) = 0;
  virtual void Clear() = 0;
  /// The first entry that is this very object, by whichever of its interfaces; -1 if there is none.
  virtual int IndexOf(const TIntf<IInterface>& iObject) const = 0;
};

/// A new empty list.
TIntf<IInterfaceList> NewInterfaceList();

/// The entry as the interface asked for; empty if it is empty or does not have it.
template <class I>
TIntf<I> GetAs(const IInterfaceList& iList, int iIndex) {
  return Supports<I>(iList.Get(iIndex));
}

}  // namespace kk
