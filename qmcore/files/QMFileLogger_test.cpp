#include "qmcore/files/QMFileLogger.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include "qmcore/files/DebugLog.hpp"
#include "qmcore/files/QMFileHelper.hpp"
#include "qmcore/platform/BuildConfig.hpp"
#include "qmcore/platform/Error.hpp"
#include "qmcore/testing/QMFileLoggerTestSupport.hpp"

namespace qm {
namespace {

namespace fs = std::filesystem;
using testing::Diagnostics;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::MatchesRegex;
using testing::readFile;
using ::testing::StartsWith;
using testing::writeFile;

class QMFileLoggerTest : public ::testing::Test {
 protected:
  QMFileLoggerOptions options() {
    QMFileLoggerOptions options;
    options.diagnostic = diagnostics_.sink();
    return options;
  }
  fs::path tmp() const { return env_.temporaryDirectory(); }
  fs::path archive() const { return tmp() / "logs-archive"; }
  std::vector<fs::path> archived() const {
    std::vector<fs::path> files;
    if (fs::exists(archive())) {
      for (const auto& entry : fs::directory_iterator(archive())) files.push_back(entry.path());
    }
    return files;
  }
  testing::FakeEnv env_;
  Diagnostics diagnostics_;
};

TEST_F(QMFileLoggerTest, PathsAreBuiltInTheTemporaryDirectory) {
  QMFileLogger logger(env_, options());
  const std::string t = tmp().string();
  EXPECT_EQ(logger.logFolder(), t);
  EXPECT_EQ(logger.logPathForLogName("debuglog.log"), t + "/debuglog.log");
  EXPECT_EQ(logger.logPathForLogName("a/b.log"), t + "/a/b.log");
  EXPECT_EQ(logger.logPathForLogName("/b.log"), t + "/b.log");
  EXPECT_EQ(logger.logArchiveFolderURL(), fs::path(t + "/logs-archive"));
  EXPECT_EQ(logger.logArchivePathForFileName("x.zip"), t + "/logs-archive/x.zip");
}

TEST_F(QMFileLoggerTest, AppendsLinesWithTheTimeOfWritingWhenTheDebugLogIsOn) {
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
    EXPECT_FALSE(fs::exists(tmp() / "other.log"));
    return;
  }
  EXPECT_EQ(readFile(tmp() / "debuglog.log"),
            "01-Jan-01 00:00:00 - first\n"
            "01-Jan-01 00:00:00 - \n"
            "01-Jan-01 00:01:01 - second: ünïcødé\ttab\n");
  EXPECT_EQ(readFile(tmp() / "other.log"), "01-Jan-01 00:00:00 - elsewhere\n");
  EXPECT_TRUE(diagnostics_.lines().empty());
}

TEST_F(QMFileLoggerTest, AppendKeepsWhatTheFileHeld) {
  writeFile(tmp() / "debuglog.log", "old line without end");
  QMFileLogger logger(env_, options());
  logger.logTofile("debuglog.log", "new");
  logger.waitUntilAllOperationsAreFinished();
  EXPECT_EQ(readFile(tmp() / "debuglog.log"), kQMEnableDebugLog
                                                  ? "old line without end01-Jan-01 00:00:00 - new\n"
                                                  : "old line without end");
}

// Appends that cannot open their file print one line each on standard output and nothing
// else; the logger carries on.
TEST_F(QMFileLoggerTest, AppendFailuresArePrintedOnStandardOutput) {
  if (!kQMEnableDebugLog) GTEST_SKIP() << "appends are compiled out";
  struct Case {
    const char* what;
    std::function<void(const fs::path& tmp)> breakIt;
    const char* error;
  };
  const Case cases[] = {
      {"log file replaced by a directory",
       [](const fs::path& t) { fs::create_directories(t / "debuglog.log" / "inside"); },
       "Is a directory"},
      {"log folder is a file",
       [](const fs::path& t) {
         fs::remove_all(t);
         writeFile(t, "not a folder");
       },
       "Not a directory"},
      {"log folder missing", [](const fs::path& t) { fs::remove_all(t); },
       "No such file or directory"},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.what);
    testing::FakeEnv env;
    Diagnostics diagnostics;
    c.breakIt(env.temporaryDirectory());
    QMFileLogger logger(env, {.diagnostic = diagnostics.sink(), .zip = {}});
    ::testing::internal::CaptureStdout();
    logger.logTofile("debuglog.log", "one");
    logger.logTofile("debuglog.log", "two");
    logger.waitUntilAllOperationsAreFinished();
    const std::string printed = ::testing::internal::GetCapturedStdout();
    const std::string line = "Can't write to log file at url: file://" +
                             (env.temporaryDirectory() / "debuglog.log").string() +
                             ", error: Error Domain=NSPOSIXErrorDomain Code=";
    EXPECT_THAT(printed, StartsWith(line));
    EXPECT_THAT(printed, HasSubstr(c.error));
    EXPECT_EQ(std::count(printed.begin(), printed.end(), '\n'), 2);
    EXPECT_EQ(printed.substr(0, printed.find('\n') + 1), printed.substr(printed.find('\n') + 1));
    EXPECT_TRUE(diagnostics.lines().empty());
  }
}

TEST_F(QMFileLoggerTest, ResetLeavesAnEmptyFile) {
  writeFile(tmp() / "a.log", "content");
  fs::create_directories(tmp() / "d.log" / "sub");
  QMFileLogger logger(env_, options());
  logger.resetLog("a.log");
  logger.resetLog("missing.log");
  logger.resetLog("d.log");
  logger.waitUntilAllOperationsAreFinished();
  for (const char* name : {"a.log", "missing.log", "d.log"}) {
    EXPECT_TRUE(fs::is_regular_file(tmp() / name)) << name;
    EXPECT_EQ(fs::file_size(tmp() / name), 0u) << name;
  }
}

TEST_F(QMFileLoggerTest, RotationOfAMissingLogOnlyCallsBack) {
  QMFileLogger logger(env_, options());
  std::atomic<int> calls = 0;
  logger.rotateLogIfNeeded("debuglog.log", true, "nick", "client", [&] { ++calls; });
  logger.waitUntilAllOperationsAreFinished();
  EXPECT_EQ(calls, 1);
  EXPECT_TRUE(diagnostics_.lines().empty());
  EXPECT_FALSE(fs::exists(archive()));
  EXPECT_FALSE(fs::exists(tmp() / "debuglog.log"));
}

TEST_F(QMFileLoggerTest, YoungSmallLogIsNotRotatedUnlessForced) {
  writeFile(tmp() / "debuglog.log", "12345");
  env_.setNow(Date::now());
  QMFileLogger logger(env_, options());
  std::atomic<int> calls = 0;
  logger.rotateLogIfNeeded("debuglog.log", false, std::nullopt, std::nullopt, [&] { ++calls; });
  logger.waitUntilAllOperationsAreFinished();
  EXPECT_EQ(calls, 1);
  EXPECT_THAT(diagnostics_.lines(),
              ElementsAre("[LOG] Log file: " + (tmp() / "debuglog.log").string() +
                          ", is 5 bytes of size, no need to rotate/reset yet."));
  EXPECT_EQ(readFile(tmp() / "debuglog.log"), "12345");
  EXPECT_TRUE(archived().empty());
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
  const std::vector<fs::path> zips = archived();
  ASSERT_EQ(zips.size(), 1u);
  EXPECT_THAT(zips[0].filename().string(),
              MatchesRegex("MD-[0-9]{8}_[0-9]{6}-CD-[0-9]{8}_[0-9]{6}-debuglog\\.log-NICK-bob-"
                           "CLIENT-ABCFGH\\.zip"));
  EXPECT_EQ(testing::zipContents(zips[0]), "line one\nline two\n");
  // No scratch folder is left behind.
  for (const auto& entry : fs::directory_iterator(tmp())) {
    EXPECT_THAT(entry.path().filename().string(), ::testing::AnyOf("debuglog.log", "logs-archive"));
  }
  // The trim runs on the other queue, so its report may come first.
  EXPECT_THAT(
      diagnostics_.lines(),
      ::testing::UnorderedElementsAre(
          "[LOG] Compressed and moved previous log file: " + log.string() +
              ", of 18 bytes of size, to: file://" + zips[0].string() + ".",
          ::testing::AllOf(
              StartsWith("[LOG] Trimmed log archive at: " + archive().string() + " by date : "),
              ::testing::EndsWith(". Deleted 0 files."))));
}

TEST_F(QMFileLoggerTest, RotationIsDueAboveTenMillionBytes) {
  struct Case {
    std::uintmax_t size;
    bool rotated;
  };
  for (const Case c : {Case{10'000'000, false}, Case{10'000'001, true}}) {
    testing::FakeEnv env;
    env.setNow(Date::now());
    Diagnostics diagnostics;
    const fs::path log = env.temporaryDirectory() / "big.log";
    writeFile(log, "");
    fs::resize_file(log, c.size);
    QMFileLogger logger(env, {.diagnostic = diagnostics.sink(), .zip = {}});
    logger.rotateLogIfNeeded("big.log", false, std::nullopt, std::nullopt, {});
    logger.waitUntilAllOperationsAreFinished();
    EXPECT_EQ(fs::file_size(log), c.rotated ? 0u : c.size) << c.size;
    EXPECT_EQ(fs::exists(env.temporaryDirectory() / "logs-archive"), c.rotated) << c.size;
  }
}

TEST_F(QMFileLoggerTest, RotationIsDueAfterADay) {
  const fs::path log = tmp() / "debuglog.log";
  writeFile(log, "x\n");
  env_.setNow(Date::now().addingTimeInterval(86'400.0 + 5.0));
  QMFileLogger logger(env_, options());
  logger.rotateLogIfNeeded("debuglog.log", false, std::nullopt, "XY", {});
  logger.waitUntilAllOperationsAreFinished();
  ASSERT_EQ(archived().size(), 1u);
  EXPECT_THAT(archived()[0].filename().string(),
              ::testing::EndsWith("-debuglog.log-NICK-NIL-CLIENT-XYXY.zip"));
  EXPECT_EQ(readFile(log), "");
}

// When the archive cannot be written the log is reset only if the rotation was forced.
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
    const std::vector<std::string> lines = diagnostics.lines();
    ASSERT_EQ(lines.size(), 1u) << "no trim after a failure";
    EXPECT_THAT(lines[0], StartsWith("[LOG] Failed to compress and/or save the log file: " +
                                     log.string() + ", error: "));
  }
}

// Lines submitted while a rotation runs land in the archived file and are discarded by the
// reset that the rotation queued; lines submitted after its callback are kept.
TEST_F(QMFileLoggerTest, AppendsQueuedDuringRotationAreDiscardedByItsReset) {
  if (!kQMEnableDebugLog) GTEST_SKIP() << "appends are compiled out";
  const fs::path log = tmp() / "debuglog.log";
  QMFileLogger* self = nullptr;
  QMFileLogger logger(env_,
                      {.diagnostic = diagnostics_.sink(),
                       .zip = [&](const fs::path& s, const fs::path& d, const std::string& n) {
                         QMFileHelper::zip(s, d, n, env_);
                         self->logTofile("debuglog.log", "during");
                       }});
  self = &logger;
  logger.logTofile("debuglog.log", "before");
  std::string atCallback;
  std::ifstream oldFile;  // stays on the archived file after the reset replaced it
  logger.rotateLogIfNeeded("debuglog.log", true, std::nullopt, std::nullopt, [&] {
    atCallback = readFile(log);
    oldFile.open(log, std::ios::binary);
    logger.logTofile("debuglog.log", "after");
  });
  logger.waitUntilAllOperationsAreFinished();
  EXPECT_EQ(atCallback, "01-Jan-01 00:00:00 - before\n");
  ASSERT_EQ(archived().size(), 1u);
  EXPECT_EQ(testing::zipContents(archived()[0]), "01-Jan-01 00:00:00 - before\n");
  const std::string discarded(std::istreambuf_iterator<char>(oldFile), {});
  EXPECT_EQ(discarded, "01-Jan-01 00:00:00 - before\n01-Jan-01 00:00:00 - during\n");
  EXPECT_EQ(readFile(log), "01-Jan-01 00:00:00 - after\n");
}

TEST_F(QMFileLoggerTest, TrimDeletesArchivesStrictlyOlderThanThreeDays) {
  fs::create_directories(archive());
  const Date now = Date::fromUnixSeconds(1'700'000'000.0);
  env_.setNow(now);
  struct Case {
    const char* name;
    double age;
    bool kept;
  };
  const Case cases[] = {
      {"new.zip", 10.0, true},
      {"at-cutoff.zip", 259'200.0, true},
      {"just-older.zip", 259'201.0, false},
      {"old.zip", 1'000'000.0, false},
  };
  for (const Case& c : cases) {
    writeFile(archive() / c.name, "zip");
    fs::last_write_time(archive() / c.name, std::chrono::file_clock::from_sys(
                                                now.addingTimeInterval(-c.age).toTimePoint()));
  }
  QMFileLogger logger(env_, options());
  logger.trimLogArchive();
  logger.waitUntilAllOperationsAreFinished();
  for (const Case& c : cases) EXPECT_EQ(fs::exists(archive() / c.name), c.kept) << c.name;
  EXPECT_THAT(diagnostics_.lines(),
              ElementsAre("[LOG] Trimmed log archive at: " + archive().string() +
                          " by date : 2023-11-11 22:13:20 +0000. Deleted 2 files."));
}

// The listing failure is reported by the clean-up through the log facade; the trim's own
// report follows with nothing deleted.
TEST_F(QMFileLoggerTest, TrimOfAMissingArchiveReportsTheListingError) {
  std::vector<std::string> facade;  // file messages of debuglog, on the cleanup queue
  const ScopedDebugLogFileSink sink(
      [&](std::string_view, std::string message) { facade.push_back(std::move(message)); });
  QMFileLogger logger(env_, options());
  logger.trimLogArchive();
  logger.waitUntilAllOperationsAreFinished();
  EXPECT_THAT(diagnostics_.lines(),
              ElementsAre(StartsWith("[LOG] Trimmed log archive at: " + archive().string() +
                                     " by date : 2000-12-29 00:00:00 +0000. Deleted 0 files.")));
  if (kQMEnableDebugLog) {
    ASSERT_EQ(facade.size(), 1u);
    EXPECT_THAT(facade[0], HasSubstr(", debuglog[:] [FILE]: Error when cleaning up temporary "
                                     "directory: "));
  } else {
    EXPECT_TRUE(facade.empty());
  }
}

TEST_F(QMFileLoggerTest, ShippingListHoldsEveryArchivedLog) {
  fs::create_directories(archive());
  for (const char* name : {"MD-a.zip", "shipping-b.zip", "c.txt"}) writeFile(archive() / name, "");
  QMFileLogger logger(env_, options());
  std::vector<std::string> names;
  for (const fs::path& url : logger.archiveLogURLsToShip()) {
    EXPECT_EQ(url.parent_path(), archive());
    names.push_back(url.filename().string());
  }
  std::sort(names.begin(), names.end());
  EXPECT_THAT(names, ElementsAre("MD-a.zip", "c.txt", "shipping-b.zip"));
  EXPECT_TRUE(diagnostics_.lines().empty());
}

TEST_F(QMFileLoggerTest, ShippingListIsEmptyWhenTheArchiveCannotBeListed) {
  struct Case {
    const char* what;
    std::function<void(const fs::path& archive)> setUp;
    const char* error;
  };
  const Case cases[] = {
      {"missing", [](const fs::path&) {}, "No such file or directory"},
      {"a file", [](const fs::path& a) { writeFile(a, ""); }, "Not a directory"},
  };
  for (const Case& c : cases) {
    testing::FakeEnv env;
    Diagnostics diagnostics;
    c.setUp(env.temporaryDirectory() / "logs-archive");
    const QMFileLogger logger(env, {.diagnostic = diagnostics.sink(), .zip = {}});
    EXPECT_TRUE(logger.archiveLogURLsToShip().empty()) << c.what;
    const std::vector<std::string> lines = diagnostics.lines();
    ASSERT_EQ(lines.size(), 1u) << c.what;
    EXPECT_THAT(lines[0], StartsWith("[LOG]: Can't read log archive directory: Error Domain="));
    EXPECT_THAT(lines[0], HasSubstr(c.error)) << c.what;
  }
}

}  // namespace
}  // namespace qm
