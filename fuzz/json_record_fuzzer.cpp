// JSON texts decoded into records, as stored sequences and app records arrive: decoding must
// never crash and must give a record or an error; a record must encode again and decode to
// itself.

#include <cstdint>
#include <cstdlib>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "qmcore/persistence/AutoIncrementSequence.hpp"
#include "qmcore/persistence/DecodableDefault.hpp"
#include "qmcore/persistence/JsonHelper.hpp"
#include "qmcore/persistence/NullCodable.hpp"

namespace fuzz_json {

struct Note {
  qm::NullCodable<std::string> title;
  qm::DecodableDefault::Zero views;
  qm::DecodableDefault::EmptyList<std::vector<std::int64_t>> tags;
  qm::DecodableDefault::EmptyMap<std::map<std::string, std::string>> extra;
  bool operator==(const Note&) const = default;
};
void to_json(nlohmann::json& j, const Note& n) {
  j = {{"title", n.title}, {"views", n.views}, {"tags", n.tags}, {"extra", n.extra}};
}
void from_json(const nlohmann::json& j, Note& n) {
  qm::decodeField(j, "title", n.title);
  qm::decodeField(j, "views", n.views);
  qm::decodeField(j, "tags", n.tags);
  qm::decodeField(j, "extra", n.extra);
}

}  // namespace fuzz_json

template <>
struct qm::JsonTypeName<fuzz_json::Note> {
  static constexpr std::string_view value = "Note";
};

namespace {

template <typename T>
void check(std::string_view text) {
  const auto result = qm::JsonHelper::objectResultFromJsonString<T>(text);
  if (!result) std::abort();
  if (result->index() == 1) {
    if (std::get<1>(*result).localizedDescription().empty()) std::abort();
    return;
  }
  const T& record = std::get<0>(*result);
  const std::optional<std::string> again = qm::JsonHelper::jsonStringFromObject(record);
  if (!again) return;  // strings that are not UTF-8 do not encode
  const std::optional<T> back = qm::JsonHelper::objectFromJsonString<T>(*again);
  if (!back) std::abort();
  if (qm::JsonHelper::jsonStringFromObject(*back) != again) std::abort();
  (void)qm::JsonHelper::objectFromJsonStringWithIsoDates<T>(text);
  (void)qm::JsonHelper::convertToDictionary(text);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view text(reinterpret_cast<const char*>(data), size);
  check<qm::AutoIncrementSequence>(text);
  check<fuzz_json::Note>(text);
  return 0;
}
