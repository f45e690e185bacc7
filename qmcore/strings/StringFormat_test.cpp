#include "qmcore/strings/StringFormat.hpp"

#include <gtest/gtest.h>

namespace qm {
namespace {

TEST(StringFormatTest, FillsPlaceholders) {
  const struct {
    std::string_view format;
    std::initializer_list<std::string_view> arguments;
    std::string_view expected;
  } cases[] = {
      {"%2$@, %1$@", {"a", "b"}, "b, a"},  // reordered by a translation
      {"%@%%", {"50"}, "50%"},
      {"%@ and %@", {"only"}, "only and "},  // missing arguments become empty
      {"100% %d %1$d %", {"x"}, "100% %d %1$d %"},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(formatLocalized(c.format, c.arguments), c.expected) << c.format;
  }
}

}  // namespace
}  // namespace qm
