#pragma once

#include "host/base/IInterface.h"
#include "host/base/TString.h"

namespace kk {

/// What a result may offer beside ISearchResult so that one can be found among very many without
/// asking each of them: two results of one source are the same (ISearchResult::IsSame) exactly if
/// their keys are equal. Main thread.
class ISearchResultSameKey : public IInterface {
 public:
  using TParent = IInterface;
  static constexpr TGuid cIid = GuidLiteral("{B0C2A7A4-6E1D-4C35-9A0C-3D8F2B51E7C6}");

  virtual TString GetSameKey() const = 0;
};

}  // namespace kk
