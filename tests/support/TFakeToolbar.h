#pragma once

#include <string>
#include <vector>

#include "host/contract/ISectionHost.h"
#include "host/contract/TCommonToolbar.h"
#include "host/controls/TfrmKKCommonSectionBase.h"

namespace kk {

/// A button of the main toolbar that counts its clicks.
class TFakeToolbarButton : public TCommonToolbarButton {
 public:
  explicit TFakeToolbarButton(int iSortOrder, const TGuid& iPlugin = cEmptyGuid,
                              TStringView iCaption = u"Knopf")
      : FSortOrder(iSortOrder), FPlugin(iPlugin), FCaption(iCaption) {}

  TGuid GetId() const override { return FPlugin; }
  TGuid GetPluginId() const override { return FPlugin; }
  int GetSortOrder() const override { return FSortOrder; }
  TString GetCaption() const override { return FCaption; }
  TBitmap GetImage() override { return {u"IMAGE"}; }
  TBitmap GetImageSelected() override { return {u"SELECTED"}; }
  void Click() override { ++Clicks; }

  int Clicks = 0;

 private:
  const int FSortOrder;
  const TGuid FPlugin;
  const TString FCaption;
};

/// A host with a screen, as far as sections see it, and with a toolbar that the test fills.
class TFakeSectionHost : public TInterfaced<IApplication, IToolbarExtender, ISectionHost> {
 public:
  void SectionClosed() override {}
  bool ShowNotificationWindow(TForm*) override { return false; }
  void Add(const TIntf<IToolbarButton>& iButton) override { Buttons.push_back(iButton); }
  int GetCount() const override { return static_cast<int>(Buttons.size()); }
  TIntf<IToolbarButton> GetItems(int iIndex) const override {
    return Buttons[static_cast<size_t>(iIndex)];
  }
  void AddSection(TfrmKKCommonSectionBase&) override { Calls.push_back("add"); }
  void RemoveSection(TfrmKKCommonSectionBase&) override { Calls.push_back("remove"); }
  void ShowSection(TfrmKKCommonSectionBase& ioForm) override {
    Calls.push_back(ioForm.WasShown() ? "show" : "show before the first time");
  }

  std::vector<TIntf<IToolbarButton>> Buttons;
  std::vector<std::string> Calls;
};

}  // namespace kk
