#include "host/base/TLstBase.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <rapidcheck.h>

#include <vector>

namespace kk {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

// Notes its number when it dies.
class TThing : public TObject {
 public:
  explicit TThing(int iNumber, std::vector<int>* ioDeaths = nullptr)
      : FNumber(iNumber), FDeaths(ioDeaths) {}
  ~TThing() override {
    if (FDeaths != nullptr) FDeaths->push_back(FNumber);
  }
  int Number() const { return FNumber; }

 private:
  int FNumber;
  std::vector<int>* FDeaths;
};

class TLstThing : public TLstBase<TThing> {
 public:
  using TLstBase::TLstBase;
  TThing& Add(std::unique_ptr<TThing> iThing) { return Append(std::move(iThing)); }
  TThing& Add(TThing& iThing) { return Append(iThing); }
  TThing& Insert(int iIndex, std::unique_ptr<TThing> iThing) {
    return InsertAt(iIndex, std::move(iThing));
  }
  TThing& GetItems(int iIndex) { return At(iIndex); }
  std::vector<int> Numbers() const {
    std::vector<int> numbers;
    for (const TThing* thing : *this) numbers.push_back(thing->Number());
    return numbers;
  }
};

// Notes what the base tells its descendants.
class TLstTold : public TLstThing {
 public:
  using TLstThing::TLstThing;
  ~TLstTold() override { Clear(); }
  std::vector<std::string> Told;

 protected:
  void Attached(TThing& iThing) override { Note("+", iThing); }
  void Detached(TThing& iThing) override { Note("-", iThing); }
  void Reordered() override { Told.push_back("~"); }

 private:
  void Note(const char* iSign, const TThing& iThing) {
    Told.push_back(iSign + std::to_string(iThing.Number()));
  }
};

class TOwning : public testing::Test {
 protected:
  std::vector<int> FDeaths;
  TLstThing FList{true};

  void Fill(int iCount) {
    for (int i = 1; i <= iCount; ++i) FList.Add(std::make_unique<TThing>(i, &FDeaths));
  }
};

TEST_F(TOwning, ClearFreesTheFirstOneFirst) {
  Fill(3);
  FList.Clear();
  EXPECT_EQ(FList.GetCount(), 0);
  EXPECT_THAT(FDeaths, ElementsAre(1, 2, 3));
}

TEST_F(TOwning, DestructorFrees) {
  {
    TLstThing list(true);
    list.Add(std::make_unique<TThing>(7, &FDeaths));
  }
  EXPECT_THAT(FDeaths, ElementsAre(7));
}

TEST_F(TOwning, ClearWithoutFreeFreesNothing) {
  Fill(2);
  const std::unique_ptr<TThing> first(&FList.GetItems(0));
  const std::unique_ptr<TThing> second(&FList.GetItems(1));
  FList.ClearWithoutFree();
  EXPECT_EQ(FList.GetCount(), 0);
  EXPECT_THAT(FDeaths, IsEmpty());
}

TEST_F(TOwning, ExtractHandsTheObjectOverAndALaterClearDoesNotFreeIt) {
  Fill(3);
  const std::unique_ptr<TThing> second = FList.Extract(1);
  const std::unique_ptr<TThing> third = FList.Extract(FList.GetItems(1));
  FList.Clear();
  EXPECT_THAT(FDeaths, ElementsAre(1));
  EXPECT_EQ(second->Number(), 2);
  EXPECT_EQ(third->Number(), 3);
}

TEST_F(TOwning, ExtractOfAnObjectOutsideGivesNothing) {
  Fill(1);
  TThing other(9);
  EXPECT_EQ(FList.Extract(other), nullptr);
  EXPECT_EQ(FList.GetCount(), 1);
}

TEST_F(TOwning, DeleteFrees) {
  Fill(3);
  FList.Delete(1);
  EXPECT_THAT(FDeaths, ElementsAre(2));
  EXPECT_THAT(FList.Numbers(), ElementsAre(1, 3));
}

TEST_F(TOwning, IndexOfTheEmptyReferenceIsMinusOne) {
  Fill(2);
  TThing other(9);
  EXPECT_EQ(FList.IndexOf(nullptr), -1);
  EXPECT_EQ(FList.IndexOf(&other), -1);
  EXPECT_EQ(FList.IndexOf(&FList.GetItems(1)), 1);
}

TEST_F(TOwning, MovesAndReverses) {
  Fill(4);
  FList.Move(0, 2);
  EXPECT_THAT(FList.Numbers(), ElementsAre(2, 3, 1, 4));
  FList.Move(3, 0);
  EXPECT_THAT(FList.Numbers(), ElementsAre(4, 2, 3, 1));
  FList.Move(1, 1);
  FList.Reverse();
  EXPECT_THAT(FList.Numbers(), ElementsAre(1, 3, 2, 4));
}

TEST_F(TOwning, InsertsWithinBounds) {
  Fill(2);
  FList.Insert(1, std::make_unique<TThing>(3));
  FList.Insert(-5, std::make_unique<TThing>(4));
  FList.Insert(99, std::make_unique<TThing>(5));
  EXPECT_THAT(FList.Numbers(), ElementsAre(4, 1, 3, 2, 5));
}

TEST_F(TOwning, AnIndexOutOfRangeRaises) {
  Fill(1);
  EXPECT_THROW(FList.GetItems(1), EListError);
  EXPECT_THROW(FList.GetItems(-1), EListError);
  EXPECT_THROW(FList.Delete(1), EListError);
  EXPECT_THROW(FList.Extract(1), EListError);
  EXPECT_THROW(FList.Move(0, 1), EListError);
  EXPECT_THROW(FList.Move(1, 0), EListError);
  EXPECT_EQ(FList.GetCount(), 1);
}

TEST_F(TOwning, DoesNotBorrow) {
  TThing thing(1);
  EXPECT_THROW(FList.Add(thing), EInvalidCast);
  EXPECT_EQ(FList.GetCount(), 0);
}

TEST_F(TOwning, AnObjectMayTakeAnotherAlongWhenItDies) {
  class TTaking : public TThing {
   public:
    explicit TTaking(TLstThing& ioList) : TThing(0), FList(ioList) {}
    ~TTaking() override {
      if (FList.GetCount() > 0) FList.Delete(0);
    }

   private:
    TLstThing& FList;
  };
  FList.Add(std::make_unique<TTaking>(FList));
  Fill(3);
  FList.Clear();
  EXPECT_THAT(FDeaths, ElementsAre(1, 2, 3));
}

TEST(TLstBase, ABorrowingListFreesNothing) {
  std::vector<int> deaths;
  TThing one(1, &deaths);
  TThing two(2, &deaths);
  {
    TLstThing list(false);
    EXPECT_FALSE(list.OwnsObjects());
    list.Add(one);
    list.Add(two);
    list.Delete(0);
    EXPECT_THAT(list.Numbers(), ElementsAre(2));
    list.Add(one);
    list.Clear();
    list.Add(one);
  }
  EXPECT_THAT(deaths, IsEmpty());
}

TEST(TLstBase, ABorrowingListHasNothingToHandOver) {
  TThing one(1);
  TLstThing list(false);
  list.Add(one);
  EXPECT_THROW(list.Extract(0), EInvalidCast);
  EXPECT_THROW(list.Extract(one), EInvalidCast);
  EXPECT_EQ(list.GetCount(), 1);
}

TEST(TLstBase, ABorrowingListFreesAnObjectThatItCanNotOwn) {
  std::vector<int> deaths;
  TLstThing list(false);
  EXPECT_THROW(list.Add(std::make_unique<TThing>(1, &deaths)), EInvalidCast);
  EXPECT_THAT(deaths, ElementsAre(1));
}

TEST(TLstBase, DescendantsAreToldOfEveryChange) {
  TLstTold list(true);
  list.Add(std::make_unique<TThing>(1));
  list.Add(std::make_unique<TThing>(2));
  list.Insert(0, std::make_unique<TThing>(3));
  list.Move(0, 2);
  list.Reverse();
  list.Delete(0);
  const auto extracted = list.Extract(0);
  list.Clear();
  EXPECT_THAT(list.Told, ElementsAre("+1", "+2", "+3", "~", "~", "~", "-3", "-2", "-1"));
}

TEST(TLstBase, DescendantsAreToldOfClearWithoutFree) {
  TThing one(1);
  TLstTold list(false);
  list.Add(one);
  list.ClearWithoutFree();
  EXPECT_THAT(list.Told, ElementsAre("+1", "-1"));
}

TEST(TLstBase, BehavesLikeAPlainVector) {
  EXPECT_TRUE(rc::check("changes in any order", [] {
    TLstThing list(true);
    std::vector<int> plain;
    const auto steps = *rc::gen::container<std::vector<std::pair<int, int>>>(
        rc::gen::pair(rc::gen::inRange(0, 5), rc::gen::inRange(0, 10)));
    for (const auto& [kind, number] : steps) {
      const int count = list.GetCount();
      const int at = count == 0 ? 0 : number % count;
      if (kind <= 1 || count == 0) {
        list.Insert(number, std::make_unique<TThing>(number));
        plain.insert(plain.begin() + std::min(number, count), number);
      } else if (kind == 2) {
        list.Delete(at);
        plain.erase(plain.begin() + at);
      } else if (kind == 3) {
        list.Move(at, count - 1);
        const int moved = plain[static_cast<size_t>(at)];
        plain.erase(plain.begin() + at);
        plain.push_back(moved);
      } else {
        list.Reverse();
        std::reverse(plain.begin(), plain.end());
      }
    }
    RC_ASSERT(list.Numbers() == plain);
  }));
}

}  // namespace
}  // namespace kk
