#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "host/base/TLocale.h"
#include "settings/TIniFileSectionWatchlist.h"
#include "tests/support/TWatchlistWorld.h"
#include "tests/support/TreeOutline.h"
#include "views/tree/TWatchlistCategoryTree.h"

namespace kk {

/// Notes what the tree does with the other panes, one line a call.
class TPanesRecorder : public IWatchlistPanes {
 public:
  void SetSelectedCategory(TWatchlistCategory* iCategory, bool iCanUpdate) override {
    FCategory = iCategory;
    Note("Category " + (iCategory == nullptr ? "none" : ToUtf8(iCategory->Name())) +
         (iCanUpdate ? " +" : ""));
  }
  TWatchlistCategory* GetCurrentCategory() const override { return FCategory; }
  void RestoreExplorerbarDefaultItems() override { Note("Restore"); }
  void CategoryOnShow(const TWatchlistCategory* iCategory) override { OnShow = iCategory; }
  void HideAll() override { Note("HideAll"); }
  void BeginAdd() override { Note("BeginAdd"); }
  void ShowIntegration(const TIntf<IWatchlistIntegration>& iIntegration) override {
    Note("Show " + ToUtf8(iIntegration->GetName()));
  }
  void EndAdd() override { Note("EndAdd"); }
  void SelectIntegration(const TIntf<IWatchlistIntegration>& iIntegration) override {
    Note("Select " + ToUtf8(iIntegration->GetName()));
  }

  TLines Take() { return std::exchange(Calls, {}); }
  TLines Calls;
  std::string FailsAt;  ///< the call that raises
  const TWatchlistCategory* OnShow = nullptr;

 private:
  void Note(const std::string& iCall) {
    Calls.push_back(iCall);
    if (iCall == FailsAt) throw Exception(u"Kein " + FromUtf8(iCall));
  }

  TWatchlistCategory* FCategory = nullptr;
};

/// A handler with two sources, the unassigned category alone in its tree, and the pane in a window
/// on the screen. Nothing is built yet.
class TTreeTest : public testing::Test, public TWatchlistWorld {
 protected:
  TTreeTest() {
    SetLocaleName("de_DE");
    CreateHandler(nullptr);
    Handler()->LstIntegration().Add(Auction);
    Handler()->LstIntegration().Add(Shop);
    Handler()->LoadFromFile();
    Pane = std::make_unique<TWatchlistCategoryTree>(&Form, Panes);
    Form.Show();
    Log.Clear();
  }
  ~TTreeTest() override {
    Pane.reset();
    FreeHandler();
    FreeBuriedCategories();
    SetLocaleName({});
  }

  void Build() {
    Pane->BuildCategoriesTree(false);
    Panes.Take();
  }
  TVirtualStringTree& View() { return Pane->vstCategories; }
  TVirtualNode& Node(const TObject& iObject) { return *Pane->GetNodeByObj(&iObject); }
  /// The user opens what it stands in and goes to it.
  bool GoTo(const TObject& iObject) {
    Reveal(Node(iObject));
    return View().FocusNode(Node(iObject));
  }
  void Reveal(const TVirtualNode& iNode) {
    if (iNode.Parent() == nullptr) return;
    Reveal(*iNode.Parent());
    View().ExpandNode(*iNode.Parent());
  }
  TString Text(const TObject& iObject) { return View().Text(Node(iObject)); }
  TString Hint(const TObject& iObject) { return View().Hint(Node(iObject)); }
  void ShowCounts(bool iOwn, bool iRecursive) {
    TIniFileSectionWatchlist().SetShowItemCountInTree(iOwn);
    TIniFileSectionWatchlist().SetShowItemCountInTreeRecursive(iRecursive);
    Pane->DoChangeIniFile(nullptr);
  }
  /// The texts of all nodes in display order, two blanks for each level.
  TLines Outline() { return OutlineOf(View()); }

  TPanesRecorder Panes;
  TForm Form{nullptr, u"TForm"};
  std::unique_ptr<TWatchlistCategoryTree> Pane;
};

}  // namespace kk
