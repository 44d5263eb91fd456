#pragma once

#include <functional>

#include "host/contract/TCommonToolbar.h"

namespace kk {

/// The button "Einstellungen" in the host's main toolbar, the last one. Main thread.
class TToolbarButtonOptions : public TCommonToolbarButton {
 public:
  static constexpr TGuid cId = GuidLiteral("{6B2D90C7-41FE-4E35-9C8A-70D3B5A1F264}");
  static constexpr int cSortOrder = 1000;

  explicit TToolbarButtonOptions(std::function<void()> iOnClick) : FOnClick(std::move(iOnClick)) {}

  TGuid GetId() const override { return cId; }
  /// No section is selected by it.
  TGuid GetPluginId() const override { return cEmptyGuid; }
  int GetSortOrder() const override { return cSortOrder; }
  TString GetCaption() const override { return u"Einstellungen"; }
  TBitmap GetImage() override { return {u"SETTINGSTOOLBARBUTTONIMAGE"}; }
  TBitmap GetImageSelected() override { return {u"SETTINGSTOOLBARBUTTONIMAGESELECTED"}; }
  void Click() override { FOnClick(); }

 private:
  const std::function<void()> FOnClick;
};

}  // namespace kk
