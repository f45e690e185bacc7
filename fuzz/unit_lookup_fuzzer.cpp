// Unit names come from users of the tool and from settings: a lookup by identifier or
// abbreviation must never crash, must only find units of the kind asked, and a conversion
// between the two units a lookup finds must come back to the value (within rounding) unless
// one of them is a temperature, whose Celsius-to-Fahrenheit step is rounded on purpose.

#include <fuzzer/FuzzedDataProvider.h>

#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

#include "qmcore/units/UnitKinds.hpp"

namespace {

// Every kind's built-in units, made once: making units is not what is fuzzed.
const std::vector<qm::UnitList>& builtinUnitsByKind() {
  static const std::vector<qm::UnitList> units = [] {
    std::vector<qm::UnitList> lists;
    for (const qm::UnitKind& kind : qm::unitKinds()) lists.push_back(kind.builtinUnits({}));
    return lists;
  }();
  return units;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  FuzzedDataProvider provider(data, size);
  const double value = provider.ConsumeFloatingPointInRange<double>(-1e6, 1e6);
  const std::string from = provider.ConsumeRandomLengthString(24);
  const std::string to = provider.ConsumeRemainingBytesAsString();
  const auto kinds = qm::unitKinds();
  for (std::size_t k = 0; k < kinds.size(); ++k) {
    const qm::UnitKind& kind = kinds[k];
    const qm::UnitList& units = builtinUnitsByKind()[k];
    const qm::UnitList sources = qm::unitsNamed(units, from);
    const qm::UnitList targets = qm::unitsNamed(units, to);
    for (const auto& unit : sources) {
      if (unit->subject() != kind.subject) std::abort();
    }
    if (sources.size() != 1 || targets.size() != 1) continue;
    const double there = qm::convertBetweenUnits(value, *sources[0], *targets[0]);
    const double back = qm::convertBetweenUnits(there, *targets[0], *sources[0]);
    if (kind.subject == qm::QMMeasurementSubject::kTemperature) continue;
    if (std::fabs(back - value) > 1e-9 * std::fmax(1.0, std::fabs(value))) {
      std::fprintf(stderr, "%s -> %s -> %s: %.17g gave %.17g\n", from.c_str(), to.c_str(),
                   from.c_str(), value, back);
      std::abort();
    }
  }
  return 0;
}
