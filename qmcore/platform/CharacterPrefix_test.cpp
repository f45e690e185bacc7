#include "qmcore/platform/CharacterPrefix.hpp"

#include <gtest/gtest.h>

namespace qm {
namespace {

TEST(CharacterPrefixTest, ComparesWholeCharacters) {
  const struct {
    const char* text;
    const char* prefix;
    bool expected;
  } cases[] = {
      {"Cafe Central, Main St", "Cafe", true},
      {"Cafe", "Cafe", true},
      {"Cafe", "Cafe Central", false},
      {"anything", "", true},
      {"", "", true},
      {"", "a", false},
      {"cafe Central", "Cafe", false},
      // A combining accent after the prefix belongs to its last character.
      {"Cafe\u0301 Central", "Cafe", false},
      // Canonically equivalent spellings are the same characters.
      {"Caf\u00e9 Central", "Cafe\u0301", true},
      {"Cafe\u0301 Central", "Caf\u00e9", true},
      // A flag is one character made of two code points.
      {"\U0001F1E9\U0001F1EA Berlin", "\U0001F1E9", false},
      {"\U0001F1E9\U0001F1EA Berlin", "\U0001F1E9\U0001F1EA", true},
      {"\r\nA", "\r", false},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(hasCharacterPrefix(c.text, c.prefix), c.expected)
        << "'" << c.text << "' / '" << c.prefix << "'";
  }
}

TEST(CharacterPrefixTest, InvalidUtf8DoesNotCrash) {
  EXPECT_TRUE(
      hasCharacterPrefix("\xff\xfe"
                         "abc",
                         "\xff"));
  EXPECT_FALSE(hasCharacterPrefix("abc", "\xc3"));
}

}  // namespace
}  // namespace qm
