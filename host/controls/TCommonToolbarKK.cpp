#include "host/controls/TCommonToolbarKK.h"

#include <algorithm>

namespace kk {

/// A button on the screen for one that a plug-in brings.
class TCommonToolbarKK::TButtonOfPlugin : public TObject {
 public:
  TButtonOfPlugin(TToolbar& ioToolbar, const TIntf<IToolbarButton>& iButton, bool iSelected)
      : FButton(iButton), FToolButton(&ioToolbar, {}, iButton->GetCaption()) {
    FToolButton.SetImages(iButton->GetImage(), iButton->GetImageSelected());
    FToolButton.SetHint(iButton->GetHint());
    FToolButton.SetSelected(iSelected);
    FToolButton.SetOnClick(TNotifyEvent::Of<&TButtonOfPlugin::DoClick>(this));
  }

 private:
  void DoClick(TObject*) {
    const TIntf<IToolbarButton> button = FButton;  // the click may end the toolbar
    button->Click();
  }

  TIntf<IToolbarButton> FButton;
  TToolButton FToolButton;
};

TCommonToolbarKK::TCommonToolbarKK(TIntf<IApplication> iApplication, const TGuid& iPluginId,
                                   TToolbar& ioToolbar)
    : FApplication(std::move(iApplication)), FPluginId(iPluginId), FToolbar(ioToolbar) {}

TCommonToolbarKK::~TCommonToolbarKK() = default;

void TCommonToolbarKK::Init() {
  FButtons.clear();
  const auto toolbar = Supports<IToolbarExtender>(FApplication);
  if (!toolbar) return;
  std::vector<TIntf<IToolbarButton>> buttons;
  for (int i = 0; i < toolbar->GetCount(); ++i) buttons.push_back(toolbar->GetItems(i));
  std::ranges::stable_sort(buttons, {},
                           [](const auto& iButton) { return iButton->GetSortOrder(); });
  for (const TIntf<IToolbarButton>& button : buttons) {
    FButtons.push_back(
        std::make_unique<TButtonOfPlugin>(FToolbar, button, button->GetPluginId() == FPluginId));
  }
}

}  // namespace kk
