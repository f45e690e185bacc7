#include "qmcore/files/QMFileLogger.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <optional>
#include <string>
#include <vector>

#include "qmcore/files/DebugLog.hpp"
#include "qmcore/files/QMFileHelper.hpp"
#include "qmcore/files/QMFileLoggerRules.hpp"
#include "qmcore/platform/BuildConfig.hpp"
#include "qmcore/testing/FakeEnv.hpp"
#include "qmcore/testing/FileTesting.hpp"

namespace qm {
namespace {

namespace fs = std::filesystem;
using testing::Diagnostics;
using ::testing::ElementsAre;
using ::testing::EndsWith;
using ::testing::HasSubstr;
using testing::readFile;
using ::testing::StartsWith;
using testing::writeFile;

constexpr double kNow = 1'700'000'000.0;

class QMFileLoggerTest : public ::testing::Test {
 protected:
  QMFileLoggerOptions options() { return {.diagnostic = diagnostics_.sink(), .zip = {}}; }
  fs::path tmp() const { return env_.temporaryDirectory(); }
  fs::path archive() const { return tmp() / "logs-archive"; }
  testing::FakeEnv env_;
  Diagnostics diagnostics_;
};

TEST_F(QMFileLoggerTest, PathsAreBuiltInTheTemporaryDirectory) {
  QMFileLogger logger(env_, options());
  EXPECT_EQ(logger.logFolder(), tmp().string());
  EXPECT_EQ(logger.logPathForLogName("a/b.log"), tmp().string() + "/a/b.log");
  EXPECT_EQ(logger.logPathForLogName("/b.log"), tmp().string() + "/b.log");
  EXPECT_EQ(logger.logArchivePathForFileName("x.zip"), archive().string() + "/x.zip");
}

TEST_F(QMFileLoggerTest, AppendsLinesWithTheTimeOfWritingWhenTheDebugLogIsOn) {
  writeFile(tmp() / "other.log", "old line without end");
  {
    QMFileLogger logger(env_, options());
    logger.logTofile("debuglog.log", "first");
    logger.logTofile("other.log", "elsewhere");
    logger.logTofile("debuglog.log", std::nullopt);  // ignored
    logger.logTofile("debuglog.log", "");
    logger.waitUntilAllOperationsAreFinished();
    env_.advance(61.5);
    logger.logTofile("debuglog.log", "second: ünïcødé\ttab");
  }  // the destructor finishes the queue
  if (!kQMEnableDebugLog) {
    EXPECT_FALSE(fs::exists(tmp() / "debuglog.log"));
    EXPECT_EQ(readFile(tmp() / "other.log"), "old line without end");
    return;
  }
  EXPECT_EQ(readFile(tmp() / "debuglog.log"),
            "01-Jan-01 00:00:00 - first\n"
            "01-Jan-01 00:00:00 - \n"
            "01-Jan-01 00:01:01 - second: ünïcødé\ttab\n");
  EXPECT_EQ(readFile(tmp() / "other.log"), "old line without end01-Jan-01 00:00:00 - elsewhere\n");
  EXPECT_TRUE(diagnostics_.lines().empty());
}

// Appends that cannot open their file (here a folder in its place) print one line each on
// standard output and nothing else; the logger carries on.
TEST_F(QMFileLoggerTest, AppendFailuresArePrintedOnStandardOutput) {
  if (!kQMEnableDebugLog) GTEST_SKIP() << "appends are compiled out";
  fs::create_directories(tmp() / "debuglog.log" / "inside");
  QMFileLogger logger(env_, options());
  ::testing::internal::CaptureStdout();
  logger.logTofile("debuglog.log", "one");
  logger.logTofile("debuglog.log", "two");
  logger.waitUntilAllOperationsAreFinished();
  const std::string line = "Can't write to log file at url: file://" +
                           (tmp() / "debuglog.log").string() +
                           ", error: Error Domain=NSPOSIXErrorDomain Code=21 \"Is a directory";
  const std::string printed = ::testing::internal::GetCapturedStdout();
  const std::string first = printed.substr(0, printed.find('\n') + 1);
  EXPECT_THAT(first, StartsWith(line));
  EXPECT_EQ(printed, first + first);
  EXPECT_TRUE(diagnostics_.lines().empty());
}

TEST_F(QMFileLoggerTest, ResetLeavesAnEmptyFile) {
  writeFile(tmp() / "a.log", "content");
  fs::create_directories(tmp() / "d.log" / "sub");
  QMFileLogger logger(env_, options());
  for (const char* name : {"a.log", "missing.log", "d.log"}) logger.resetLog(name);
  logger.waitUntilAllOperationsAreFinished();
  for (const char* name : {"a.log", "missing.log", "d.log"}) {
    EXPECT_TRUE(fs::is_regular_file(tmp() / name)) << name;
    EXPECT_EQ(fs::file_size(tmp() / name), 0u) << name;
  }
}

// Without force a log is rotated only when it is due; a log that does not exist is not.
TEST_F(QMFileLoggerTest, RotationWithoutForceWaitsUntilTheLogIsDue) {
  const fs::path log = tmp() / "debuglog.log";
  writeFile(log, "12345");
  env_.setNow(Date::now());
  QMFileLogger logger(env_, options());
  std::atomic<int> calls = 0;
  logger.rotateLogIfNeeded("missing.log", true, "nick", "client", [&] { ++calls; });
  logger.rotateLogIfNeeded("debuglog.log", false, std::nullopt, std::nullopt, [&] { ++calls; });
  logger.waitUntilAllOperationsAreFinished();
  EXPECT_EQ(calls, 2);
  EXPECT_THAT(diagnostics_.lines(),
              ElementsAre("[LOG] Log file: " + log.string() +
                          ", is 5 bytes of size, no need to rotate/reset yet."));
  EXPECT_FALSE(fs::exists(archive()));
  EXPECT_FALSE(fs::exists(tmp() / "missing.log"));

  env_.advance(86'400.0 + 5.0);  // a day later it is due
  logger.rotateLogIfNeeded("debuglog.log", false, std::nullopt, "XY", {});
  logger.waitUntilAllOperationsAreFinished();
  EXPECT_THAT(testing::tree(archive()),
              ElementsAre(EndsWith("-debuglog.log-NICK-NIL-CLIENT-XYXY.zip")));
  EXPECT_EQ(readFile(log), "");
}

// A forced rotation zips the log under its archive name, queues the reset and a trim, and
// calls back before the reset: the callback still sees the old content.
TEST_F(QMFileLoggerTest, ForcedRotationArchivesThenResets) {
  const fs::path log = tmp() / "debuglog.log";
  writeFile(log, "line one\nline two\n");
  env_.setNow(Date::now());
  QMFileLogger logger(env_, options());
  std::string seenByCallback;
  logger.rotateLogIfNeeded("debuglog.log", true, "bob", "ABCDEFGH",
                           [&] { seenByCallback = readFile(log); });
  logger.waitUntilAllOperationsAreFinished();

  EXPECT_EQ(seenByCallback, "line one\nline two\n");
  EXPECT_EQ(readFile(log), "");
  const std::vector<std::string> names = testing::tree(archive());
  ASSERT_EQ(names.size(), 1u);
  EXPECT_THAT(names[0], ::testing::MatchesRegex("MD-[0-9]{8}_[0-9]{6}-CD-[0-9]{8}_[0-9]{6}-"
                                                "debuglog\\.log-NICK-bob-CLIENT-ABCFGH\\.zip"));
  const fs::path zip = archive() / names[0];
  EXPECT_EQ(testing::zipContents(zip), "line one\nline two\n");
  // No scratch folder is left behind.
  EXPECT_EQ(testing::tree(tmp()).size(), 3u);  // the log, the archive folder and the zip
  // The trim's report follows from the other queue, so it may come first.
  EXPECT_THAT(diagnostics_.lines(),
              ::testing::UnorderedElementsAre(
                  "[LOG] Compressed and moved previous log file: " + log.string() +
                      ", of 18 bytes of size, to: file://" + zip.string() + ".",
                  StartsWith("[LOG] Trimmed log archive at: ")));
}

// When the archive cannot be written the log is reset only if the rotation was forced; a log
// above ten million bytes is due without force.
TEST_F(QMFileLoggerTest, FailedCompressionResetsOnlyWhenForced) {
  for (const bool force : {false, true}) {
    testing::FakeEnv env;
    Diagnostics diagnostics;
    const fs::path log = env.temporaryDirectory() / "big.log";
    writeFile(log, std::string(10'000'001, 'x'));
    // A file where the archive folder belongs: nothing can be written into it.
    writeFile(env.temporaryDirectory() / "logs-archive", "in the way");
    QMFileLogger logger(env, {.diagnostic = diagnostics.sink(), .zip = {}});
    std::atomic<int> calls = 0;
    logger.rotateLogIfNeeded("big.log", force, std::nullopt, std::nullopt, [&] { ++calls; });
    logger.waitUntilAllOperationsAreFinished();
    EXPECT_EQ(calls, 1);
    EXPECT_EQ(fs::file_size(log), force ? 0u : 10'000'001u) << force;
    EXPECT_THAT(diagnostics.lines(),  // and no trim after a failure
                ElementsAre(StartsWith("[LOG] Failed to compress and/or save the log file: " +
                                       log.string() + ", error: ")));
  }
}

// The trim deletes archives strictly older than three days; every other entry ships, since the
// "shipping" test is made on the whole absolute path.
TEST_F(QMFileLoggerTest, TrimAndShipping) {
  const Date now = Date::fromUnixSeconds(kNow);
  env_.setNow(now);
  const std::pair<const char*, double> ages[] = {
      {"at-cutoff.zip", 259'200.0}, {"older.zip", 259'201.0}, {"shipping-b.zip", 0.0}};
  for (const auto& [name, age] : ages) {
    writeFile(archive() / name, "zip");
    fs::last_write_time(archive() / name, std::chrono::file_clock::from_sys(
                                              now.addingTimeInterval(-age).toTimePoint()));
  }
  QMFileLogger logger(env_, options());
  logger.trimLogArchive();
  logger.waitUntilAllOperationsAreFinished();
  std::vector<std::string> shipped;
  for (const fs::path& url : logger.archiveLogURLsToShip()) {
    EXPECT_EQ(url.parent_path(), archive());
    shipped.push_back(url.filename().string());
  }
  std::sort(shipped.begin(), shipped.end());
  EXPECT_THAT(shipped, ElementsAre("at-cutoff.zip", "shipping-b.zip"));
  EXPECT_THAT(diagnostics_.lines(),
              ElementsAre("[LOG] Trimmed log archive at: " + archive().string() +
                          " by date : 2023-11-11 22:13:20 +0000. Deleted 1 files."));
}

// Without an archive folder the trim deletes nothing, the clean-up reports the listing error
// through the log facade, and nothing is shipped.
TEST_F(QMFileLoggerTest, MissingArchiveFolderIsReportedByTrimAndShipping) {
  std::vector<std::string> facade;  // file messages of debuglog, on the cleanup queue
  const ScopedDebugLogFileSink sink(
      [&](std::string_view, std::string message) { facade.push_back(std::move(message)); });
  QMFileLogger logger(env_, options());
  logger.trimLogArchive();
  logger.waitUntilAllOperationsAreFinished();
  EXPECT_TRUE(logger.archiveLogURLsToShip().empty());
  EXPECT_THAT(diagnostics_.lines(),
              ElementsAre("[LOG] Trimmed log archive at: " + archive().string() +
                              " by date : 2000-12-29 00:00:00 +0000. Deleted 0 files.",
                          StartsWith("[LOG]: Can't read log archive directory: Error "
                                     "Domain=NSPOSIXErrorDomain Code=2 ")));
  ASSERT_EQ(facade.size(), kQMEnableDebugLog ? 1u : 0u);
  if (kQMEnableDebugLog) {
    EXPECT_THAT(facade[0], HasSubstr(", debuglog[:] [FILE]: Error when cleaning up temporary "
                                     "directory: Error Domain=NSPOSIXErrorDomain Code=2 "));
  }
}

TEST(QMFileLoggerRulesTest, RotationIsDueAboveTheSizeOrAgeLimit) {
  const struct {
    std::optional<std::uint64_t> size;
    std::optional<double> ageSeconds;
    bool due;
  } cases[] = {
      {10'000'000, 60.0, false}, {10'000'001, 60.0, true}, {std::nullopt, 60.0, true},
      {10, 86'400.0, false},     {10, 86'400.001, true},   {10, -1000.0, false},
  };
  for (const auto& c : cases) {
    std::optional<Date> created;
    if (c.ageSeconds) created = Date::fromUnixSeconds(kNow - *c.ageSeconds);
    EXPECT_EQ(QMFileLoggerRules::isRotationDue(c.size, created, Date::fromUnixSeconds(kNow)), c.due)
        << c.size.value_or(0) << " bytes, " << c.ageSeconds.value_or(-1) << " s old";
  }
  // An unknown creation date is 1970 itself: due once the clock is more than a day past it.
  EXPECT_FALSE(QMFileLoggerRules::isRotationDue(1, std::nullopt, Date::fromUnixSeconds(86'400)));
  EXPECT_TRUE(QMFileLoggerRules::isRotationDue(1, std::nullopt, Date::fromUnixSeconds(86'401)));
}

TEST(QMFileLoggerRulesTest, ClientPartIsTheFirstAndLastThreeCharacters) {
  const struct {
    std::optional<std::string_view> clientID;
    std::string part;
  } cases[] = {
      {"ABCD", "ABCBCD"},
      {"ABC", "ABCABC"},
      // Characters, not bytes: a flag and an accented letter count as one each.
      {"\U0001F1E9\U0001F1EAxyze\u0301", "\U0001F1E9\U0001F1EAxyyze\u0301"},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(QMFileLoggerRules::clientPart(c.clientID), c.part) << c.part;
  }
}

TEST(QMFileLoggerRulesTest, ArchiveNamePutsTheModificationDateFirst) {
  EXPECT_EQ(QMFileLoggerRules::archiveName("debuglog.log", "20240305_140709", "20240301_080000",
                                           "bob", "ABCDEFGH"),
            "MD-20240305_140709-CD-20240301_080000-debuglog.log-NICK-bob-CLIENT-ABCFGH");
  // Absent parts read NIL; an empty nickname stays empty.
  EXPECT_EQ(
      QMFileLoggerRules::archiveName("debuglog.log", std::nullopt, std::nullopt, "", std::nullopt),
      "MD-NIL-CD-NIL-debuglog.log-NICK--CLIENT-NIL");
  EXPECT_EQ(QMFileLoggerRules::archiveName("d.log", std::nullopt, std::nullopt, std::nullopt, ""),
            "MD-NIL-CD-NIL-d.log-NICK-NIL-CLIENT-");
}

// The test is made on the whole path, so archives under an absolute folder always ship.
TEST(QMFileLoggerRulesTest, ShippingTestLooksAtTheWholePath) {
  EXPECT_TRUE(QMFileLoggerRules::isShippable("/tmp/logs-archive/shipping-MD-x.zip"));
  EXPECT_FALSE(QMFileLoggerRules::isShippable("shippingMD-x.zip"));
  EXPECT_TRUE(QMFileLoggerRules::isShippable("Shipping/MD-x.zip"));
}

}  // namespace
}  // namespace qm
