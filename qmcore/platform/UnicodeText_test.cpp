#include "qmcore/platform/UnicodeText.hpp"

#include <gtest/gtest.h>

#include <thread>

namespace qm {
namespace {

using Clusters = std::vector<std::string>;

TEST(UnicodeTextTest, SplitsIntoUserPerceivedCharacters) {
  const struct {
    const char* text;
    Clusters expected;
  } cases[] = {
      {"", {}},
      {"ab", {"a", "b"}},
      {"e\u0301x", {"e\u0301", "x"}},                            // letter with combining accent
      {"\U0001F1E9\U0001F1EA!", {"\U0001F1E9\U0001F1EA", "!"}},  // a flag is one character
      {"\U0001F468\u200D\U0001F469\u200D\U0001F467",
       {"\U0001F468\u200D\U0001F469\u200D\U0001F467"}},
      {"a\r\nb", {"a", "\r\n", "b"}},
      {"日本", {"日", "本"}},
  };
  for (const auto& c : cases) EXPECT_EQ(graphemeClusters(c.text), c.expected) << c.text;
}

TEST(UnicodeTextTest, SplittingIsSafeFromSeveralThreads) {
  std::vector<std::thread> threads;
  std::vector<Clusters> results(4);
  for (size_t i = 0; i < results.size(); ++i) {
    threads.emplace_back([&results, i] {
      for (int n = 0; n < 200; ++n) results[i] = graphemeClusters("x\U0001F1E9\U0001F1EAy");
    });
  }
  for (auto& t : threads) t.join();
  for (const auto& r : results) EXPECT_EQ(r, (Clusters{"x", "\U0001F1E9\U0001F1EA", "y"}));
}

TEST(UnicodeTextTest, CapitalizesEachWord) {
  const struct {
    const char* text;
    const char* expected;
  } cases[] = {
      {"currency", "Currency"},
      {"hOURS and minutes", "Hours And Minutes"},
      {"ärger über", "Ärger Über"},
      {"", ""},
  };
  for (const auto& c : cases) EXPECT_EQ(capitalizedString(c.text), c.expected) << c.text;
}

}  // namespace
}  // namespace qm
