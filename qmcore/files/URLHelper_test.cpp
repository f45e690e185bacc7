#include "qmcore/files/URLHelper.hpp"

#include <gtest/gtest.h>

namespace qm {
namespace {

TEST(URLHelperTest, ValueOfTheFirstItemWithExactlyThatName) {
  const struct {
    const char* url;
    const char* name;
    std::optional<std::string> value;
  } cases[] = {
      {"myapp://open?id=7&id=8", "id", "7"},        {"myapp://open?ID=1&id=2", "id", "2"},
      {"myapp://open?ids=7", "id", std::nullopt},   {"myapp://open", "id", std::nullopt},
      {"myapp://open?", "id", std::nullopt},        {"myapp://open?id=&id=2", "id", ""},
      {"myapp://open?id&id=2", "id", std::nullopt},  // the first one has no value
  };
  for (const auto& c : cases) {
    const auto components = URLComponents::fromString(c.url);
    ASSERT_TRUE(components.has_value()) << c.url;
    EXPECT_EQ(URLHelper::valueOf(c.name, *components), c.value) << c.url << " " << c.name;
  }
}

}  // namespace
}  // namespace qm
