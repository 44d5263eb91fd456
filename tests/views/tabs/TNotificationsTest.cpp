#include "views/tabs/TNotifications.h"

#include <gtest/gtest.h>

#include "tests/support/TFakeSource.h"

namespace kk {
namespace {

struct TListener {
  void SelectionChanged() { Told += "S"; }
  void Close() { Told += "C"; }
  void WaitFor() { Told += "W"; }
  std::string Told;
};

TIntf<TNotifications> NotificationsFor(TListener& ioListener) {
  using TCallback = TNotifications::TCallback;
  return MakeIntf<TNotifications>(TCallback::Of<&TListener::SelectionChanged>(&ioListener),
                                  TCallback::Of<&TListener::Close>(&ioListener),
                                  TCallback::Of<&TListener::WaitFor>(&ioListener));
}

TEST(TNotifications, EachOperationCallsItsCallback) {
  TListener listener;
  const TIntf<IInterface> extension = NotificationsFor(listener);
  const auto notifications = Supports<INotifications>(extension);
  notifications->SelectionChanged();
  notifications->Close();
  notifications->WaitFor();
  EXPECT_EQ(listener.Told, "SCW");
}

TEST(TNotifications, KeepsTheResultsThatItIsGiven) {
  TListener listener;
  const auto notifications = NotificationsFor(listener);
  EXPECT_FALSE(notifications->GetSearchResults());
  const TIntf<ISearchResults> results = MakeIntf<TFakeSearchResults>();
  notifications->SetSearchResults(results);
  EXPECT_EQ(notifications->GetSearchResults(), results);
}

TEST(TNotifications, DetachedItHoldsNothingAndCallsNobody) {
  TListener listener;
  const auto notifications = NotificationsFor(listener);
  notifications->SetSearchResults(MakeIntf<TFakeSearchResults>());
  notifications->Detach();
  notifications->SelectionChanged();
  notifications->Close();
  notifications->WaitFor();
  EXPECT_FALSE(notifications->GetSearchResults());
  EXPECT_EQ(listener.Told, "");
}

TEST(TNotifications, HasItsGivenId) {
  EXPECT_EQ(INotifications::cIid, StringToGUID(u"{3870DD27-ADBB-4151-87BD-BB788ABCF2A6}"));
}

}  // namespace
}  // namespace kk
