// A measured value as two texts, the number and its unit, kept apart so that a screen can draw
// them in different fonts ("1.25" large, "km" small).
//
//   const qm::QMUIValueWithUnit texts = provider.uiTextsForDistance(1250.0);
//   texts.uiValue;   // "1.25"
//   texts.unitText;  // "km"

#ifndef QMCORE_FORMATTING_QMUIVALUEWITHUNIT_HPP_
#define QMCORE_FORMATTING_QMUIVALUEWITHUNIT_HPP_

#include <string>

namespace qm {

struct QMUIValueWithUnit {
  // The number as text, without unit.
  std::string uiValue;
  // The unit's abbreviation.
  std::string unitText;

  bool operator==(const QMUIValueWithUnit&) const = default;
};

}  // namespace qm

#endif  // QMCORE_FORMATTING_QMUIVALUEWITHUNIT_HPP_
