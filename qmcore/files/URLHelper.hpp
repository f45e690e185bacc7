// Reading one parameter from a URL's query.
//
//   auto components = qm::URLComponents::fromString("myapp://open?id=7&id=8");
//   qm::URLHelper::valueOf("id", *components);   // "7": the first item of that name
//   qm::URLHelper::valueOf("ID", *components);   // nothing: names are case-sensitive

#ifndef QMCORE_FILES_URLHELPER_HPP_
#define QMCORE_FILES_URLHELPER_HPP_

#include <optional>
#include <string>
#include <string_view>

#include "qmcore/platform/Url.hpp"

namespace qm {

class URLHelper {
 public:
  // The decoded value of the first query item named exactly `name`; nothing when the URL has
  // no query items, none of that name, or the first one has no value ("?id").
  static std::optional<std::string> valueOf(std::string_view name, const URLComponents& components);

  URLHelper() = delete;
};

}  // namespace qm

#endif  // QMCORE_FILES_URLHELPER_HPP_
