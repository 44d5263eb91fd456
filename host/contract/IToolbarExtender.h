#pragma once

#include "host/base/IInterface.h"
#include "host/contract/TBitmap.h"

namespace kk {

/// A button in the host's main toolbar. Main thread.
class IToolbarButton : public IInterface {
 public:
  using TParent = IInterface;
  static constexpr TGuid cIid = GuidLiteral("{E6C9B374-8A1D-4254-82A8-44C6E8FA29A9}");

  virtual TGuid GetId() const = 0;
  virtual TGuid GetPluginId() const = 0;
  /// Buttons stand in ascending order.
  virtual int GetSortOrder() const = 0;
  virtual TString GetCaption() const = 0;
  virtual TBitmap GetImage() = 0;
  virtual TBitmap GetImageSelected() = 0;
  virtual TString GetHint() const = 0;
  virtual void Click() = 0;
};

/// The buttons that a plug-in brings. Main thread.
class IToolbarExtender : public IInterface {
 public:
  using TParent = IInterface;
  static constexpr TGuid cIid = GuidLiteral("{9D50E93C-91CA-4C2F-A781-1C77BCDF39D2}");

  virtual void Add(const TIntf<IToolbarButton>& iButton) = 0;
  virtual int GetCount() const = 0;
  virtual TIntf<IToolbarButton> GetItems(int iIndex) const = 0;
};

}  // namespace kk
