#pragma once

#include <vector>

#include "host/contract/IToolbarExtender.h"

namespace kk {

/// The base of a toolbar button; its hint is its caption.
class TCommonToolbarButton : public TInterfaced<IToolbarButton> {
 public:
  TString GetHint() const override { return GetCaption(); }
};

/// A plain list of buttons.
class TCommonToolbarExtender : public TInterfaced<IToolbarExtender> {
 public:
  void Add(const TIntf<IToolbarButton>& iButton) override { FButtons.push_back(iButton); }
  int GetCount() const override { return static_cast<int>(FButtons.size()); }
  TIntf<IToolbarButton> GetItems(int iIndex) const override;

 private:
  std::vector<TIntf<IToolbarButton>> FButtons;
};

}  // namespace kk
