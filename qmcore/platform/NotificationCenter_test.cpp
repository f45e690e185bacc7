#include "qmcore/platform/NotificationCenter.hpp"

#include <gtest/gtest.h>

#include <atomic>
#include <optional>
#include <string>
#include <thread>
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

TEST(NotificationCenterTest, ReleasingTheHandleRemovesTheObserverEvenAfterTheCenterIsGone) {
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

  ObserverHandle outliving;
  {
    NotificationCenter gone;
    outliving = gone.addObserver("A", [](const Notification&) {});
  }
  outliving.reset();  // must not touch the destroyed centre
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

TEST(NotificationCenterTest, ObserversComeAndGoWhileOtherThreadsPost) {
  NotificationCenter center;
  constexpr int kThreads = 4;
  constexpr int kPosts = 200;
  std::atomic<int> delivered = 0;
  auto counter = center.addObserver("A", [&](const Notification&) { ++delivered; });
  // Outlives the threads: an observer removed while another thread posts may still be called.
  std::vector<std::atomic<int>> seenByOwn(kThreads);
  std::vector<std::thread> threads;
  for (int t = 0; t < kThreads; ++t) {
    threads.emplace_back([&, t] {
      ObserverHandle own =
          center.addObserver("A", [&seenByOwn, t](const Notification&) { ++seenByOwn[t]; });
      for (int i = 0; i < kPosts; ++i) {
        const ObserverHandle passing = center.addObserver("B", [](const Notification&) {});
        center.post("A", i);
      }
      own.reset();
    });
  }
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(delivered.load(), kThreads * kPosts);
  for (int t = 0; t < kThreads; ++t) EXPECT_GE(seenByOwn[t].load(), kPosts) << "thread " << t;
}

}  // namespace
}  // namespace qm
