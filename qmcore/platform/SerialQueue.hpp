// A queue that runs tasks one at a time, in the order they were submitted, on a worker thread
// of its own: the stand-in for an operation queue limited to one concurrent operation.
//
//   qm::SerialQueue queue;
//   queue.async([] { appendToFile(); });       // returns at once
//   queue.waitUntilAllOperationsAreFinished(); // the append has run
//
// Tasks may submit further tasks to the same queue (they run after everything already queued).
// A task must not throw; an exception escaping a task ends the program, as on any thread.
// Destroying the queue runs what was queued before it returns; tasks submitted by those tasks
// run too.
//
// Thread-safety: `async` and `waitUntilAllOperationsAreFinished` may be called from any thread,
// except that waiting from inside one of the queue's own tasks would never return and is a
// fatal error.

#ifndef QMCORE_PLATFORM_SERIALQUEUE_HPP_
#define QMCORE_PLATFORM_SERIALQUEUE_HPP_

#include <condition_variable>
#include <cstddef>
#include <deque>
#include <functional>
#include <mutex>
#include <thread>

namespace qm {

class SerialQueue {
 public:
  using Task = std::function<void()>;

  // Starts the worker thread.
  SerialQueue();
  // Runs everything queued, then stops the worker.
  ~SerialQueue();
  SerialQueue(const SerialQueue&) = delete;
  SerialQueue& operator=(const SerialQueue&) = delete;

  // Queues `task` behind every task submitted before it.
  void async(Task task);

  // Blocks until the queue is empty and no task is running, including tasks submitted while
  // waiting.
  void waitUntilAllOperationsAreFinished();

  // Tasks queued or running at this moment.
  std::size_t operationCount() const;

  // True on the queue's worker thread (inside one of its tasks).
  bool isCurrent() const { return std::this_thread::get_id() == workerId_; }

 private:
  void run();

  mutable std::mutex mutex_;
  std::condition_variable work_;  // a task was queued, or the queue is stopping
  std::condition_variable idle_;  // the queue became empty with no task running
  std::deque<Task> tasks_;
  bool running_ = false;   // a task is being run (outside the lock)
  bool sleeping_ = false;  // the worker waits on `work_`: only then does `async` wake it
  bool stopping_ = false;
  std::thread::id workerId_;
  std::thread worker_;  // last: started once the members above exist
};

}  // namespace qm

#endif  // QMCORE_PLATFORM_SERIALQUEUE_HPP_
