// The library's resource settings that live in the standard settings store.

#ifndef QMCORE_PERSISTENCE_QMCORERESOURCE_HPP_
#define QMCORE_PERSISTENCE_QMCORERESOURCE_HPP_

#include "qmcore/persistence/UserDefaultsBacked.hpp"
#include "qmcore/platform/Env.hpp"

namespace qm {

class QMCoreResource {
 public:
  static constexpr std::string_view kDayButtonColorIndexKey = "QMCoreResourceDayButtonColorIndex";

  explicit QMCoreResource(Env& env)
      : dayButtonColorIndex(0, std::string(kDayButtonColorIndexKey), UserDefaults::standard(env)) {}

  // Which of the day button colours the user picked; 0 until one is stored.
  UserDefaultsBackedInt dayButtonColorIndex;
};

}  // namespace qm

#endif  // QMCORE_PERSISTENCE_QMCORERESOURCE_HPP_
