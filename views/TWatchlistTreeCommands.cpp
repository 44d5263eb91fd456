#include "views/TWatchlistTreeCommands.h"

#include <optional>

#include "host/base/Guard.h"
#include "host/contract/IWatchlistVisualization.h"
#include "views/WatchlistModel.h"
#include "views/dialogs/TfrmKKPluginWatchlistEditCategory.h"
#include "views/dialogs/TfrmKKWatchlistEditItemDescription.h"

namespace kk {

TWatchlistTreeCommands::TWatchlistTreeCommands(TWatchlistPanes& ioPanes,
                                               TWatchlistCommands& ioCommands)
    : FPanes(ioPanes), FTree(ioPanes.Tree), FCommands(ioCommands) {
  BindTree();
}

void TWatchlistTreeCommands::BindTree() {
  using TSelf = TWatchlistTreeCommands;
  const auto onAdd = TNotifyEvent::Of<&TSelf::mntmAddClick>(this);
  const auto onEdit = TNotifyEvent::Of<&TSelf::mntmEditClick>(this);
  const auto onDelete = TNotifyEvent::Of<&TSelf::mntmDeleteClick>(this);
  TWatchlistCategoryMenu& menu = FTree.Menu;
  menu.mntmEdit.SetOnClick(onEdit);
  menu.mntmDelete.SetOnClick(onDelete);
  menu.mntmAddCategoryAtLevel.SetOnClick(onAdd);
  menu.mntmAddCategoryAtSubLevel.SetOnClick(onAdd);
  menu.mntmAddCategoryRoot.SetOnClick(onAdd);
  menu.mntmUpdate.SetOnClick(TNotifyEvent::Of<&TSelf::mntmUpdateClick>(this));
  menu.mntmUpdateAll.SetOnClick(TNotifyEvent::Of<&TSelf::mntmUpdateAllClick>(this));
  menu.SetOnClickMove(TNotifyEvent::Of<&TSelf::DoClickMove>(this));
  FTree.btnNewGroup.SetOnClick(TNotifyEvent::Of<&TSelf::btnNewGroupClick>(this));
  FTree.btnDeleteGroup.SetOnClick(onDelete);
  FTree.btnRenameGroup.SetOnClick(onEdit);
  FTree.vstCategories.SetOnDblClick(TNotifyEvent::Of<&TSelf::vstCategoriesDblClick>(this));
}

void TWatchlistTreeCommands::btnNewGroupClick(TObject*) {
  mntmAddClick(&FTree.Menu.mntmAddCategoryAtLevel);
}

void TWatchlistTreeCommands::mntmAddClick(TObject* Sender) {
  const bool atRoot = Sender == &FTree.Menu.mntmAddCategoryRoot;
  const bool atSubLevel = Sender == &FTree.Menu.mntmAddCategoryAtSubLevel;
  TVirtualNode* const node = FTree.GetSelectedNode();
  if (!atRoot && ItemAt(node) != nullptr) return;
  if (atSubLevel &&
      (node == nullptr || GroupAt(node) != nullptr || IsUnassigned(CategoryAt(node)))) {
    return;
  }
  if (atRoot || node == nullptr) return AddCategory(nullptr);
  AddCategory(atSubLevel ? node : node->Parent());
}

void TWatchlistTreeCommands::AddCategory(TVirtualNode* iPlace) {
  const TWatchlistCategory* const parent = CategoryAt(iPlace);
  TWatchlistCategoryCommands::CheckPlace(parent);
  const std::optional<TGuid> parentId = parent ? std::optional(parent->Id()) : std::nullopt;
  TStringList description;
  TString name = TWatchlistCategoryCommands::ProposeName();
  // Looks like a mistake and is required: the dialog calls itself "Kategorie bearbeiten" here, too.
  if (!TfrmKKPluginWatchlistEditCategory::DisplayEdit(FCommands.Seams.Form, description, name)) {
    return;
  }
  // Other events have come in while the dialog stood: the place may have gone.
  TWatchlistCategory* const place =
      parentId ? RootCategories().FindCategoryById(*parentId) : nullptr;
  if (parentId && place == nullptr) return;
  FCommands.Categories.AddCategory(place, name, description);
}

void TWatchlistTreeCommands::mntmEditClick(TObject*) {
  const TVirtualNode* const node = FTree.GetSelectedNode();
  if (TWatchlistItem* item = ItemAt(node)) {
    EditNote(*item);
  } else if (TWatchlistCategory* category = CategoryAt(node)) {
    if (!IsUnassigned(category)) EditCategory(*category);
  }
}

// Both edit a copy, and look up by the id what they are for: it may have gone when the dialog ends.
void TWatchlistTreeCommands::EditCategory(const TWatchlistCategory& iCategory) {
  const TGuid id = iCategory.Id();
  TStringList description;
  description.Assign(iCategory.Description());
  TString name = iCategory.Name();
  if (!TfrmKKPluginWatchlistEditCategory::DisplayEdit(FCommands.Seams.Form, description, name)) {
    return;
  }
  TWatchlistCategory* const category = RootCategories().FindCategoryById(id);
  if (category == nullptr) return;
  category->SetDescription(description);
  category->SetName(name);
  FTree.RepaintNode(*category);
  FTree.ShowInExplorerBar(category);
}

// Looks like a mistake and is required: unlike the same edit in a result list, it does not mark the
// source as changed; the note is written when something else has marked it.
void TWatchlistTreeCommands::EditNote(const TWatchlistItem& iItem) {
  const TGuid id = iItem.SearchResultId();
  TStringList lines;
  lines.Assign(iItem.Description());
  if (!TfrmKKWatchlistEditItemDescription::Display(FCommands.Seams.Form, lines)) return;
  TWatchlistItem* const item = RootCategories().FindItemById(id);
  if (item == nullptr) return;
  item->SetDescription(lines);
  FTree.RepaintNode(*item);
}

void TWatchlistTreeCommands::mntmDeleteClick(TObject*) {
  const TVirtualNode* const node = FTree.GetSelectedNode();
  if (TWatchlistItem* item = ItemAt(node)) {
    FCommands.Items.DeleteItem(*item);
  } else if (TWatchlistPlugin* group = GroupAt(node)) {
    FCommands.Items.DeleteGroup(*group);
  } else if (TWatchlistCategory* category = CategoryAt(node)) {
    if (!IsUnassigned(category)) FCommands.Categories.DeleteCategory(*category);
  }
}

void TWatchlistTreeCommands::mntmUpdateAllClick(TObject*) { FCommands.Updates.UpdateAll(); }

void TWatchlistTreeCommands::mntmUpdateClick(TObject* Sender) {
  const TVirtualNode* const node = FTree.GetSelectedNode();
  if (node == nullptr) return;
  if (const TWatchlistItem* item = ItemAt(node)) {
    FCommands.Updates.UpdateItem(*item);
  } else if (const TWatchlistPlugin* group = GroupAt(node)) {
    FCommands.Updates.UpdateGroup(*group);
  } else if (const TWatchlistCategory* category = CategoryAt(node)) {
    FCommands.Updates.UpdateCategory(*category);
  } else {
    mntmUpdateAllClick(Sender);
  }
}

void TWatchlistTreeCommands::DoClickMove(TObject* Sender) {
  const auto& entry = dynamic_cast<const TMenuItem&>(*Sender);
  const TVirtualNode* const node = FTree.GetSelectedNode();
  if (entry.GetCount() > 0 || node == nullptr || node->Object() == nullptr) return;
  auto* const target = dynamic_cast<TWatchlistCategory*>(entry.Tag());
  if (TWatchlistItem* item = ItemAt(node)) {
    MoveItem(target, *item);
  } else if (TWatchlistPlugin* group = GroupAt(node)) {
    if (target != nullptr) FCommands.Items.DoMovePlugin(*target, *group);
  } else if (TWatchlistCategory* category = CategoryAt(node)) {
    FCommands.Categories.DoMoveCategory(target, *category);
  }
  FPanes.ShowMoved();
}

// The top level is a target for categories alone.
void TWatchlistTreeCommands::MoveItem(TWatchlistCategory* iTarget, TWatchlistItem& iItem) {
  if (iTarget == nullptr) return;
  const TIntf<IWatchlistIntegration> integration = GroupOf(iItem).Integration();
  if (!Supports<IWatchlistVisualization>(integration)) return;
  const TIntf<IInterfaceList> results =
      iItem.SearchResult() ? ListOf(iItem.SearchResult()) : NewInterfaceList();
  FCommands.Items.MoveItems(integration, *iTarget, results, {iItem.SearchResultId()});
}

void TWatchlistTreeCommands::vstCategoriesDblClick(TObject*) {
  TVirtualNode* const node = FTree.vstCategories.NodeUnderPointer();
  if (ItemAt(node) != nullptr) Guarded(u"vstCategoriesDblClick", [&] { ShowItem(*node); });
}

void TWatchlistTreeCommands::ShowItem(TVirtualNode& iNode) {
  const TWatchlistItem& item = *ItemAt(&iNode);
  FTree.ShowNode(iNode.Parent());
  const auto view = Supports<IWatchlistVisualization>(GroupOf(item).Integration());
  if (view && item.SearchResult()) view->SelectResults(ListOf(item.SearchResult()));
  FTree.SelectNode(iNode);
  FTree.SwitchCategoryControl(&iNode);
}

bool TWatchlistTreeCommands::SelectCategory(TObject* iCategory) {
  TVirtualNode* const node = FTree.GetNodeByObj(iCategory);
  if (node != nullptr) FTree.vstCategories.SetSelectedNode(node);
  return node != nullptr;
}

void TWatchlistTreeCommands::DoClickExplorerbarCategoryEdit(TObject* Sender) {
  Guarded(u"DoClickExplorerbarCategoryEdit", [&] {
    if (SelectCategory(Sender)) mntmEditClick(Sender);
  });
}

void TWatchlistTreeCommands::DoClickExplorerbarCategoryUpdate(TObject* Sender) {
  Guarded(u"DoClickExplorerbarCategoryUpdate", [&] {
    if (SelectCategory(Sender)) mntmUpdateClick(Sender);
  });
}

}  // namespace kk
