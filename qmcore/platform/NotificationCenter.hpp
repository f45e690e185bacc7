// Named notifications, the stand-in for the phone platform's `NSNotificationCenter`.
//
// Observers register a callback for a notification name and get a handle; releasing the
// handle removes the observer. `post` calls every observer of the name synchronously on the
// posting thread, in the order they were added, before it returns.
//
//   auto handle = qm::NotificationCenter::defaultCenter().addObserver(
//       "QMUnitsChanged", [](const qm::Notification& n) { redraw(); });
//   qm::NotificationCenter::defaultCenter().post("QMUnitsChanged");
//
// Thread-safe: observers may be added, removed and notified from any thread. An observer may
// remove itself or others while being called; one removed while a post runs on another thread
// may still receive that post.

#ifndef QMCORE_PLATFORM_NOTIFICATIONCENTER_HPP_
#define QMCORE_PLATFORM_NOTIFICATIONCENTER_HPP_

#include <any>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

namespace qm {

struct Notification {
  std::string name;
  // What the poster passes along: a pointer to the posting object, a number, or nothing.
  std::any object;
};

class NotificationCenter;

// Keeps an observer registered for as long as it lives. Movable, not copyable.
class ObserverHandle {
 public:
  ObserverHandle() = default;
  ObserverHandle(ObserverHandle&&) noexcept = default;
  ObserverHandle& operator=(ObserverHandle&& other) noexcept;
  ObserverHandle(const ObserverHandle&) = delete;
  ObserverHandle& operator=(const ObserverHandle&) = delete;
  ~ObserverHandle();

  // Removes the observer now; the handle becomes empty.
  void reset();

 private:
  friend class NotificationCenter;
  struct Registration;
  explicit ObserverHandle(std::shared_ptr<Registration> registration);
  std::shared_ptr<Registration> registration_;
};

class NotificationCenter {
 public:
  using Observer = std::function<void(const Notification&)>;

  NotificationCenter();
  ~NotificationCenter();
  NotificationCenter(const NotificationCenter&) = delete;
  NotificationCenter& operator=(const NotificationCenter&) = delete;

  // The process-wide centre.
  static NotificationCenter& defaultCenter();

  // Calls `observer` for every notification named `name` until the handle is released.
  // The handle may outlive the centre.
  [[nodiscard]] ObserverHandle addObserver(std::string name, Observer observer);

  // Calls the observers of `name` with a notification carrying `object`.
  void post(std::string_view name, std::any object = {}) const;

  struct State;  // opaque: the observers, shared with the handles

 private:
  std::shared_ptr<State> state_;
};

}  // namespace qm

#endif  // QMCORE_PLATFORM_NOTIFICATIONCENTER_HPP_
