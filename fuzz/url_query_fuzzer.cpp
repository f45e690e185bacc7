// URL texts and query texts from outside: parsing never crashes, a query of n "&" has n + 1
// items, and the value URLHelper finds for the first item's name is that item's value.

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string_view>

#include "qmcore/files/URLHelper.hpp"
#include "qmcore/platform/Url.hpp"

namespace {

[[noreturn]] void fail(const char* what, std::string_view text) {
  std::fprintf(stderr, "%s for \"%.*s\"\n", what, static_cast<int>(text.size()), text.data());
  std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view text(reinterpret_cast<const char*>(data), size);

  const auto items = qm::parseQueryItems(text);
  const auto separators = static_cast<std::size_t>(std::count(text.begin(), text.end(), '&'));
  if (text.empty() ? !items.empty() : items.size() != separators + 1) {
    fail("wrong number of query items", text);
  }
  if (qm::percentDecode(text).size() > text.size()) fail("decoding grew the text", text);

  const auto components = qm::URLComponents::fromString(text);
  if (!components.has_value()) return 0;
  const auto parsed = components->queryItems();
  if (!parsed.has_value() || parsed->empty()) return 0;
  const auto value = qm::URLHelper::valueOf(parsed->front().name, *components);
  if (value != parsed->front().value) fail("valueOf differs from the first item", text);
  return 0;
}
