// Place history records are read back from JSON that may be damaged or written by another
// version: decoding must either fail with nlohmann::json's exception or give a record that
// encodes and decodes to itself. Never a crash.

#include <nlohmann/json.hpp>

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string_view>

#include "qmcore/geo/QMPlacemarkHistoryItem.hpp"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view text(reinterpret_cast<const char*>(data), size);
  const nlohmann::json document = nlohmann::json::parse(text, nullptr, false);
  if (document.is_discarded()) return 0;
  qm::QMPlacemarkHistoryItem item;
  try {
    item = document.get<qm::QMPlacemarkHistoryItem>();
  } catch (const nlohmann::json::exception&) {
    return 0;
  }
  const std::string encoded = nlohmann::json(item).dump();
  const auto again = nlohmann::json::parse(encoded).get<qm::QMPlacemarkHistoryItem>();
  if (!(again == item)) {
    std::fprintf(stderr, "a decoded record changes on a round trip: %s\n", encoded.c_str());
    std::abort();
  }
  return 0;
}
