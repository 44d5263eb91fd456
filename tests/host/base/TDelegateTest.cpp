#include "host/base/TDelegate.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "host/base/TObject.h"

namespace kk {
namespace {

class TReceiver : public TObject {
 public:
  void Add(int iNumber) { FSum += iNumber; }
  void Subtract(int iNumber) { FSum -= iNumber; }
  int Sum() const { return FSum; }
  std::string Join(const std::string& iA, std::unique_ptr<int> iB) {
    return iA + std::to_string(*iB);
  }
  virtual void Say(std::string& ioText) { ioText += "base"; }

 private:
  int FSum = 0;
};

class TChild : public TReceiver {
 public:
  void Say(std::string& ioText) override { ioText += "child"; }
};

using TNumberEvent = TDelegate<void(int)>;

TEST(TDelegate, CallsTheMethodOfItsObject) {
  TReceiver receiver;
  const auto event = TNumberEvent::Of<&TReceiver::Add>(&receiver);
  event(5);
  event(2);
  EXPECT_EQ(receiver.Sum(), 7);
}

TEST(TDelegate, IsFalseUntilItHasAMethod) {
  TReceiver receiver;
  EXPECT_FALSE(TNumberEvent());
  EXPECT_TRUE(TNumberEvent::Of<&TReceiver::Add>(&receiver));
}

TEST(TDelegate, IsEqualForTheSameObjectAndMethod) {
  TReceiver one;
  TReceiver other;
  const auto event = TNumberEvent::Of<&TReceiver::Add>(&one);
  EXPECT_EQ(event, TNumberEvent::Of<&TReceiver::Add>(&one));
  EXPECT_NE(event, TNumberEvent::Of<&TReceiver::Subtract>(&one));
  EXPECT_NE(event, TNumberEvent::Of<&TReceiver::Add>(&other));
  EXPECT_EQ(TNumberEvent(), TNumberEvent());
  EXPECT_NE(event, TNumberEvent());
}

TEST(TDelegate, PassesReferencesAndMovesValues) {
  TReceiver receiver;
  using TJoin = TDelegate<std::string(const std::string&, std::unique_ptr<int>)>;
  const auto join = TJoin::Of<&TReceiver::Join>(&receiver);
  EXPECT_EQ(join("a", std::make_unique<int>(3)), "a3");
}

TEST(TDelegate, CallsTheOverrideOfADescendant) {
  TChild child;
  std::string text;
  TDelegate<void(std::string&)>::Of<&TReceiver::Say>(static_cast<TReceiver*>(&child))(text);
  EXPECT_EQ(text, "child");
}

}  // namespace
}  // namespace kk
