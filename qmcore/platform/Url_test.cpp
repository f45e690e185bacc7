#include "qmcore/platform/Url.hpp"

#include <gtest/gtest.h>

namespace qm {
namespace {

using Items = std::vector<URLQueryItem>;

TEST(UrlTest, QueryItemsAreSplitAndDecoded) {
  const struct {
    const char* url;
    std::optional<Items> items;
  } cases[] = {
      {"https://example.org/d", std::nullopt},
      {"https://example.org/d?", Items{}},
      {"https://example.org/d?a=1&b=2", Items{{"a", "1"}, {"b", "2"}}},
      {"https://example.org/d?a", Items{{"a", std::nullopt}}},
      {"https://example.org/d?a=", Items{{"a", ""}}},
      {"https://example.org/d?a=b=c", Items{{"a", "b=c"}}},
      {"https://example.org/d?a=1&&b", Items{{"a", "1"}, {"", std::nullopt}, {"b", std::nullopt}}},
      {"https://example.org/d?m%26d=x%2By+z%3D", Items{{"m&d", "x+y+z="}}},
      {"https://example.org/d?bad=%zz%4", Items{{"bad", "%zz%4"}}},
      {"https://example.org/d?a=1#frag", Items{{"a", "1"}}},
      {"myapp://open/x?id=7", Items{{"id", "7"}}},
  };
  for (const auto& c : cases) {
    const auto components = URLComponents::fromString(c.url);
    ASSERT_TRUE(components.has_value()) << c.url;
    EXPECT_EQ(components->queryItems(), c.items) << c.url;
  }
}

TEST(UrlTest, TextsThatAreNoUrlGiveNothing) {
  for (const char* text : {"", "no url", "http://", "://x", "http://exa mple.org/"}) {
    EXPECT_FALSE(URLComponents::fromString(text).has_value()) << text;
  }
  EXPECT_FALSE(URLComponents::fromString(std::string_view("http://a/\0b", 11)).has_value());
}

TEST(UrlTest, PartsOfAUrl) {
  const auto components = URLComponents::fromString("https://example.org:8443/a/b.zip?x=1");
  ASSERT_TRUE(components.has_value());
  EXPECT_EQ(components->scheme(), "https");
  EXPECT_EQ(components->host(), "example.org");
  EXPECT_EQ(components->path(), "/a/b.zip");
  EXPECT_EQ(components->percentEncodedQuery(), "x=1");
}

}  // namespace
}  // namespace qm
