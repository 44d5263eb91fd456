#pragma once

#include "TSectionWorld.h"
#include "host/base/TLocale.h"
#include "reminders/editor/TfrmKKWatchlistEditItemRemind.h"
#include "tests/support/TreeOutline.h"
#include "views/dialogs/TfrmKKPluginWatchlistEditCategory.h"
#include "views/dialogs/TfrmKKWatchlistEditItemDescription.h"

namespace kk {

/// The section on the screen, and short ways through its user's doors: tree, menus, links.
class TShownSection : public testing::Test, public TSectionWorld {
 protected:
  TShownSection() {
    SetLocaleName("de_DE");
    Folder.Write(u"ton.wav", "RIFF");
    TIniFileSectionWatchlist settings;
    settings.SetSoundFile(Folder.File(u"ton.wav"));
    settings.SetRemindType(0);
    settings.SetRemindTimeRelative(2);
  }
  ~TShownSection() override { SetLocaleName({}); }

  /// What the test has put into the list so far comes on the screen.
  void Show() {
    Form->BuildCategoriesTree(true);
    Form->Show();
    Forget();
  }
  void Forget() {
    Auction->ViewCalls().clear();
    Shop->ViewCalls().clear();
    Log.Clear();
  }

  TWatchlistPanes& Panes() { return Form->Panes(); }
  TWatchlistCategoryTree& Pane() { return Panes().Tree; }
  TVirtualStringTree& Nodes() { return Pane().vstCategories; }
  TExplorerBarWatchlist& Bar() { return *Panes().ExplorerBar(); }
  /// Null if it stands nowhere.
  TVirtualNode* NodeOf(const TObject& iObject) { return Pane().GetNodeByObj(&iObject); }

  /// The user opens what the object stands in.
  TVirtualNode& Reveal(const TObject& iObject) {
    TVirtualNode& node = *NodeOf(iObject);
    Nodes().ScrollIntoView(node);
    return node;
  }
  bool GoTo(const TObject& iObject) { return Nodes().FocusNode(Reveal(iObject)); }
  bool DoubleClick(const TObject& iObject) { return Nodes().DoubleClick(&Reveal(iObject)); }
  /// The user asks for the tree's menu on the object's node, or beside all of them, and clicks the
  /// entry at the end of the captions; false if he can't.
  bool ClickMenu(const TObject* iObject, std::initializer_list<TStringView> iCaptions) {
    if (!Nodes().OpenPopupMenu(iObject != nullptr ? &Reveal(*iObject) : nullptr)) return false;
    TMenuItem* entry = Nodes().PopupMenu();
    for (const TStringView caption : iCaptions) {
      if (entry != nullptr) entry = Entry(*entry, caption);
    }
    return entry != nullptr && entry->Click();
  }
  static TMenuItem* Entry(TMenuItem& ioMenu, TStringView iCaption) {
    for (int i = 0; i < ioMenu.GetCount(); ++i) {
      if (ioMenu.GetItems(i).Caption() == iCaption) return &ioMenu.GetItems(i);
    }
    return nullptr;
  }
  /// The user asks for the menu of the source's list and clicks this entry; a second caption is one
  /// of its sub-menu.
  static bool ClickList(const TIntf<TFakeSource>& iSource, TStringView iCaption,
                        TStringView iSub = {}) {
    for (const auto& extension : iSource->Extensions()) {
      const auto extender = Supports<IContextMenuExtender>(extension);
      if (!extender) continue;
      extender->BeforeContextMenuPopup({}, {});
      for (int i = 0; i < extender->GetCount(); ++i) {
        TMenuItem* entry = &extender->GetItems(i);
        if (entry->Caption() != iCaption) continue;
        if (!iSub.empty()) entry = Entry(*entry, iSub);
        return entry != nullptr && entry->Click();
      }
    }
    return false;
  }
  /// The user clicks the link in the explorer bar; false if it can't be seen.
  bool ClickLink(TStringView iCaption) {
    for (TKK5SkinExplorerGroup* group : Panes().explrbr.Groups()) {
      for (const auto& item : group->VisibleItems()) {
        if (item->GetCaption() == iCaption) return group->ClickItem(item);
      }
    }
    return false;
  }
  /// Whether the explorer bar shows this text or value.
  bool BarShows(TStringView iText) {
    for (const TKK5SkinExplorerGroup* group : Panes().explrbr.Groups()) {
      if (!group->Visible()) continue;
      for (const auto& item : group->VisibleItems()) {
        if (item->GetCaption() == iText || item->GetValue() == iText) return true;
      }
    }
    return false;
  }
  /// The user marks the items' rows in the source's list, the first with the focus.
  static void Mark(const TIntf<TFakeSource>& iSource,
                   std::initializer_list<const TWatchlistItem*> iItems) {
    std::vector<TIntf<ISearchResult>> results;
    for (const TWatchlistItem* item : iItems) results.push_back(item->SearchResult());
    iSource->Results().Select(results);
    for (const auto& extension : iSource->Extensions()) {
      if (const auto notifications = Supports<INotifications>(extension)) {
        notifications->SelectionChanged();
      }
    }
  }
  /// The user enters this name into the dialog of a category and presses OK.
  void ExpectCategoryDialog(TStringView iName) {
    User.Expect<TfrmKKPluginWatchlistEditCategory>(
        [name = TString(iName)](TfrmKKPluginWatchlistEditCategory& form) {
          EXPECT_EQ(form.Caption(), u"Kategorie bearbeiten");
          form.edtName.EnterText(name);
          form.btnOK.Click();
        });
  }
  void ExpectNote(TStringView iText) {
    User.Expect<TfrmKKWatchlistEditItemDescription>(
        [text = TString(iText)](TfrmKKWatchlistEditItemDescription& form) {
          form.rchedtDescription.EnterText(text);
          form.btnOK.Click();
        });
  }
  void ExpectEditor() {
    User.Expect<TfrmKKWatchlistEditItemRemind>(
        [](TfrmKKWatchlistEditItemRemind& form) { form.btnOK.Click(); });
  }
  static TDateTime In(int iMinutes) { return Now().PlusMs(iMinutes * TDateTime::cMsPerMinute); }
  /// The tree's objects in display order, two blanks for each level.
  TLines Outline() { return OutlineOf(Nodes()); }
  TObject* Selected() {
    return Nodes().SelectedNode() == nullptr ? nullptr : Nodes().SelectedNode()->Object();
  }
  /// The captions of the tabs that can be seen, the selected one in brackets.
  TLines TabLines() {
    TLines lines;
    for (TTab* tab : Panes().TabControl()->Tabs()) {
      if (!tab->IsVisible()) continue;
      const std::string name = ToUtf8(tab->Integration()->GetName());
      lines.push_back(tab->IsSelected() ? "[" + name + "]" : name);
    }
    return lines;
  }
};

}  // namespace kk
