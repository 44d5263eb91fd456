#include "host/base/IInterface.h"

#include <gtest/gtest.h>

#include <thread>
#include <vector>

#include "host/base/Exception.h"
#include "host/base/IInterfaceList.h"

namespace kk {
namespace {

class IShape : public IInterface {
 public:
  using TParent = IInterface;
  static constexpr TGuid cIid = GuidLiteral("{11111111-0000-0000-0000-000000000001}");
  virtual int Corners() const = 0;
};

class ISquare : public IShape {
 public:
  using TParent = IShape;
  static constexpr TGuid cIid = GuidLiteral("{11111111-0000-0000-0000-000000000002}");
  virtual int Width() const = 0;
};

class INamed : public IInterface {
 public:
  using TParent = IInterface;
  static constexpr TGuid cIid = GuidLiteral("{11111111-0000-0000-0000-000000000003}");
  virtual TString GetName() const = 0;
};

class ICounted : public IInterface {
 public:
  using TParent = IInterface;
  static constexpr TGuid cIid = GuidLiteral("{11111111-0000-0000-0000-000000000004}");
  virtual int Number() const = 0;
};

class TNumber : public TInterfaced<ICounted> {
 public:
  int Number() const override { return 42; }
};

class TSquare : public TInterfaced<ISquare, INamed> {
 public:
  explicit TSquare(int iWidth = 3) : FWidth(iWidth) {}
  int Corners() const override { return 4; }
  int Width() const override { return FWidth; }
  TString GetName() const override { return u"Quadrat"; }

 protected:
  // Another object answers for this interface.
  bool QueryDelegated(const TGuid& iIid, void** oInterface) override {
    return iIid == ICounted::cIid && MakeIntf<TNumber>()->QueryInterface(iIid, oInterface);
  }

 private:
  int FWidth;
};

TEST(Supports, FindsEachInterfaceOfAnObject) {
  const TIntf<ISquare> asSquare = MakeIntf<TSquare>();
  EXPECT_EQ(Supports<INamed>(asSquare)->GetName(), u"Quadrat");
  const TIntf<INamed> asNamed = Supports<INamed>(asSquare);
  EXPECT_EQ(Supports<ISquare>(asNamed)->Width(), 3);
}

TEST(Supports, FindsTheParentOfAnInterface) {
  const TIntf<INamed> named = MakeIntf<TSquare>();
  EXPECT_EQ(Supports<IShape>(named)->Corners(), 4);
}

TEST(Supports, AnswersNoWithAnEmptyPointer) {
  const TIntf<ICounted> number = MakeIntf<TNumber>();
  EXPECT_FALSE(Supports<INamed>(number));
  EXPECT_FALSE(Supports<INamed>(TIntf<ICounted>()));
  EXPECT_FALSE(Supports<INamed>(static_cast<IInterface*>(nullptr)));
}

TEST(Supports, TheRootIsTheSameByWhicheverInterface) {
  const TIntf<ISquare> square = MakeIntf<TSquare>();
  const TIntf<INamed> named = Supports<INamed>(square);
  EXPECT_EQ(Supports<IInterface>(square), Supports<IInterface>(named));
}

TEST(QueryInterface, SetsNullForNo) {
  const TIntf<ICounted> number = MakeIntf<TNumber>();
  int something = 0;
  void* out = &something;
  EXPECT_FALSE(number->QueryInterface(INamed::cIid, &out));
  EXPECT_EQ(out, nullptr);
}

TEST(QueryDelegated, AnswersForInterfacesOfAnotherObject) {
  const TIntf<ISquare> square = MakeIntf<TSquare>();
  const TIntf<ICounted> number = Supports<ICounted>(square);
  ASSERT_TRUE(number);
  EXPECT_EQ(number->Number(), 42);
  EXPECT_FALSE(Supports<IInterfaceList>(square));
}

TEST(LiveObjectCount, IsThatOfObjectsBehindInterfaces) {
  const int64_t before = LiveObjectCount();
  {
    TIntf<ISquare> square = MakeIntf<TSquare>();
    EXPECT_EQ(LiveObjectCount(), before + 1);
    const TIntf<ICounted> number = Supports<ICounted>(square);
    EXPECT_EQ(LiveObjectCount(), before + 2);
    square = nullptr;
    EXPECT_EQ(LiveObjectCount(), before + 1);
  }
  EXPECT_EQ(LiveObjectCount(), before);
}

TEST(TIntf, TheLastReferenceEndsTheObject) {
  const int64_t before = LiveObjectCount();
  TIntf<INamed> named = MakeIntf<TSquare>();
  TIntf<INamed> copy = named;
  TIntf<IShape> shape = Supports<IShape>(named);
  named = nullptr;
  copy = TIntf<INamed>();
  EXPECT_EQ(LiveObjectCount(), before + 1);
  shape = nullptr;
  EXPECT_EQ(LiveObjectCount(), before);
}

TEST(TIntf, MovesWithoutCounting) {
  TIntf<INamed> named = MakeIntf<TSquare>();
  INamed* object = named.Get();
  const TIntf<INamed> moved = std::move(named);
  EXPECT_EQ(moved.Get(), object);
  EXPECT_TRUE(named == nullptr);  // NOLINT: a moved-from pointer is empty
}

TEST(TIntf, SurvivesAssigningItselfAndItsOwnPart) {
  TIntf<INamed> named = MakeIntf<TSquare>();
  TIntf<INamed>& alias = named;
  named = alias;
  ASSERT_TRUE(named);
  EXPECT_EQ((*named).GetName(), u"Quadrat");
  EXPECT_TRUE(named == alias);
  EXPECT_FALSE(named == nullptr);
}

TEST(TIntf, CountsOnAnyThread) {
  const int64_t before = LiveObjectCount();
  {
    const TIntf<INamed> named = MakeIntf<TSquare>();
    std::vector<std::thread> threads;
    for (int i = 0; i < 4; ++i) {
      threads.emplace_back([named] {
        for (int n = 0; n < 1000; ++n) {
          const TIntf<INamed> copy = named;
          ASSERT_TRUE(copy);
        }
      });
    }
    for (std::thread& thread : threads) thread.join();
    EXPECT_EQ(LiveObjectCount(), before + 1);
  }
  EXPECT_EQ(LiveObjectCount(), before);
}

// Hands itself out while it is made and while it dies, and takes the references back at once.
class TSelfUser : public TInterfaced<INamed> {
 public:
  explicit TSelfUser(int& ioDeaths) : FDeaths(ioDeaths) { Use(); }
  ~TSelfUser() override {
    Use();
    ++FDeaths;
  }
  TString GetName() const override { return u"Selbst"; }

 private:
  void Use() {
    const TIntf<INamed> self(this);
    const TIntf<INamed> queried = Supports<INamed>(self);
    EXPECT_TRUE(queried);
  }
  int& FDeaths;
};

TEST(TInterfaced, AReferenceToItselfInConstructorOrDestructorDoesNotEndIt) {
  int deaths = 0;
  TIntf<INamed> self = MakeIntf<TSelfUser>(deaths);
  EXPECT_EQ(deaths, 0);
  EXPECT_EQ(self->GetName(), u"Selbst");
  self = nullptr;
  EXPECT_EQ(deaths, 1);
}

TEST(IInterfaceList, HoldsReferencesInOrder) {
  const int64_t before = LiveObjectCount();
  {
    const TIntf<IInterfaceList> list = NewInterfaceList();
    list->Add(Supports<IInterface>(TIntf<ISquare>(MakeIntf<TSquare>(1))));
    list->Add(Supports<IInterface>(TIntf<ISquare>(MakeIntf<TSquare>(3))));
    list->Insert(1, Supports<IInterface>(TIntf<ISquare>(MakeIntf<TSquare>(2))));
    list->Insert(3, {});
    ASSERT_EQ(list->GetCount(), 4);
    for (int i = 0; i < 3; ++i) EXPECT_EQ(GetAs<ISquare>(*list, i)->Width(), i + 1);
    EXPECT_FALSE(list->Get(3));
    EXPECT_FALSE(GetAs<ISquare>(*list, 3));
    EXPECT_FALSE(GetAs<IInterfaceList>(*list, 0)) << "an entry without the interface";
    list->Delete(0);
    EXPECT_EQ(GetAs<ISquare>(*list, 0)->Width(), 2);
    EXPECT_EQ(list->GetCount(), 3);
    list->Clear();
    EXPECT_EQ(list->GetCount(), 0);
    EXPECT_EQ(LiveObjectCount(), before + 1);
  }
  EXPECT_EQ(LiveObjectCount(), before);
}

TEST(IInterfaceList, FindsAnObjectByWhicheverInterface) {
  const TIntf<ISquare> square = MakeIntf<TSquare>();
  const TIntf<IInterfaceList> list = NewInterfaceList();
  list->Add({});
  list->Add(Supports<IInterface>(TIntf<ICounted>(MakeIntf<TNumber>())));
  list->Add(Supports<INamed>(square));
  EXPECT_EQ(list->IndexOf(square), 2);
  EXPECT_EQ(list->IndexOf(TIntf<ISquare>(MakeIntf<TSquare>())), -1);
}

TEST(IInterfaceList, AnIndexOutOfRangeRaises) {
  const TIntf<IInterfaceList> list = NewInterfaceList();
  EXPECT_THROW(list->Get(0), EListError);
  EXPECT_THROW(list->Delete(0), EListError);
  EXPECT_THROW(list->Insert(1, {}), EListError);
  EXPECT_THROW(list->Insert(-1, {}), EListError);
}

}  // namespace
}  // namespace kk
