// The base class of every unit of measure, the exported constants the unit catalogs share, and
// the helper that tells an identifier constant from a copy of its text.
//
// A unit carries its persistent identifier (`uuid`, e.g. ".length-foot"), its English name and
// abbreviation (also the keys of the library's string table), one factor to the SI base of its
// kind (value in SI = value x `ratioToMeter`), the decimals it is shown with and a ready number
// formatter, and the data for automatic switching to a bigger unit. Units are made by the
// static factories of the subclasses (`QMLengthUnit::footUnit()`, ...), each call a new object;
// they are immutable afterwards and may be shared between threads.
//
//   auto foot = qm::QMLengthUnit::footUnit();
//   foot->stringForValue(12.0);                        // "12 ft"
//   qm::QMConvertUnitValue(*foot, *qm::QMLengthUnit::meterUnit(), 1.0);  // 0.30479999
//
// Two units are "the same" when their `uuid`s are; there is no operator==. Some rules compare
// a `uuid` with an identifier constant by identity (`isSameConstant`), so that only the constant
// itself, not a string holding the same text, is recognised.

#ifndef QMCORE_UNITS_QMUNIT_HPP_
#define QMCORE_UNITS_QMUNIT_HPP_

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "qmcore/platform/NumberFormatter.hpp"
#include "qmcore/units/QMUnitTypes.hpp"

namespace qm {

// The switch value meaning "never switch to the bigger unit".
inline constexpr std::int64_t QMUnitShouldNotSwitchAutomatically = -1;
inline constexpr double kFeetPerMeter = 3.28084;

// Identifiers of measured subjects, recognised by identity in
// `QMUnit::localizedSubjectNameForSubjectUuid`.
extern const std::string_view QMTimeSubjectUuid;      // "1_Time"
extern const std::string_view QMDistanceSubjectUuid;  // "2_Distance"
extern const std::string_view QMSpeedSubjectUuid;     // "3_Speed"
extern const std::string_view QMAltitudeSubjectUuid;  // "4_Altitude"

extern const std::string_view QMMeterAbbreviation;  // "m"
extern const std::string_view QMFeetAbbreviation;   // "ft"

// True when `a` and `b` are the same constant: the same characters at the same address. A
// std::string holding the text of a constant is not the constant.
constexpr bool isSameConstant(std::string_view a, std::string_view b) {
  return a.data() == b.data() && a.size() == b.size();
}

class QMUnit {
 public:
  // A unit with `numberOfDecimalPlaces` decimals and a matching formatter; everything else is
  // empty: no uuid, name or abbreviation (empty views with a null data pointer), factor 0, no
  // switch unit, switch value 0, metric, subject 0 (speed).
  QMUnit() : QMUnit(0) {}
  explicit QMUnit(int numberOfDecimalPlaces);
  virtual ~QMUnit() = default;

  // Units are shared through pointers; a copy would slice subclasses.
  QMUnit(const QMUnit&) = delete;
  QMUnit& operator=(const QMUnit&) = delete;

  // A formatter with exactly `n` fraction digits, "." as decimal separator in every locale and
  // no grouping. Negative `n` counts as 0.
  static NumberFormatter formatterWithNumberOfDecimalPlaces(int n);

  // Whether automatic switching to `canSwitchToUnit` is on when the user has stored nothing.
  bool switchToBiggerUnitByDefault() const { return switchToBiggerUnitByDefault_; }
  // Marks the principal units of the distance kind; nothing branches on it.
  bool base() const { return base_; }
  // For factory-made units these views point at the identifier constants, so they can be
  // compared with `isSameConstant`. The name and abbreviation are keys of the string table.
  std::string_view uuid() const { return uuid_; }
  std::string_view name() const { return name_; }
  std::string_view abbreviation() const { return abbreviation_; }
  // One of this unit in the SI base of its kind (see each catalog for the base).
  double ratioToMeter() const { return ratioToMeter_; }
  int numberOfDecimalPlaces() const { return numberOfDecimalPlaces_; }
  const NumberFormatter& formatter() const { return formatter_; }
  // The bigger unit values of this unit switch to, or null.
  const std::shared_ptr<const QMUnit>& canSwitchToUnit() const { return canSwitchToUnit_; }
  // The built-in switch threshold in this unit; 0 when unset.
  std::int64_t unitSwitchesAtValue() const { return unitSwitchesAtValue_; }
  DistanceUnitType unitType() const { return unitType_; }
  virtual QMMeasurementSubject subject() const { return QMMeasurementSubject::kSpeed; }

  // "name (uuid), abbreviation m*factor" with the factor printed by %f; "(null)" for absent
  // texts. `description` is the same text.
  std::string debugDescription() const;
  std::string description() const { return debugDescription(); }
  // "1 <abbreviation> = <factor, 6 decimals> m"; subclasses give their own texts.
  virtual std::string uiDescription() const;
  // The value by the unit's formatter, a blank and the localised abbreviation: "12 ft".
  virtual std::string stringForValue(double value) const;
  // The same with no decimals.
  virtual std::string stringForIntegerValue(std::int64_t value) const;
  // A text describing the switch at `value`; none here, a hook for subclasses.
  virtual std::optional<std::string> automaticSwitchDescriptionForValue(std::int64_t value) const;

  // The name and abbreviation in the current locale; the English text when untranslated.
  virtual std::string localizedName() const;
  std::string localizedAbbreviation() const;

  // The subject name for one of the four subject identifier constants (by identity: a string
  // holding the same text gives "---"), else "---".
  static std::string localizedSubjectNameForSubjectUuid(std::string_view subjectUuid);
  // The subject name for speed, distance, time and heading; "---" for every other subject,
  // altitude included (unlike the identifier variant).
  static std::string localizedSubjectNameForSubject(QMMeasurementSubject subject);

 protected:
  // What a catalog factory fills in; the rest keeps the constructor's defaults.
  struct Definition {
    std::string_view uuid;
    std::string_view name;
    std::string_view abbreviation;
    double ratioToMeter = 0.0;
    int numberOfDecimalPlaces = 0;
    DistanceUnitType unitType = DistanceUnitType::kMetric;
    std::shared_ptr<const QMUnit> canSwitchToUnit = nullptr;
    std::int64_t unitSwitchesAtValue = 0;
    bool switchToBiggerUnitByDefault = false;
    bool base = false;
  };

  // Called once by a factory on a new unit, before it is shared.
  void define(const Definition& definition);
  // What `define` was given.
  Definition definition() const;

  // "1 <this abbreviation> = <factor with `decimals` decimals> <target abbreviation>", the
  // shape of every unit's description.
  std::string equivalenceText(double factor, int decimals,
                              std::string_view targetAbbreviation) const;

 private:
  bool switchToBiggerUnitByDefault_ = false;
  bool base_ = false;
  std::string_view uuid_;
  std::string_view name_;
  std::string_view abbreviation_;
  double ratioToMeter_ = 0.0;
  int numberOfDecimalPlaces_ = 0;
  std::shared_ptr<const QMUnit> canSwitchToUnit_;
  std::int64_t unitSwitchesAtValue_ = 0;
  DistanceUnitType unitType_ = DistanceUnitType::kMetric;
  NumberFormatter formatter_;
};

}  // namespace qm

#endif  // QMCORE_UNITS_QMUNIT_HPP_
