#include "apps/desktop/skin/TResultItemModel.h"

#include <gmock/gmock.h>
#include <rapidcheck/gtest.h>

#include <QAbstractItemModelTester>
#include <QPersistentModelIndex>

#include "TResultWorld.h"
#include "TTesterMessages.h"

namespace kk {
namespace {

// Two columns without a window.
class TModelWorld {
 public:
  TModelWorld() {
    NeedQt();
    Table->AddColumn({NewGuid(), u"Name", 100, TResultAlignment::raLeft, true, FName, {}}, 0);
    Table->AddColumn({NewGuid(), u"Länge", 50, TResultAlignment::raRight, true, FLength, {}}, 1);
  }
  TString AnyName() { return TString(1, static_cast<char16_t>('a' + *rc::gen::inRange(0, 26))); }
  void ChangeAtRandom() {
    const int count = Table->GetCount();
    const int row = count > 0 ? *rc::gen::inRange(0, count) : -1;
    switch (*rc::gen::inRange(0, 7)) {
      case 0:
      case 1:
        Table->AddResult(FakeResult(AnyName()));
        break;
      case 2: {
        const TIntf<IInterfaceList> list = NewInterfaceList();
        for (int i = row; i >= 0 && i < count; i += *rc::gen::inRange(1, 4)) {
          list->Add(Table->Results(i));
        }
        Table->RemoveResults(list);
        break;
      }
      case 3:
        Table->SetSort(*rc::gen::inRange(-1, 2), *rc::gen::arbitrary<bool>());
        break;
      case 4:
        if (row >= 0) Table->RefreshResult(Table->Results(row));
        break;
      case 5:
        Table->SetResults(NamedResults({AnyName(), AnyName(), AnyName(), AnyName()}));
        break;
      default:
        Table->AddColumn({NewGuid(), u"Mehr", 50, {}, true, FName, {}}, 0);
        Table->DeleteColumn(Table->ColumnCount() - 1);
        break;
    }
  }

  std::shared_ptr<TNameContent> FName = std::make_shared<TNameContent>();
  std::shared_ptr<TNameContent> FLength = std::make_shared<TNameContent>(true);
  std::unique_ptr<TResultTable> Table = std::make_unique<TResultTable>(nullptr, u"tbl");
};

RC_GTEST_PROP(TResultItemModel, SatisfiesQtUnderAnyChanges, ()) {
  TModelWorld world;
  TResultItemModel model(*world.Table);
  const TTesterMessages messages;
  const QAbstractItemModelTester tester(&model,
                                        QAbstractItemModelTester::FailureReportingMode::Warning);
  const int changes = *rc::gen::inRange(1, 40);
  for (int i = 0; i < changes; ++i) {
    world.ChangeAtRandom();
    RC_ASSERT(messages.Texts.empty());
  }
}

RC_GTEST_PROP(TResultItemModel, KeepsPersistentIndexesOnTheirResults, ()) {
  TModelWorld world;
  world.Table->SetResults(NamedResults({u"c", u"a", u"b", u"a"}));
  TResultItemModel model(*world.Table);
  int resets = 0;
  QObject::connect(&model, &QAbstractItemModel::modelReset, &model, [&] { ++resets; });
  const int changes = *rc::gen::inRange(1, 30);
  for (int i = 0; i < changes; ++i) {
    std::vector<std::pair<TIntf<ISearchResult>, QPersistentModelIndex>> indexes;
    for (int row = 0; row < world.Table->GetCount(); ++row) {
      indexes.emplace_back(world.Table->Results(row), model.index(row, 1));
    }
    const int before = resets;
    world.ChangeAtRandom();
    if (resets != before) continue;
    for (const auto& [result, index] : indexes) {
      const int row = world.Table->IndexOfId(result->GetId());
      RC_ASSERT(index.row() == row);
      RC_ASSERT(row < 0 || index.column() == 1);
    }
  }
}

TEST(TResultItemModel, TellsOfOneRowForOneRefreshedResult) {
  TModelWorld world;
  world.Table->SetResults(NamedResults({u"a", u"b", u"c"}));
  TResultItemModel model(*world.Table);
  std::vector<std::pair<QModelIndex, QModelIndex>> changes;
  QObject::connect(&model, &QAbstractItemModel::dataChanged, &model,
                   [&](const QModelIndex& iFirst, const QModelIndex& iLast) {
                     changes.emplace_back(iFirst, iLast);
                   });
  world.Table->RefreshResult(world.Table->Results(1));
  ASSERT_EQ(changes.size(), 1u);
  EXPECT_EQ(changes[0].first, model.index(1, 0));
  EXPECT_EQ(changes[0].second, model.index(1, 1));
}

TEST(TResultItemModel, AnswersWhatTheTableShows) {
  TModelWorld world;
  world.Table->SetResults(NamedResults({u"mit Bild", u"mit Hinweis"}));
  const TResultItemModel model(*world.Table);
  EXPECT_EQ(model.index(0, 0).data(), QStringLiteral("mit Bild"));
  EXPECT_TRUE(model.index(0, 0).data(Qt::DecorationRole).isValid());
  EXPECT_FALSE(model.index(1, 0).data(Qt::DecorationRole).isValid());
  EXPECT_TRUE(model.index(1, 0).data(Qt::ToolTipRole).toString().contains("Hinweis"));
  EXPECT_FALSE(model.index(0, 0).data(Qt::FontRole).isValid());
  EXPECT_EQ(model.headerData(1, Qt::Horizontal, Qt::DisplayRole), QStringLiteral("Länge"));
  EXPECT_EQ(model.headerData(1, Qt::Horizontal, Qt::TextAlignmentRole).toInt(),
            static_cast<int>(Qt::AlignRight | Qt::AlignVCenter));
  EXPECT_FALSE(model.headerData(1, Qt::Horizontal, Qt::FontRole).isValid());
  EXPECT_FALSE(model.headerData(2, Qt::Horizontal, Qt::DisplayRole).isValid());
  EXPECT_EQ(ToQtAlignment(TResultAlignment::raCenter), Qt::AlignCenter);
}

TEST(TResultItemModel, HasNoRowsWhenItsTableHasDied) {
  TModelWorld world;
  world.Table->SetResults(NamedResults({u"a"}));
  const TResultItemModel model(*world.Table);
  EXPECT_EQ(model.rowCount(), 1);
  world.Table.reset();
  EXPECT_EQ(model.rowCount(), 0);
  EXPECT_EQ(model.columnCount(), 0);
}

}  // namespace
}  // namespace kk
