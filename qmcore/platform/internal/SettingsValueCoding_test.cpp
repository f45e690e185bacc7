#include "qmcore/platform/internal/SettingsValueCoding.hpp"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <vector>

namespace qm::internal {
namespace {

using Bytes = std::vector<std::uint8_t>;

Bytes repeated(const Bytes& pattern, std::size_t count) {
  Bytes bytes;
  for (std::size_t i = 0; i < count; ++i) bytes.insert(bytes.end(), pattern.begin(), pattern.end());
  return bytes;
}

// An array holding an array ... `depth` levels deep, around the integer 1.
SettingsValue nestedArrays(int depth) {
  SettingsValue value(1);
  for (int i = 0; i < depth; ++i) {
    SettingsValue::Array array;  // not Array{...}: an initializer list would copy
    array.push_back(std::move(value));
    value = SettingsValue(std::move(array));
  }
  return value;
}

TEST(SettingsValueCodingTest, DamagedOrForeignBytesReadAsAbsentWithoutThrowing) {
  const struct {
    const char* name;
    Bytes bytes;
  } cases[] = {
      {"empty", {}},
      // An array head declaring 2^63 and more elements: nlohmann throws for it on its own.
      {"huge array size", {0x9b, 0x9b, 0x2f, 0x00, 0x00, 0x00, 0x2f, 0x2f, 0x2f, 0x2f}},
      {"more elements than bytes", {0x9a, 0x00, 0x01, 0x00, 0x00, 0x06}},
      // 100000 container heads: read by recursion, they would overflow the stack.
      {"deep indefinite arrays", repeated({0x9f}, 100000)},
      {"tagged", {0xc1, 0x82, 0x01, 0x01}},
      {"trailing bytes", {0x82, 0x01, 0x01, 0x00}},
      {"not a kind pair", {0x01}},
      {"unknown kind", {0x82, 0x18, 0x63, 0x00}},
      {"bool that is null", {0x82, 0x00, 0xf6}},
      {"integer above int64", {0x82, 0x01, 0x1b, 0xff, 0xff, 0xff, 0xff, 0xff, 0xff, 0xff, 0xff}},
  };
  for (const auto& c : cases) {
    std::optional<SettingsValue> decoded;
    EXPECT_NO_THROW(decoded = decodeSettingsValue(c.bytes)) << c.name;
    EXPECT_FALSE(decoded.has_value()) << c.name;
  }
}

TEST(SettingsValueCodingTest, NestingReadsBackUpToTheLimit) {
  const struct {
    int depth;
    bool readsBack;
  } cases[] = {{1, true}, {255, true}, {256, false}, {2000, false}};
  for (const auto& c : cases) {
    const SettingsValue value = nestedArrays(c.depth);
    const std::optional<SettingsValue> decoded = decodeSettingsValue(encodeSettingsValue(value));
    EXPECT_EQ(decoded.has_value(), c.readsBack) << c.depth;
    if (decoded) {
      EXPECT_EQ(*decoded, value) << c.depth;
    }
  }
}

}  // namespace
}  // namespace qm::internal
