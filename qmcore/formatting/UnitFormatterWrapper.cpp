#include "qmcore/formatting/UnitFormatterWrapper.hpp"

#include <utility>

#include "qmcore/platform/InvariantFormat.hpp"
#include "qmcore/provider/UnitsProvider.hpp"

namespace qm {
namespace {

// The answers until the app installs its own formatters: the raw number, rounded to a whole.
class FallbackSpeedFormatter final : public SpeedFormatterDelegate {
 public:
  std::optional<std::string> autoDecimalTextForMSSpeed(double speed) override {
    return invariantFormat("%.0f", speed);
  }
};

class FallbackDistanceFormatter final : public DistanceFormatterDelegate {
 public:
  std::string longTextWithLongUnitTypeForDistance(double distance) override {
    return invariantFormat("%.0f", distance);
  }
};

}  // namespace

std::optional<std::string> UnitsProviderSpeedFormatter::autoDecimalTextForMSSpeed(double speed) {
  return provider_.autoDecimalTextForMSSpeed(speed);
}

UnitFormatterWrapper& UnitFormatterWrapper::shared() {
  static UnitFormatterWrapper instance;
  return instance;
}

UnitFormatterWrapper::UnitFormatterWrapper()
    : speedFormatterDelegate_(std::make_shared<FallbackSpeedFormatter>()),
      distanceFormatterDelegate_(std::make_shared<FallbackDistanceFormatter>()) {}

void UnitFormatterWrapper::assignSpeedFormatterDelegate(
    std::shared_ptr<SpeedFormatterDelegate> delegate) {
  if (!delegate) delegate = std::make_shared<FallbackSpeedFormatter>();
  const std::lock_guard lock(mutex_);
  // The previous formatter is released after the lock, in `delegate`'s destructor.
  std::swap(speedFormatterDelegate_, delegate);
}

void UnitFormatterWrapper::assignDistanceFormatterDelegate(
    std::shared_ptr<DistanceFormatterDelegate> delegate) {
  if (!delegate) delegate = std::make_shared<FallbackDistanceFormatter>();
  const std::lock_guard lock(mutex_);
  std::swap(distanceFormatterDelegate_, delegate);
}

std::shared_ptr<SpeedFormatterDelegate> UnitFormatterWrapper::speedFormatterDelegate() const {
  const std::lock_guard lock(mutex_);
  return speedFormatterDelegate_;
}

std::shared_ptr<DistanceFormatterDelegate> UnitFormatterWrapper::distanceFormatterDelegate() const {
  const std::lock_guard lock(mutex_);
  return distanceFormatterDelegate_;
}

std::string UnitFormatterWrapper::autoDecimalTextForMSSpeed(double speed) const {
  // Called outside the lock: a formatter may itself use the hook or assign another one.
  return speedFormatterDelegate()->autoDecimalTextForMSSpeed(speed).value_or("");
}

std::string UnitFormatterWrapper::longTextWithLongUnitTypeForDistance(double distance) const {
  return distanceFormatterDelegate()->longTextWithLongUnitTypeForDistance(distance);
}

}  // namespace qm
