#include "qmcore/platform/SerialQueue.hpp"
#include "qmcore/platform/NotificationCenter.hpp"

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <future>
#include <memory>
#include <numeric>
#include <optional>
#include <string>
#include <thread>
#include <vector>

namespace qm {
namespace {

TEST(SerialQueueTest, RunsTasksOneAtATimeInEachSubmittersOrder) {
  constexpr int kThreads = 4;
  constexpr int kTasks = 2000;
  std::vector<std::vector<int>> seen(kThreads);  // touched only by the worker
  std::atomic<int> inside = 0;
  std::atomic<bool> overlapped = false;
  SerialQueue queue;
  std::vector<std::thread> threads;
  for (int t = 0; t < kThreads; ++t) {
    threads.emplace_back([&, t] {
      for (int i = 0; i < kTasks; ++i) {
        queue.async([&, t, i] {
          if (inside.fetch_add(1) != 0 || !queue.isCurrent()) overlapped = true;
          if (i % 397 == 0) std::this_thread::sleep_for(std::chrono::microseconds(200));
          seen[t].push_back(i);
          inside.fetch_sub(1);
        });
      }
    });
  }
  for (std::thread& thread : threads) thread.join();
  queue.waitUntilAllOperationsAreFinished();
  std::vector<int> inOrder(kTasks);
  std::iota(inOrder.begin(), inOrder.end(), 0);
  for (int t = 0; t < kThreads; ++t) EXPECT_TRUE(seen[t] == inOrder) << "thread " << t;
  EXPECT_FALSE(overlapped);
  EXPECT_EQ(queue.operationCount(), 0u);
  EXPECT_FALSE(queue.isCurrent());
}

// A task that queues another (a rotation queuing its reset) is waited for, and the follow-up
// runs after what was already queued.
TEST(SerialQueueTest, WaitCoversTasksQueuedByTasks) {
  std::vector<char> order;
  SerialQueue queue;
  std::promise<void> bQueued;
  queue.async([&, queued = bQueued.get_future().share()] {
    queued.wait();
    order.push_back('a');
    queue.async([&] {
      std::this_thread::sleep_for(std::chrono::milliseconds(20));
      order.push_back('c');
    });
  });
  queue.async([&] { order.push_back('b'); });
  bQueued.set_value();
  queue.waitUntilAllOperationsAreFinished();
  EXPECT_EQ(std::string(order.begin(), order.end()), "abc");
}

TEST(SerialQueueTest, DestructorFinishesWhatWasQueued) {
  auto count = std::make_shared<std::atomic<int>>(0);
  {
    SerialQueue queue;
    queue.async([] { std::this_thread::sleep_for(std::chrono::milliseconds(30)); });
    for (int i = 0; i < 100; ++i) queue.async([count] { count->fetch_add(1); });
    queue.async([&queue, count] { queue.async([count] { count->fetch_add(1000); }); });
  }
  EXPECT_EQ(count->load(), 1100);
}

TEST(SerialQueueDeathTest, WaitingFromItsOwnTaskStopsTheProgram) {
  GTEST_FLAG_SET(death_test_style, "threadsafe");
  EXPECT_DEATH(
      {
        SerialQueue queue;
        queue.async([&] { queue.waitUntilAllOperationsAreFinished(); });
        queue.waitUntilAllOperationsAreFinished();
      },
      "waiting for the queue from one of its own tasks");
}

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

TEST(NotificationCenterTest, ReleasedHandleRemovesItsObserverEvenMidDeliveryOrAfterTheCenter) {
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

  // An observer may remove another during a delivery, which then skips it.
  std::optional<ObserverHandle> second;
  auto first = center.addObserver("B", [&](const Notification&) { second.reset(); });
  second.emplace(center.addObserver("B", [&](const Notification&) { ++count; }));
  center.post("B");
  EXPECT_EQ(count, 2);
}

TEST(NotificationCenterTest, ObserversComeAndGoWhileOtherThreadsPost) {
  NotificationCenter center;
  constexpr int kThreads = 4;
  constexpr int kPosts = 200;
  std::atomic<int> delivered = 0;
  auto counter = center.addObserver("A", [&](const Notification&) { ++delivered; });
  std::vector<std::thread> threads;
  for (int t = 0; t < kThreads; ++t) {
    threads.emplace_back([&] {
      for (int i = 0; i < kPosts; ++i) {
        const ObserverHandle passing = center.addObserver("A", [](const Notification&) {});
        center.post("A", i);
      }
    });
  }
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(delivered.load(), kThreads * kPosts);
}

}  // namespace
}  // namespace qm
