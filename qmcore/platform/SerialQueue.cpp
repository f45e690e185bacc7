#include "qmcore/platform/SerialQueue.hpp"

#include <utility>

#include "qmcore/platform/Error.hpp"

namespace qm {

SerialQueue::SerialQueue() : worker_([this] { run(); }) {
  // The id is read by `isCurrent` on other threads; publish it under the lock.
  const std::lock_guard lock(mutex_);
  workerId_ = worker_.get_id();
}

SerialQueue::~SerialQueue() {
  {
    const std::lock_guard lock(mutex_);
    stopping_ = true;
  }
  work_.notify_one();
  worker_.join();
}

void SerialQueue::async(Task task) {
  bool wake = false;
  {
    const std::lock_guard lock(mutex_);
    tasks_.push_back(std::move(task));
    // A worker that is busy finds the task when it comes back for the next one; waking it
    // for every task would cost a system call per submission.
    wake = sleeping_;
    sleeping_ = false;
  }
  if (wake) work_.notify_one();
}

void SerialQueue::waitUntilAllOperationsAreFinished() {
  if (isCurrent()) fatalError("SerialQueue: waiting for the queue from one of its own tasks");
  std::unique_lock lock(mutex_);
  idle_.wait(lock, [this] { return tasks_.empty() && !running_; });
}

std::size_t SerialQueue::operationCount() const {
  const std::lock_guard lock(mutex_);
  return tasks_.size() + (running_ ? 1 : 0);
}

void SerialQueue::run() {
  std::unique_lock lock(mutex_);
  for (;;) {
    if (tasks_.empty()) {
      running_ = false;
      idle_.notify_all();
      if (stopping_) return;
      sleeping_ = true;
      work_.wait(lock, [this] { return !tasks_.empty() || stopping_; });
      sleeping_ = false;
      continue;
    }
    Task task = std::move(tasks_.front());
    tasks_.pop_front();
    running_ = true;
    lock.unlock();
    task();
    // Destroy what the task captured before taking the lock again.
    task = nullptr;
    lock.lock();
  }
}

}  // namespace qm
