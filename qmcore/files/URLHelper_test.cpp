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
      {"myapp://open?id=7", "ID", std::nullopt},    {"myapp://open?ids=7", "id", std::nullopt},
      {"myapp://open", "id", std::nullopt},         {"myapp://open?", "id", std::nullopt},
      {"myapp://open?id&id=2", "id", std::nullopt},  // the first one has no value
      {"myapp://open?id=&id=2", "id", ""},          {"myapp://open?q=a%20b%26c&x", "q", "a b&c"},
      {"myapp://open?na%6De=v", "name", "v"},       {"myapp://open?=v", "", "v"},
  };
  for (const auto& c : cases) {
    const auto components = URLComponents::fromString(c.url);
    ASSERT_TRUE(components.has_value()) << c.url;
    EXPECT_EQ(URLHelper::valueOf(c.name, *components), c.value) << c.url << " " << c.name;
  }
}

}  // namespace
}  // namespace qm
