#include "host/base/IInterfaceList.h"

#include "host/base/Exception.h"

namespace kk {

namespace {

class TInterfaceList final : public TInterfaced<IInterfaceList> {
 public:
  int GetCount() const override { return static_cast<int>(FEntries.size()); }
  TIntf<IInterface> Get(int iIndex) const override { return FEntries[Checked(iIndex)]; }
  void Add(TIntf<IInterface> iObject) override { FEntries.push_back(std::move(iObject)); }
  void Insert(int iIndex, TIntf<IInterface> iObject) override {
    const size_t at = iIndex == GetCount() ? FEntries.size() : Checked(iIndex);
    FEntries.insert(FEntries.begin() + static_cast<ptrdiff_t>(at), std::move(iObject));
  }
  void Delete(int iIndex) override {
    FEntries.erase(FEntries.begin() + static_cast<ptrdiff_t>(Checked(iIndex)));
  }
  void Clear() override { FEntries.clear(); }
  int IndexOf(const TIntf<IInterface>& iObject) const override {
    const TIntf<IInterface> wanted = Supports<IInterface>(iObject);
    for (size_t i = 0; i < FEntries.size(); ++i) {
      if (Supports<IInterface>(FEntries[i]) == wanted) return static_cast<int>(i);
    }
    return -1;
  }

 private:
  size_t Checked(int iIndex) const { return CheckedIndex(iIndex, FEntries.size()); }

  std::vector<TIntf<IInterface>> FEntries;
};

}  // namespace

TIntf<IInterfaceList> NewInterfaceList() { return MakeIntf<TInterfaceList>(); }

}  // namespace kk
