// A debugging description for records: their JSON text, one line, keys sorted, slashes
// unescaped, dates as ISO 8601 text.
//
//   struct Track : qm::JsonDebugDescriptable<Track> { ... };
//   track.description();  // {"name":"a/b","start":"2001-01-01T00:00:00Z"}
//
// A record that does not encode describes itself as "json error: " and the error.

#ifndef QMCORE_PERSISTENCE_JSONDEBUGDESCRIPTABLE_HPP_
#define QMCORE_PERSISTENCE_JSONDEBUGDESCRIPTABLE_HPP_

#include <exception>
#include <string>

#include "qmcore/persistence/JsonHelper.hpp"

namespace qm {

template <typename Record>
class JsonDebugDescriptable {
 public:
  std::string description() const {
    try {
      return JsonHelper::debugDescriptionJsonEncoder().encode(static_cast<const Record&>(*this));
    } catch (const std::exception& error) {
      return std::string("json error: ") + error.what();
    }
  }
  std::string debugDescription() const { return description(); }
};

}  // namespace qm

#endif  // QMCORE_PERSISTENCE_JSONDEBUGDESCRIPTABLE_HPP_
