#include <gtest/gtest.h>

#include <climits>
#include <filesystem>
#include <fstream>
#include <regex>
#include <set>

#include "qmcore/formatting/QMFormatter.hpp"

namespace qm {
namespace {

using OptionalText = std::optional<std::string>;

TEST(QMFormatterTextTest, UrlEncodeKeepsOnlyQueryCharacters) {
  const struct {
    const char* text;
    const char* expected;
  } cases[] = {
      {"a b", "a%20b"},
      {"name=x&y=1/2?z:@", "name=x&y=1/2?z:@"},
      {"-._~!$'()*+,;", "-._~!$'()*+,;"},
      {"#[]%\"<>\\^`{|}", "%23%5B%5D%25%22%3C%3E%5C%5E%60%7B%7C%7D"},
      {"Grüße", "Gr%C3%BC%C3%9Fe"},
      {"\n\t", "%0A%09"},
  };
  for (const auto& c : cases) EXPECT_EQ(QMFormatter::urlEncode(c.text), c.expected) << c.text;
}

TEST(QMFormatterTextTest, UuidsAreRandomVersion4InCanonicalUpperCase) {
  const std::regex canonical("[0-9A-F]{8}-[0-9A-F]{4}-4[0-9A-F]{3}-[89AB][0-9A-F]{3}-[0-9A-F]{12}");
  std::set<std::string> seen;
  for (int i = 0; i < 200; ++i) {
    const std::string uuid = QMFormatter::stringWithUUID();
    EXPECT_TRUE(std::regex_match(uuid, canonical)) << uuid;
    seen.insert(uuid);
  }
  EXPECT_EQ(seen.size(), 200u);
}

TEST(QMFormatterTextTest, BooleansAndParameters) {
  EXPECT_EQ(QMFormatter::stringWithBool(true), "true");
  EXPECT_EQ(QMFormatter::stringWithBool(false), "false");
  for (const char* text : {"True", "yes", "1", " true"}) {
    EXPECT_FALSE(QMFormatter::boolWithString(text)) << text;
  }
  EXPECT_TRUE(QMFormatter::boolWithString("true"));

  const QMFormatter::Parameters parameters = {
      {"on", "yes"},   {"shout", "YES"},       {"n", "42"}, {"neg", " -7x"},
      {"word", "abc"}, {"big", "99999999999"}, {"", "yes"},
  };
  const struct {
    std::optional<std::string_view> key;
    bool flag;
    int number;  // with default 5
  } cases[] = {
      {"on", true, 0},       {"shout", false, 0},      {"n", false, 42},
      {"neg", false, -7},    {"word", false, 0},       {"big", false, INT_MAX},
      {"missing", false, 5}, {std::nullopt, false, 5}, {"", true, 0},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(QMFormatter::boolParameter(c.key, parameters), c.flag) << c.key.value_or("nil");
    EXPECT_EQ(QMFormatter::intParameter(c.key, parameters, 5), c.number) << c.key.value_or("nil");
  }
  EXPECT_FALSE(QMFormatter::boolParameter("on", {}));
  EXPECT_EQ(QMFormatter::intParameter("n", {}, -1), -1);
}

// Texts that may be absent: an absent text stays absent.
TEST(QMFormatterTextTest, TextTransforms) {
  using Transform = OptionalText (*)(std::optional<std::string_view>);
  const Transform trim = &QMFormatter::stringByTrimmingSpaces;
  const Transform unlink = &QMFormatter::stringByRemovingHttpLinksFromString;
  const Transform breaks = &QMFormatter::changeLinebreaksToHtmlBreaks;
  const Transform vertical = &QMFormatter::verticalStringFor2;
  const struct {
    Transform transform;
    std::optional<std::string_view> text;
    OptionalText expected;
  } cases[] = {
      {trim, std::nullopt, std::nullopt},
      {trim, "  a b  ", "a b"},
      {trim, " \ta\n ", "\ta\n"},  // blanks only
      {trim, "   ", ""},
      {unlink, std::nullopt, std::nullopt},
      {unlink, "see https://example.com/a?b=1&c=2 now", "see  now"},
      {unlink, "HTTP://EXAMPLE.COM/X and http://a.b", " and "},  // any case, any number
      {unlink, "end at http://a.com/x.", "end at ."},            // a link does not end on "."
      {unlink, "ftp://example.com stays", "ftp://example.com stays"},
      {unlink, "nohttp://example.com", "nohttp://example.com"},  // not at a word start
      {unlink, "(http://a.b/c)", "()"},
      // Non-ASCII hosts are not in the pattern.
      {unlink, "Grüße http://ä.de x", "Grüße http://ä.de x"},
      {breaks, std::nullopt, std::nullopt},
      {breaks, "a\nb\r\n", "a<br/>b\r<br/>"},
      // User-perceived characters stay together.
      {vertical, std::nullopt, std::nullopt},
      {vertical, "e\u0301!", "e\u0301\n!\n"},
      {vertical, "\U0001F1EF\U0001F1F5x", "\U0001F1EF\U0001F1F5\nx\n"},
      {&QMFormatter::verticalStringFor, "ab", "a\nb\n"},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(c.transform(c.text), c.expected) << c.text.value_or("(absent)");
  }
  EXPECT_EQ(QMFormatter::escapeJsonValue(R"(a"b\)"), R"(a\"b\\)");
  EXPECT_EQ(QMFormatter::escapeJsonValue(R"(\")"), R"(\\\")");  // backslashes first
  EXPECT_EQ(QMFormatter::escapeJsonValue("$1.*"), "$1.*");
}

TEST(QMFormatterTextTest, AddressLinesGetTheSeparatorOnlyBetweenTwoLines) {
  const struct {
    std::optional<std::string_view> line1, line2;
    const char* expected;
  } cases[] = {
      {"Main St 1", "Springfield", "Main St 1, Springfield"},
      {std::nullopt, "Springfield", "Springfield"},
      {std::nullopt, std::nullopt, ""},
      {"", "", ", "},  // present though empty
  };
  for (const auto& c : cases) {
    EXPECT_EQ(QMFormatter::stringForAddressLine1(c.line1, c.line2, ", "), c.expected);
  }
}

TEST(QMFormatterTextTest, ParseLimitTakesTheNumberAfterTheFirstAt) {
  const struct {
    std::optional<std::string_view> text;
    double expected;
  } cases[] = {
      {std::nullopt, -1.0}, {"", -1.0},      {"speed", -1.0}, {"speed@120", 120.0}, {"x@", 0.0},
      {"a@1@2", 1.0},       {"@12.5", 12.0}, {"a@b7", 0.0},   {"@007", 7.0},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(QMFormatter::parseLimitFromString(c.text), c.expected) << c.text.value_or("nil");
  }
}

TEST(QMFormatterTextTest, FileSizeOfAPath) {
  const std::filesystem::path folder = std::filesystem::temp_directory_path() /
                                       ("qmformatter-test-" + QMFormatter::stringWithUUID());
  std::filesystem::create_directories(folder);
  const std::filesystem::path file = folder / "data.bin";
  std::ofstream(file, std::ios::binary) << std::string(2048, 'x');
  EXPECT_EQ(QMFormatter::stringSizeForFilePath(file.string()), "2 KB");
  EXPECT_EQ(QMFormatter::stringSizeForFilePath((folder / "missing").string()), "--");
  EXPECT_EQ(QMFormatter::stringSizeForFilePath(folder.string()), "--");
  EXPECT_EQ(QMFormatter::stringSizeForFilePath(""), "--");
  std::filesystem::remove_all(folder);
}

}  // namespace
}  // namespace qm
