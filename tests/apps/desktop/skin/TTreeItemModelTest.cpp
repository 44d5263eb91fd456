#include "apps/desktop/skin/TTreeItemModel.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <QAbstractItemModelTester>
#include <QPersistentModelIndex>
#include <map>

#include "TTesterMessages.h"
#include "apps/desktop/skin/QtText.h"
#include "host/base/Exception.h"
#include "tests/support/qt/OffscreenQt.h"

namespace kk {
namespace {

struct TThing : TObject {
  explicit TThing(int iNumber) : Number(iNumber) {}
  int Number;
};

// Nodes that show their numbers, in a tree without a window.
class TNumberTree {
 public:
  TNumberTree() {
    NeedQt();
    Tree.SetOnGetText(TNodeTextEvent::Of<&TNumberTree::GetText>(this));
    Tree.SetOnGetHint(TNodeTextEvent::Of<&TNumberTree::GetHint>(this));
    Tree.SetOnCompareNodes(TCompareNodesEvent::Of<&TNumberTree::Compare>(this));
  }
  TVirtualNode& Add(TVirtualNode* iParent, int iNumber) {
    FThings.push_back(std::make_unique<TThing>(iNumber));
    return Tree.AddChild(iParent, FThings.back().get());
  }
  std::vector<TVirtualNode*> Nodes() const {
    std::vector<TVirtualNode*> nodes;
    for (TVirtualNode* node = Tree.First(); node != nullptr; node = node->Next()) {
      nodes.push_back(node);
    }
    return nodes;
  }
  TThing& ThingOf(const TVirtualNode& iNode) { return dynamic_cast<TThing&>(*iNode.Object()); }

  TVirtualStringTree Tree{nullptr, u"vst"};
  int Asked = 0;

 private:
  void GetText(TObject*, TVirtualNode& iNode, TString& oText) {
    ++Asked;
    if (ThingOf(iNode).Number < 0) throw Exception(u"kaputt");
    oText = FromUtf8(std::to_string(ThingOf(iNode).Number));
  }
  void GetHint(TObject*, TVirtualNode&, TString& oHint) { oHint = u"<b>Zeile</b>\r\nzwei"; }
  void Compare(TObject*, TVirtualNode& iA, TVirtualNode& iB, int& oResult) {
    oResult = ThingOf(iA).Number - ThingOf(iB).Number;
  }

  std::vector<std::unique_ptr<TThing>> FThings;
};

// Does one thing at random to the tree.
void ChangeAtRandom(TNumberTree& ioTree) {
  const std::vector<TVirtualNode*> nodes = ioTree.Nodes();
  const auto any = [&]() -> TVirtualNode* {
    if (nodes.empty()) return nullptr;
    const auto place = *rc::gen::inRange<size_t>(0, nodes.size() + 1);
    return place < nodes.size() ? nodes[place] : nullptr;
  };
  TVirtualNode* node = any();
  switch (*rc::gen::inRange(0, 9)) {
    case 0:
    case 1:
    case 2:
      ioTree.Add(node, *rc::gen::inRange(0, 100));
      break;
    case 3:
      if (node != nullptr) ioTree.Tree.DeleteNode(*node);
      break;
    case 4:
    case 5: {
      TVirtualNode* parent = any();
      if (node == nullptr || (parent != nullptr && parent->IsIn(*node))) break;
      ioTree.Tree.MoveTo(*node, parent);
      break;
    }
    case 6:
      if (node != nullptr) {
        ioTree.ThingOf(*node).Number = *rc::gen::inRange(0, 100);
        ioTree.Tree.InvalidateNode(*node);
      }
      ioTree.Tree.SortTree();
      break;
    case 7:
      if (node != nullptr) ioTree.Tree.SetExpanded(*node, !node->Expanded());
      break;
    default: {
      const TVirtualStringTree::TUpdate update(ioTree.Tree);
      ioTree.Add(node, 7);
      ioTree.Add(nullptr, 8);
      break;
    }
  }
}

RC_GTEST_PROP(TTreeItemModel, SatisfiesQtUnderAnyChanges, ()) {
  TNumberTree world;
  TTreeItemModel model(world.Tree);
  const TTesterMessages messages;
  const QAbstractItemModelTester tester(&model,
                                        QAbstractItemModelTester::FailureReportingMode::Warning);
  const int changes = *rc::gen::inRange(1, 40);
  for (int i = 0; i < changes; ++i) {
    ChangeAtRandom(world);
    RC_ASSERT(messages.Texts.empty());
  }
}

RC_GTEST_PROP(TTreeItemModel, KeepsPersistentIndexesOnTheirNodes, ()) {
  TNumberTree world;
  for (int i = 0; i < 6; ++i) world.Add(nullptr, i * 7 % 5);
  TTreeItemModel model(world.Tree);
  int resets = 0;
  QObject::connect(&model, &QAbstractItemModel::modelReset, &model, [&] { ++resets; });
  std::map<TVirtualNode*, QPersistentModelIndex> indexes;
  const int changes = *rc::gen::inRange(1, 40);
  for (int i = 0; i < changes; ++i) {
    indexes.clear();
    for (TVirtualNode* node : world.Nodes()) indexes[node] = model.IndexOf(node);
    const int before = resets;
    ChangeAtRandom(world);
    if (resets != before) continue;
    size_t alive = 0;
    for (TVirtualNode* node : world.Nodes()) {
      const auto kept = indexes.find(node);
      if (kept == indexes.end()) continue;
      ++alive;
      RC_ASSERT(kept->second == model.IndexOf(node));
    }
    const auto valid = std::count_if(indexes.begin(), indexes.end(),
                                     [](const auto& iEntry) { return iEntry.second.isValid(); });
    RC_ASSERT(static_cast<size_t>(valid) == alive);
  }
}

TEST(TTreeItemModel, TellsOfOneRowForOneChangedNode) {
  TNumberTree world;
  world.Add(nullptr, 1);
  TVirtualNode& node = world.Add(nullptr, 2);
  TTreeItemModel model(world.Tree);
  std::vector<std::pair<QModelIndex, QModelIndex>> changes;
  QObject::connect(&model, &QAbstractItemModel::dataChanged, &model,
                   [&](const QModelIndex& iFirst, const QModelIndex& iLast) {
                     changes.emplace_back(iFirst, iLast);
                   });
  world.Tree.InvalidateNode(node);
  ASSERT_EQ(changes.size(), 1u);
  EXPECT_EQ(changes[0].first, model.IndexOf(&node));
  EXPECT_EQ(changes[0].second, model.IndexOf(&node));
}

TEST(TTreeItemModel, ShowsWhatTheTreeSays) {
  TNumberTree world;
  TVirtualNode& node = world.Add(nullptr, 12);
  TTreeItemModel model(world.Tree);
  const QModelIndex index = model.IndexOf(&node);
  EXPECT_EQ(index.data(), QStringLiteral("12"));
  EXPECT_FALSE(index.data(Qt::DecorationRole).isValid());
  EXPECT_FALSE(index.data(Qt::CheckStateRole).isValid());
  // Hints are words, not markup.
  EXPECT_TRUE(index.data(Qt::ToolTipRole).toString().contains(QStringLiteral("&lt;b&gt;Zeile")));
}

TEST(TTreeItemModel, ShowsANodeEmptyWhoseTextFails) {
  TNumberTree world;
  TVirtualNode& node = world.Add(nullptr, -1);
  const TTreeItemModel model(world.Tree);
  EXPECT_FALSE(model.IndexOf(&node).data().isValid());
}

TEST(TTreeItemModel, TicksACheckBoxByItsEventAlone) {
  TNumberTree world;
  TVirtualNode& plain = world.Add(nullptr, 1);
  TVirtualNode& node = world.Add(nullptr, 2);
  world.Tree.SetHasCheckBox(node, true);
  TTreeItemModel model(world.Tree);
  QModelIndex checked;
  model.SetOnCheck([&](const QModelIndex& iIndex) { checked = iIndex; });
  const QModelIndex index = model.IndexOf(&node);
  EXPECT_TRUE(index.flags().testFlag(Qt::ItemIsUserCheckable));
  EXPECT_FALSE(model.IndexOf(&plain).flags().testFlag(Qt::ItemIsUserCheckable));
  EXPECT_EQ(index.data(Qt::CheckStateRole).toInt(), Qt::Unchecked);
  EXPECT_TRUE(model.setData(index, Qt::Checked, Qt::CheckStateRole));
  EXPECT_EQ(checked, index);
  EXPECT_FALSE(node.Checked());
  EXPECT_FALSE(model.setData(index, QStringLiteral("x"), Qt::EditRole));
}

TEST(TTreeItemModel, HasNoNodesWhileTheTreeIsRebuiltAndWhenItHasDied) {
  NeedQt();
  auto world = std::make_unique<TNumberTree>();
  TVirtualNode& node = world->Add(nullptr, 1);
  TTreeItemModel model(world->Tree);
  const QModelIndex index = model.IndexOf(&node);
  {
    const TVirtualStringTree::TUpdate update(world->Tree);
    EXPECT_EQ(model.rowCount(), 0);
    EXPECT_FALSE(index.data().isValid());
    EXPECT_FALSE(index.parent().isValid());
    EXPECT_FALSE(model.IndexOf(&node).isValid());
    EXPECT_TRUE(model.IsChanging());
  }
  EXPECT_EQ(model.rowCount(), 1);
  EXPECT_FALSE(model.IsChanging());
  world.reset();
  EXPECT_EQ(model.rowCount(), 0);
}

}  // namespace
}  // namespace kk
