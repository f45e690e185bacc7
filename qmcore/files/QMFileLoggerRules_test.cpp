#include "qmcore/files/QMFileLoggerRules.hpp"

#include <gtest/gtest.h>

#include <optional>
#include <string>

namespace qm {
namespace {

constexpr double kNow = 1'700'000'000.0;

TEST(QMFileLoggerRulesTest, RotationIsDueAboveTheSizeOrAgeLimit) {
  struct Case {
    const char* what;
    std::optional<std::uint64_t> size;
    std::optional<double> ageSeconds;  // absent: the creation date cannot be read
    bool due;
  };
  const Case cases[] = {
      {"empty and new", 0, 0.0, false},
      {"exactly the size limit", 10'000'000, 60.0, false},
      {"one byte above the size limit", 10'000'001, 60.0, true},
      {"size unknown", std::nullopt, 60.0, true},
      {"exactly one day old", 10, 86'400.0, false},
      {"just over one day old", 10, 86'400.001, true},
      {"created in the future", 10, -1000.0, false},
      {"creation date unknown counts from 1970", 10, std::nullopt, true},
      {"too big and unknown creation date", 20'000'000, std::nullopt, true},
  };
  for (const Case& c : cases) {
    std::optional<Date> created;
    if (c.ageSeconds) created = Date::fromUnixSeconds(kNow - *c.ageSeconds);
    EXPECT_EQ(QMFileLoggerRules::isRotationDue(c.size, created, Date::fromUnixSeconds(kNow)), c.due)
        << c.what;
  }
}

// A log created at 1970 itself (the reference moment) is due; so is any log once the clock is
// more than a day past 1970.
TEST(QMFileLoggerRulesTest, UnknownCreationDateIsTheReferenceMoment) {
  EXPECT_FALSE(QMFileLoggerRules::isRotationDue(1, std::nullopt, Date::fromUnixSeconds(86'400)));
  EXPECT_TRUE(QMFileLoggerRules::isRotationDue(1, std::nullopt, Date::fromUnixSeconds(86'401)));
}

TEST(QMFileLoggerRulesTest, ClientPartIsTheFirstAndLastThreeCharacters) {
  struct Case {
    std::optional<std::string_view> clientID;
    std::string part;
  };
  const Case cases[] = {
      {"ABCDEFGH", "ABCFGH"},
      {"ABCDEF", "ABCDEF"},
      {"ABCD", "ABCBCD"},
      {"ABC", "ABCABC"},
      {"XY", "XYXY"},
      {"X", "XX"},
      {"", ""},
      {std::nullopt, "NIL"},
      // Characters, not bytes: a flag and an accented letter count as one each.
      {"\U0001F1E9\U0001F1EAxyze\u0301", "\U0001F1E9\U0001F1EAxyyze\u0301"},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(QMFileLoggerRules::clientPart(c.clientID), c.part)
        << (c.clientID ? std::string(*c.clientID) : "(absent)");
  }
}

TEST(QMFileLoggerRulesTest, ArchiveNamePutsTheModificationDateFirst) {
  struct Case {
    std::optional<std::string> modified;
    std::optional<std::string> created;
    std::optional<std::string_view> nick;
    std::optional<std::string_view> client;
    std::string name;
  };
  const Case cases[] = {
      {"20240305_140709", "20240301_080000", "bob", "ABCDEFGH",
       "MD-20240305_140709-CD-20240301_080000-debuglog.log-NICK-bob-CLIENT-ABCFGH"},
      {std::nullopt, std::nullopt, std::nullopt, std::nullopt,
       "MD-NIL-CD-NIL-debuglog.log-NICK-NIL-CLIENT-NIL"},
      {"20240305_140709", std::nullopt, "", "XY",
       "MD-20240305_140709-CD-NIL-debuglog.log-NICK--CLIENT-XYXY"},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(
        QMFileLoggerRules::archiveName("debuglog.log", c.modified, c.created, c.nick, c.client),
        c.name);
  }
}

TEST(QMFileLoggerRulesTest, TrimCutoffIsThreeDaysBack) {
  EXPECT_EQ(QMFileLoggerRules::trimCutoff(Date::fromUnixSeconds(kNow)),
            Date::fromUnixSeconds(kNow - 259'200.0));
}

// The test is made on the whole path, so archives under an absolute folder always ship.
TEST(QMFileLoggerRulesTest, ShippingTestLooksAtTheWholePath) {
  struct Case {
    const char* path;
    bool shippable;
  };
  const Case cases[] = {
      {"/tmp/logs-archive/shipping-MD-x.zip", true},
      {"/tmp/logs-archive/MD-x.zip", true},
      {"shipping/MD-x.zip", false},
      {"shippingMD-x.zip", false},
      {"Shipping/MD-x.zip", true},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(QMFileLoggerRules::isShippable(c.path), c.shippable) << c.path;
  }
}

}  // namespace
}  // namespace qm
