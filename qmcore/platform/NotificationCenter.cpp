#include "qmcore/platform/NotificationCenter.hpp"

#include <algorithm>
#include <mutex>
#include <utility>
#include <vector>

namespace qm {

struct NotificationCenter::State {
  std::mutex mutex;
  std::vector<std::shared_ptr<ObserverHandle::Registration>> registrations;
};

struct ObserverHandle::Registration {
  std::string name;
  NotificationCenter::Observer observer;
  std::weak_ptr<NotificationCenter::State> center;
};

ObserverHandle::ObserverHandle(std::shared_ptr<Registration> registration)
    : registration_(std::move(registration)) {}

ObserverHandle& ObserverHandle::operator=(ObserverHandle&& other) noexcept {
  if (this != &other) {
    reset();
    registration_ = std::move(other.registration_);
  }
  return *this;
}

ObserverHandle::~ObserverHandle() { reset(); }

void ObserverHandle::reset() {
  if (!registration_) return;
  if (const auto center = registration_->center.lock()) {
    const std::lock_guard lock(center->mutex);
    std::erase(center->registrations, registration_);
  }
  registration_.reset();
}

NotificationCenter::NotificationCenter() : state_(std::make_shared<State>()) {}

NotificationCenter::~NotificationCenter() = default;

NotificationCenter& NotificationCenter::defaultCenter() {
  static NotificationCenter center;
  return center;
}

ObserverHandle NotificationCenter::addObserver(std::string name, Observer observer) {
  auto registration = std::make_shared<ObserverHandle::Registration>(
      ObserverHandle::Registration{std::move(name), std::move(observer), state_});
  const std::lock_guard lock(state_->mutex);
  state_->registrations.push_back(registration);
  return ObserverHandle(std::move(registration));
}

void NotificationCenter::post(std::string_view name, std::any object) const {
  // Observers run outside the lock, so that they may add or remove observers themselves.
  std::vector<std::shared_ptr<ObserverHandle::Registration>> matching;
  {
    const std::lock_guard lock(state_->mutex);
    for (const auto& registration : state_->registrations) {
      if (registration->name == name) matching.push_back(registration);
    }
  }
  const Notification notification{std::string(name), std::move(object)};
  for (const auto& registration : matching) {
    {
      // Skip observers removed by an earlier observer of this same post.
      const std::lock_guard lock(state_->mutex);
      if (std::find(state_->registrations.begin(), state_->registrations.end(), registration) ==
          state_->registrations.end()) {
        continue;
      }
    }
    registration->observer(notification);
  }
}

}  // namespace qm
