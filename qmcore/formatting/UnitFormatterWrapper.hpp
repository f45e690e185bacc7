// A process-wide hook for speed and distance texts.
//
// Shared code of the library needs speed and distance texts but cannot know which app, and
// which unit settings, it runs in. The app installs its formatters once at start; until it
// does, fallbacks answer with the bare number, rounded to a whole ("%.0f" of the raw input: no
// conversion, no unit).
//
//   auto& hook = qm::UnitFormatterWrapper::shared();
//   hook.autoDecimalTextForMSSpeed(12.7);  // "13" (fallback)
//   hook.assignSpeedFormatterDelegate(
//       std::make_shared<qm::UnitsProviderSpeedFormatter>(qm::UnitsProvider::sharedInstance()));
//   hook.autoDecimalTextForMSSpeed(12.7);  // the provider's text in the user's speed unit
//
// Thread-safe: formatters may be assigned while other threads ask for texts; a call that has
// begun finishes with the formatter it started with, which stays alive until it returns. The
// formatters themselves are called on the asking thread.

#ifndef QMCORE_FORMATTING_UNITFORMATTERWRAPPER_HPP_
#define QMCORE_FORMATTING_UNITFORMATTERWRAPPER_HPP_

#include <memory>
#include <mutex>
#include <optional>
#include <string>

namespace qm {

class UnitsProvider;

// Writes speeds for the hook.
class SpeedFormatterDelegate {
 public:
  virtual ~SpeedFormatterDelegate() = default;
  // The text of `speed` in metres per second, or nothing (which the hook shows as "").
  virtual std::optional<std::string> autoDecimalTextForMSSpeed(double speed) = 0;
};

// Writes distances for the hook.
class DistanceFormatterDelegate {
 public:
  virtual ~DistanceFormatterDelegate() = default;
  // The long, spoken-style text of `distance` in metres.
  virtual std::string longTextWithLongUnitTypeForDistance(double distance) = 0;
};

// A units provider as the speed formatter: answers with its `autoDecimalTextForMSSpeed` (the
// speed in the user's unit and its spoken name). The provider must outlive the formatter (the
// shared provider always does) and, not being thread-safe, is asked on the asking thread: ask
// for speed texts from the thread that uses the provider.
class UnitsProviderSpeedFormatter final : public SpeedFormatterDelegate {
 public:
  explicit UnitsProviderSpeedFormatter(const UnitsProvider& provider) : provider_(provider) {}
  std::optional<std::string> autoDecimalTextForMSSpeed(double speed) override;

 private:
  const UnitsProvider& provider_;
};

class UnitFormatterWrapper {
 public:
  // The process-wide hook, made on first use with the fallback formatters.
  static UnitFormatterWrapper& shared();

  // A hook with the fallback formatters.
  UnitFormatterWrapper();
  UnitFormatterWrapper(const UnitFormatterWrapper&) = delete;
  UnitFormatterWrapper& operator=(const UnitFormatterWrapper&) = delete;

  // Replace the formatter; the hook keeps the new one alive and lets go of the previous one.
  // An empty pointer puts the fallback back.
  void assignSpeedFormatterDelegate(std::shared_ptr<SpeedFormatterDelegate> delegate);
  void assignDistanceFormatterDelegate(std::shared_ptr<DistanceFormatterDelegate> delegate);

  // The formatters in use (the fallbacks until others are assigned). Never null.
  std::shared_ptr<SpeedFormatterDelegate> speedFormatterDelegate() const;
  std::shared_ptr<DistanceFormatterDelegate> distanceFormatterDelegate() const;

  // The speed formatter's text of `speed` (metres per second); "" when it has none.
  std::string autoDecimalTextForMSSpeed(double speed) const;
  // The distance formatter's text of `distance` (metres).
  std::string longTextWithLongUnitTypeForDistance(double distance) const;

 private:
  mutable std::mutex mutex_;
  std::shared_ptr<SpeedFormatterDelegate> speedFormatterDelegate_;
  std::shared_ptr<DistanceFormatterDelegate> distanceFormatterDelegate_;
};

}  // namespace qm

#endif  // QMCORE_FORMATTING_UNITFORMATTERWRAPPER_HPP_
