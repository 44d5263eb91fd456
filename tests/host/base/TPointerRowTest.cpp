#include "host/base/TPointerRow.h"

#include <gmock/gmock.h>
#include <rapidcheck.h>
#include <rapidcheck/gtest.h>

namespace kk {
namespace {

using testing::ElementsAre;

std::vector<int> Values(const TPointerRow<int>& iRow) {
  std::vector<int> values;
  for (const int* pointer : iRow) values.push_back(*pointer);
  return values;
}

TEST(TPointerRow, KeepsTheOrderOfInsertsAtBothEndsAndInTheMiddle) {
  int numbers[] = {0, 1, 2, 3, 4};
  TPointerRow<int> row;
  EXPECT_TRUE(row.empty());
  row.Insert(0, &numbers[2]);
  row.Insert(0, &numbers[0]);
  row.Insert(1, &numbers[1]);
  row.Insert(3, &numbers[4]);
  row.Insert(3, &numbers[3]);
  EXPECT_THAT(Values(row), ElementsAre(0, 1, 2, 3, 4));
  row.Reverse();
  EXPECT_THAT(Values(row), ElementsAre(4, 3, 2, 1, 0));
}

RC_GTEST_PROP(TPointerRow, DoesWhatAVectorDoes,
              (const std::vector<std::pair<bool, uint16_t>>& iSteps)) {
  std::vector<int> numbers(iSteps.size());
  std::vector<int*> expected;
  TPointerRow<int> row;
  for (size_t i = 0; i < iSteps.size(); ++i) {
    const auto& [inserts, place] = iSteps[i];
    if (inserts || expected.empty()) {
      const size_t at = place % (expected.size() + 1);
      expected.insert(expected.begin() + static_cast<ptrdiff_t>(at), &numbers[i]);
      row.Insert(at, &numbers[i]);
    } else {
      const size_t at = place % expected.size();
      RC_ASSERT(row.TakeOut(at) == expected[at]);
      expected.erase(expected.begin() + static_cast<ptrdiff_t>(at));
    }
    RC_ASSERT(row.size() == expected.size());
    RC_ASSERT(std::equal(row.begin(), row.end(), expected.begin(), expected.end()));
  }
}

TEST(TPointerRow, EmptiesFromEitherEnd) {
  int number = 0;
  TPointerRow<int> row;
  for (int i = 0; i < 1000; ++i) row.Insert(row.size(), &number);
  for (int i = 0; i < 500; ++i) row.TakeOut(0);
  EXPECT_EQ(row.size(), 500u);
  for (int i = 0; i < 500; ++i) row.TakeOut(row.size() - 1);
  EXPECT_TRUE(row.empty());
  EXPECT_EQ(row.begin(), row.end());
}

}  // namespace
}  // namespace kk
