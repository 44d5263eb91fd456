#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "host/base/TLocale.h"
#include "host/controls/TForm.h"
#include "tests/support/TFakePlugin.h"
#include "tests/support/TWatchlistWorld.h"
#include "views/explorerbar/TExplorerBarWatchlist.h"

namespace kk {

/// Counts how often the skin is told of each control, by its name.
class TSkinCounter : public IControlObserver {
 public:
  void ControlChanged(TControl& iControl) override { ++Changes[ToUtf8(iControl.Name())]; }
  void ControlGone(TControl& /*iControl*/) override {}

  std::map<std::string, int> Take() { return std::exchange(Changes, {}); }
  std::map<std::string, int> Changes;
};
using TChanges = std::map<std::string, int>;

/// An item that can be seen, as one line: "> Kategorie bearbeiten... [BILD]" for a link, "Anzahl:
/// 3" for a caption and its value, "\"Notiz\"" for a text, "---" for a line between items.
inline std::string LineOf(const IExplorerBarItem& iItem) {
  const std::string caption = ToUtf8(iItem.GetCaption());
  switch (iItem.GetKind()) {
    case TExplorerBarItemKind::ikLink:
      return "> " + caption +
             (iItem.GetImage().IsEmpty() ? "" : " [" + ToUtf8(iItem.GetImage().ResourceName) + "]");
    case TExplorerBarItemKind::ikText:
      return "\"" + caption + "\"";
    case TExplorerBarItemKind::ikCaptionAndValue:
      return caption + " " + ToUtf8(iItem.GetValue());
    default:
      return "---";
  }
}

/// A bar in a window on the screen, filled, and a handler with two sources. It is half past six in
/// the evening of 2026-11-20.
class TExplorerBarTest : public testing::Test, public TWatchlistWorld {
 protected:
  TExplorerBarTest() {
    SetLocaleName("de_DE");
    CreateHandler(Plugin);
    Handler()->LstIntegration().Add(Auction);
    Handler()->LstIntegration().Add(Shop);
    Form.Show();
    Bar->Init();
    Form.SetObserver(&Skin);
    Log.Clear();
  }
  ~TExplorerBarTest() override {
    Bar->Clear();
    Form.SetObserver(nullptr);
    Plugin->Door = nullptr;
    FreeHandler();
    FreeBuriedCategories();
    SetLocaleName({});
  }

  TKK5SkinExplorerGroup& Group(size_t iIndex) const { return *explrbr.Groups().at(iIndex); }
  TKK5SkinExplorerGroup& CategoryGroup() const { return Group(0); }
  TKK5SkinExplorerGroup& DetailsGroup() const { return Group(1); }
  TKK5SkinExplorerGroup& ReminderGroup() const { return Group(2); }
  TKK5SkinExplorerGroup& MoreGroup() const { return Group(3); }
  using TWatchlistWorld::Group;

  /// What the user sees of a group.
  static TLines Lines(const TKK5SkinExplorerGroup& iGroup) {
    TLines lines;
    for (const auto& item : iGroup.VisibleItems()) lines.push_back(LineOf(*item));
    return lines;
  }
  static bool Shows(const TKK5SkinExplorerGroup& iGroup, const std::string& iLine) {
    return testing::Value(Lines(iGroup), testing::Contains(iLine));
  }
  /// The user clicks the link with this caption; false if there is none to be seen.
  static bool Click(TKK5SkinExplorerGroup& ioGroup, TStringView iCaption) {
    for (const auto& item : ioGroup.VisibleItems()) {
      if (item->GetCaption() == iCaption) return ioGroup.ClickItem(item);
    }
    return false;
  }

  TIntf<TFakePlugin> Plugin = MakeIntf<TFakePlugin>();
  TSkinCounter Skin;
  TForm Form{nullptr, u"TfrmTest", u"Beobachten"};
  TExplorerBar explrbr{&Form, u"explrbr"};
  TIntf<TExplorerBarWatchlist> Bar = MakeIntf<TExplorerBarWatchlist>(explrbr);
};

}  // namespace kk
