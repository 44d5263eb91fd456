#pragma once

#include <map>

#include "host/base/TLstBase.h"
#include "host/common/TFileCompression.h"

namespace kk {

/// The entries of an archive in order. Look-ups by name stay fast however many there are. Main
/// thread.
class TLstStreamForCompression : public TLstBase<TStreamForCompression> {
 public:
  explicit TLstStreamForCompression(bool iOwnsObjects) : TLstBase(iOwnsObjects) {}
  ~TLstStreamForCompression() override;

  TStreamForCompression& Add(std::unique_ptr<TStreamForCompression> iStream) {
    return Append(std::move(iStream));
  }
  /// An index out of range raises EListError.
  TStreamForCompression& GetItems(int iIndex) const { return At(iIndex); }
  /// The first entry of this name without regard to case; null if there is none.
  TStreamForCompression* FindByName(TStringView iName) const;
  int IndexOfName(TStringView iName) const { return IndexOf(FindByName(iName)); }

 protected:
  void Attached(TStreamForCompression& iStream) override;
  void Detached(TStreamForCompression& iStream) override;

 private:
  struct TLessText {
    bool operator()(const TString& iA, const TString& iB) const { return CompareText(iA, iB) < 0; }
  };
  std::multimap<TString, TStreamForCompression*, TLessText> FByName;  // equal names in list order
};

}  // namespace kk
