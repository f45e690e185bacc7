// The placeholder reader compares translators' texts with the English ones, and the locale
// part of a lookup comes from the environment or a command line. Neither may crash, and the
// placeholders of a text are sorted, each "%<argument>$<conversion>" with a "%" of the text
// behind it; a lookup answers from a table or with its key.

#include <fuzzer/FuzzedDataProvider.h>

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>

#include "qmcore/strings/CoreStrings.hpp"
#include "qmcore/strings/StringCatalog.hpp"

namespace {

[[noreturn]] void fail(const char* what, std::string_view text) {
  std::fprintf(stderr, "%s: \"%.*s\"\n", what, static_cast<int>(text.size()), text.data());
  std::abort();
}

bool wellFormed(std::string_view placeholder) {
  const size_t dollar = placeholder.find('$');
  return placeholder.size() >= 4 && placeholder.front() == '%' && placeholder[1] >= '1' &&
         placeholder[1] <= '9' && dollar != std::string_view::npos &&
         dollar + 2 == placeholder.size() &&
         std::all_of(placeholder.begin() + 1, placeholder.begin() + static_cast<long>(dollar),
                     [](char c) { return c >= '0' && c <= '9'; });
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  FuzzedDataProvider provider(data, size);
  const std::string locale = provider.ConsumeRandomLengthString(32);
  const std::string text = provider.ConsumeRemainingBytesAsString();

  const auto placeholders = qm::StringCatalog::placeholders(text);
  if (!std::is_sorted(placeholders.begin(), placeholders.end())) fail("unsorted", text);
  if (placeholders.size() > static_cast<size_t>(std::count(text.begin(), text.end(), '%'))) {
    fail("more placeholders than percent signs", text);
  }
  for (const std::string& placeholder : placeholders) {
    if (!wellFormed(placeholder)) fail("malformed placeholder", placeholder);
  }

  const std::string_view language = qm::StringCatalog::tableLanguage(locale);
  const auto languages = qm::StringCatalog::languages();
  if (std::find(languages.begin(), languages.end(), language) == languages.end()) {
    fail("no table for the locale", locale);
  }
  const std::string looked = qm::CoreStrings::CLSTRING(text, locale);
  if (looked != text && !qm::StringCatalog::text(text, language)) fail("text from nowhere", text);
  return 0;
}
