#include "qmcore/platform/NotificationCenter.hpp"

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <vector>

namespace qm {
namespace {

TEST(NotificationCenterTest, DeliversToObserversOfTheNameInOrderBeforePostReturns) {
  NotificationCenter center;
  std::vector<std::string> calls;
  auto first = center.addObserver("A", [&](const Notification& n) {
    calls.push_back("first:" + n.name + ":" + std::to_string(std::any_cast<int>(n.object)));
  });
  auto second = center.addObserver("A", [&](const Notification&) { calls.push_back("second"); });
  auto other = center.addObserver("B", [&](const Notification&) { calls.push_back("other"); });
  center.post("A", 6);
  EXPECT_EQ(calls, (std::vector<std::string>{"first:A:6", "second"}));
}

TEST(NotificationCenterTest, ReleasingTheHandleRemovesTheObserver) {
  NotificationCenter center;
  int count = 0;
  {
    auto handle = center.addObserver("A", [&](const Notification&) { ++count; });
    center.post("A");
  }
  center.post("A");
  EXPECT_EQ(count, 1);

  auto moved = center.addObserver("A", [&](const Notification&) { ++count; });
  ObserverHandle target = std::move(moved);
  center.post("A");
  target.reset();
  center.post("A");
  EXPECT_EQ(count, 2);
}

TEST(NotificationCenterTest, ObserverMayRemoveAnotherDuringDelivery) {
  NotificationCenter center;
  std::optional<ObserverHandle> second;
  int secondCalls = 0;
  auto first = center.addObserver("A", [&](const Notification&) { second.reset(); });
  second.emplace(center.addObserver("A", [&](const Notification&) { ++secondCalls; }));
  center.post("A");
  EXPECT_EQ(secondCalls, 0);
}

TEST(NotificationCenterTest, HandleMayOutliveTheCenter) {
  ObserverHandle handle;
  {
    NotificationCenter center;
    handle = center.addObserver("A", [](const Notification&) {});
  }
  handle.reset();  // must not touch the destroyed centre
  SUCCEED();
}

}  // namespace
}  // namespace qm
