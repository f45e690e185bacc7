#include "qmcore/platform/Locale.hpp"

#include <gtest/gtest.h>

#include <cstdlib>

namespace qm {
namespace {

class LocaleTest : public ::testing::Test {
 protected:
  void SetUp() override { saved_ = currentLocaleIdentifier(); }
  void TearDown() override { setCurrentLocaleIdentifier(saved_); }
  std::string saved_;
};

TEST_F(LocaleTest, SetterAcceptsPosixAndBcp47Spellings) {
  const struct {
    const char* given;
    const char* expected;
  } cases[] = {
      {"de_DE", "de_DE"},           {"de-DE", "de_DE"},   {"de_DE.UTF-8", "de_DE"},
      {"fr_FR.utf8@euro", "fr_FR"}, {"C", "en_US_POSIX"}, {"POSIX", "en_US_POSIX"},
      {"C.UTF-8", "en_US_POSIX"},   {"", "en_US_POSIX"},  {"en_GB", "en_GB"},
  };
  for (const auto& c : cases) {
    setCurrentLocaleIdentifier(c.given);
    EXPECT_EQ(currentLocaleIdentifier(), c.expected) << c.given;
  }
}

TEST(LocaleFunctions, LanguageOfLocale) {
  EXPECT_EQ(languageOfLocale("de_DE"), "de");
  EXPECT_EQ(languageOfLocale("en-US"), "en");
  EXPECT_EQ(languageOfLocale("fr"), "fr");
  EXPECT_EQ(languageOfLocale(""), "");
}

TEST(LocaleFunctions, MeasurementSystemComesFromLocaleData) {
  EXPECT_EQ(measurementSystemForLocale("en_US"), MeasurementSystem::kUS);
  EXPECT_EQ(measurementSystemForLocale("en_GB"), MeasurementSystem::kUK);
  EXPECT_EQ(measurementSystemForLocale("de_DE"), MeasurementSystem::kMetric);
  EXPECT_EQ(measurementSystemForLocale("fr_FR"), MeasurementSystem::kMetric);
  EXPECT_EQ(measurementSystemForLocale("en_US_POSIX"), MeasurementSystem::kUS);
}

TEST(LocaleFunctions, TimeZoneIsSettableAndRestorable) {
  setCurrentTimeZoneIdentifier("Europe/Berlin");
  EXPECT_EQ(currentTimeZoneIdentifier(), "Europe/Berlin");
  ::setenv("TZ", ":Asia/Tokyo", 1);
  setCurrentTimeZoneIdentifier("");  // back to the environment's
  EXPECT_EQ(currentTimeZoneIdentifier(), "Asia/Tokyo");
  setCurrentTimeZoneIdentifier("UTC");
}

}  // namespace
}  // namespace qm
