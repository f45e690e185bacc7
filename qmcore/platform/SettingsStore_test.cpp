#include "qmcore/platform/SettingsStore.hpp"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <limits>
#include <optional>
#include <string>
#include <vector>

#include "qmcore/testing/NonFinite.hpp"

namespace qm {
namespace {

constexpr std::int64_t kMax = std::numeric_limits<std::int64_t>::max();
constexpr std::int64_t kMin = std::numeric_limits<std::int64_t>::min();
using testing::kInf;
using testing::kNaN;

struct ConversionCase {
  std::string name;
  std::optional<SettingsValue> stored;  // absent: nothing stored
  bool asBool;
  std::int64_t asInteger;
  double asDouble;
  std::optional<std::string> asString;
};

TEST(SettingsStoreTest, TypedGettersConvertLikeThePlatform) {
  const std::vector<ConversionCase> cases = {
      {"missing", std::nullopt, false, 0, 0.0, std::nullopt},
      {"true", true, true, 1, 1.0, "1"},
      {"false", false, false, 0, 0.0, "0"},
      {"integer", 42, true, 42, 42.0, "42"},
      {"zero", 0, false, 0, 0.0, "0"},
      {"negative integer", -7, true, -7, -7.0, "-7"},
      {"largest integer", kMax, true, kMax, 9223372036854775807.0, "9223372036854775807"},
      {"double", 1.9, true, 1, 1.9, "1.9"},
      {"negative double", -1.9, true, -1, -1.9, "-1.9"},
      {"double below one", 0.5, true, 0, 0.5, "0.5"},
      {"shortest text", 0.1, true, 0, 0.1, "0.1"},
      {"integral double", 3.0, true, 3, 3.0, "3"},
      {"huge double", 1e20, true, kMax, 1e20, "1e+20"},
      {"huge negative double", -1e20, true, kMin, -1e20, "-1e+20"},
      {"infinity", kInf, true, kMax, kInf, "inf"},
      {"nan", kNaN, false, 0, kNaN, "nan"},
      {"integer text", "12", true, 12, 12.0, "12"},
      {"decimal text with spaces", " -1.5 ", true, -1, -1.5, " -1.5 "},
      {"exponent text", "2e3", true, 2000, 2000.0, "2e3"},
      {"plus sign", "+7", true, 7, 7.0, "+7"},
      {"zero text", "0", false, 0, 0.0, "0"},
      {"zero decimal text", "0.0", false, 0, 0.0, "0.0"},
      {"exact integer text", "9223372036854775807", true, kMax, 9223372036854775807.0,
       "9223372036854775807"},
      {"smallest integer text", "-9223372036854775808", true, kMin, -9223372036854775808.0,
       "-9223372036854775808"},
      {"integer text beyond 64 bits", "99999999999999999999", true, kMax, 1e20,
       "99999999999999999999"},
      {"YES", "YES", true, 1, 1.0, "YES"},
      {"true text", "true", true, 1, 1.0, "true"},
      {"False text", "False", false, 0, 0.0, "False"},
      {"no text", "no", false, 0, 0.0, "no"},
      {"trailing garbage", "12abc", false, 0, 0.0, "12abc"},
      {"empty text", "", false, 0, 0.0, ""},
      {"inf text", "inf", false, 0, 0.0, "inf"},
      {"nan text", "nan", false, 0, 0.0, "nan"},
      {"hex text", "0x10", false, 0, 0.0, "0x10"},
      {"double text out of range", "1e400", false, 0, 0.0, "1e400"},
      {"sign only", "-", false, 0, 0.0, "-"},
      {"bytes", SettingsValue::Bytes{1}, false, 0, 0.0, std::nullopt},
      {"date", Date::fromUnixSeconds(5), false, 0, 0.0, std::nullopt},
      {"array", SettingsValue::Array{1}, false, 0, 0.0, std::nullopt},
      {"dictionary", SettingsValue::Dictionary{{"a", 1}}, false, 0, 0.0, std::nullopt},
  };
  const auto store = SettingsStore::inMemory();
  for (const ConversionCase& c : cases) {
    SCOPED_TRACE(c.name);
    if (c.stored) {
      store->setObject("key", *c.stored);
    } else {
      store->removeObjectForKey("key");
    }
    EXPECT_EQ(store->hasKey("key"), c.stored.has_value());
    EXPECT_EQ(store->boolForKey("key"), c.asBool);
    EXPECT_EQ(store->integerForKey("key"), c.asInteger);
    if (std::isnan(c.asDouble)) {
      EXPECT_TRUE(std::isnan(store->doubleForKey("key")));
    } else {
      EXPECT_EQ(store->doubleForKey("key"), c.asDouble);
    }
    EXPECT_EQ(store->stringForKey("key"), c.asString);
  }
}

// Sets the environment variables of the file rule for one test and restores them after.
class ScopedEnvironment {
 public:
  ScopedEnvironment() {
    for (const char* name : kNames) {
      const char* value = std::getenv(name);
      saved_.push_back(value != nullptr ? std::optional<std::string>(value) : std::nullopt);
    }
  }
  ~ScopedEnvironment() {
    for (std::size_t i = 0; i < std::size(kNames); ++i) set(kNames[i], saved_[i]);
  }
  static void set(const char* name, const std::optional<std::string>& value) {
    if (value) {
      setenv(name, value->c_str(), 1);
    } else {
      unsetenv(name);
    }
  }

 private:
  static constexpr const char* kNames[] = {"QM_SETTINGS_PATH", "XDG_CONFIG_HOME", "HOME"};
  std::vector<std::optional<std::string>> saved_;
};

struct PathCase {
  std::string name;
  std::optional<std::string> settingsPath, configHome, home;
  std::string expected;
};

TEST(SettingsStoreTest, StandardFileComesFromTheEnvironment) {
  const std::vector<PathCase> cases = {
      {"explicit path wins", "/x/s.sqlite", "/cfg", "/home/u", "/x/s.sqlite"},
      {"empty explicit path is ignored", "", "/cfg", "/home/u", "/cfg/qmcore/settings.sqlite"},
      {"config home", std::nullopt, "/cfg", "/home/u", "/cfg/qmcore/settings.sqlite"},
      {"relative config home is ignored", std::nullopt, "cfg", "/home/u",
       "/home/u/.config/qmcore/settings.sqlite"},
      {"empty config home is ignored", std::nullopt, "", "/home/u",
       "/home/u/.config/qmcore/settings.sqlite"},
      {"home", std::nullopt, std::nullopt, "/home/u", "/home/u/.config/qmcore/settings.sqlite"},
  };
  const ScopedEnvironment restore;
  for (const PathCase& c : cases) {
    SCOPED_TRACE(c.name);
    ScopedEnvironment::set("QM_SETTINGS_PATH", c.settingsPath);
    ScopedEnvironment::set("XDG_CONFIG_HOME", c.configHome);
    ScopedEnvironment::set("HOME", c.home);
    EXPECT_EQ(SettingsStore::standardFilePath(), c.expected);
  }
}

TEST(SettingsStoreTest, NamedFilesStayInTheStandardFolderWithDistinctNames) {
  const std::vector<std::pair<std::string, std::string>> cases = {
      {"group.app", "/x/group.app.sqlite"},
      {"a/b", "/x/a%2Fb.sqlite"},
      {"/etc/passwd", "/x/%2Fetc%2Fpasswd.sqlite"},
      {"..", "/x/%2E..sqlite"},
      {".hidden", "/x/%2Ehidden.sqlite"},
      {"%2F", "/x/%252F.sqlite"},
      {"a b", "/x/a%20b.sqlite"},
      {"\xC3\xBC"
       "ber",
       "/x/\xC3\xBC"
       "ber.sqlite"},
      {"", "/x/s.sqlite"},
  };
  const ScopedEnvironment restore;
  ScopedEnvironment::set("QM_SETTINGS_PATH", "/x/s.sqlite");
  for (const auto& [suite, expected] : cases) {
    SCOPED_TRACE(suite);
    EXPECT_EQ(SettingsStore::namedFilePath(suite), expected);
  }
}

}  // namespace
}  // namespace qm
