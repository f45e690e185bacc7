#include "qmcore/strings/LocalizedTextCache.hpp"

#include <gtest/gtest.h>

#include <array>
#include <thread>

#include "qmcore/platform/Locale.hpp"

namespace qm {
namespace {

constexpr std::array<std::string_view, 3> kCompassKeys = {"N", "E", "SE"};
constexpr std::array<std::string_view, 2> kTimeKeys = {"h", "m_minute"};

std::vector<std::string> copied(std::span<const std::string> texts) {
  return {texts.begin(), texts.end()};
}

class LocalizedTextCacheTest : public ::testing::Test {
 protected:
  ~LocalizedTextCacheTest() override { setCurrentLocaleIdentifier(saved_); }

 private:
  std::string saved_ = currentLocaleIdentifier();
};

TEST_F(LocalizedTextCacheTest, FollowsEveryChangeOfTheCurrentLocale) {
  LocalizedTextCache cache(kCompassKeys);
  using Texts = std::vector<std::string>;
  const struct {
    const char* locale;
    Texts expected;
  } steps[] = {
      {"en_US", {"N", "E", "SE"}},     {"de_DE", {"N", "O", "SO"}},
      {"de_DE", {"N", "O", "SO"}},  // unchanged: served from the cache
      {"fr_FR", {"N", "E", "SE"}},     {"es_ES", {"N", "E", "SE"}},
      {"ja_JP", {"北", "東", "南東"}}, {"en_US", {"N", "E", "SE"}},
  };
  for (const auto& step : steps) {
    setCurrentLocaleIdentifier(step.locale);
    EXPECT_EQ(copied(cache.texts()), step.expected) << step.locale;
  }
}

TEST_F(LocalizedTextCacheTest, CachesOfOtherKeysAndThreadsKeepTheirOwnTexts) {
  setCurrentLocaleIdentifier("de_DE");
  LocalizedTextCache compass(kCompassKeys);
  LocalizedTextCache time(kTimeKeys);
  EXPECT_EQ(compass.texts()[1], "O");
  EXPECT_EQ(copied(time.texts()), (std::vector<std::string>{"h", "min"}));
  EXPECT_EQ(compass.texts()[2], "SO");

  std::string seenByAnotherThread;
  std::thread([&] {
    thread_local LocalizedTextCache own(kCompassKeys);
    seenByAnotherThread = own.texts()[1];
  }).join();
  EXPECT_EQ(seenByAnotherThread, "O");
}

}  // namespace
}  // namespace qm
