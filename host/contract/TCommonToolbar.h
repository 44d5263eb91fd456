#pragma once

#include <vector>

#include "host/base/TDelegate.h"
#include "host/base/TObject.h"
#include "host/contract/IToolbarExtender.h"

namespace kk {

/// The base of a toolbar button; its hint is its caption.
class TCommonToolbarButton : public TInterfaced<IToolbarButton> {
 public:
  TString GetHint() const override { return GetCaption(); }
};

/// A button that tells who made it of its clicks. Main thread.
class TCommonToolbarEventButton : public TCommonToolbarButton, public TObject {
 public:
  /// Raises the event, if there is one, with the button as the sender.
  void Click() override;

  /// The receiver takes it back (an empty event) before it dies.
  void SetOnClick(TNotifyEvent iEvent) { FOnClick = iEvent; }

 private:
  TNotifyEvent FOnClick;
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
