#include "qmcore/files/QMFileLogger.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <filesystem>
#include <fstream>
#include <future>
#include <iterator>
#include <optional>
#include <regex>
#include <sstream>
#include <string>
#include <thread>
#include <vector>

#include "qmcore/files/DebugLog.hpp"
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

// Each line carries the time it was written, renewed each second; a name's leading "/" stays
// in the log folder. Appends that cannot open their file (here a folder in its place) print one
// line each on standard output and nothing else; a reset puts an empty file in its place.
TEST_F(QMFileLoggerTest, AppendsLinesWithTheTimeOfWritingWhenTheDebugLogIsOn) {
  const fs::path log = tmp() / "debuglog.log";
  const fs::path blocked = tmp() / "blocked.log";
  writeFile(tmp() / "other.log", "old line without end");
  fs::create_directories(blocked / "inside");
  QMFileLogger logger(env_, options());
  ::testing::internal::CaptureStdout();
  logger.logTofile("debuglog.log", "first");
  logger.logTofile("/other.log", "elsewhere");
  logger.logTofile("debuglog.log", std::nullopt);  // ignored
  logger.logTofile("blocked.log", "one");
  logger.logTofile("blocked.log", "two");
  logger.waitUntilAllOperationsAreFinished();
  const std::string printed = ::testing::internal::GetCapturedStdout();
  env_.advance(61.5);
  logger.logTofile("debuglog.log", "");
  logger.resetLog("blocked.log");
  logger.logTofile("blocked.log", "three");
  logger.waitUntilAllOperationsAreFinished();
  EXPECT_TRUE(diagnostics_.lines().empty());
  if (!kQMEnableDebugLog) {
    EXPECT_EQ(printed + readFile(log) + readFile(blocked), "");
    return;
  }
  EXPECT_EQ(readFile(log), "01-Jan-01 00:00:00 - first\n01-Jan-01 00:01:01 - \n");
  EXPECT_EQ(readFile(tmp() / "other.log"), "old line without end01-Jan-01 00:00:00 - elsewhere\n");
  const std::string first = printed.substr(0, printed.find('\n') + 1);
  EXPECT_THAT(first,
              StartsWith("Can't write to log file at url: file://" + blocked.string() +
                         ", error: Error Domain=NSPOSIXErrorDomain Code=21 \"Is a directory"));
  EXPECT_EQ(printed, first + first);
  EXPECT_EQ(readFile(blocked), "01-Jan-01 00:01:01 - three\n");
}

// Without force a log is rotated only when it is due, and a log that does not exist never is.
// A rotation zips the log under its archive name, queues the reset and a trim, and calls back
// before the reset: the callback still sees the old content.
TEST_F(QMFileLoggerTest, RotationArchivesADueOrForcedLogThenResetsIt) {
  const fs::path log = tmp() / "debuglog.log";
  writeFile(log, "line one\nline two\n");
  env_.setNow(Date::now());
  QMFileLogger logger(env_, options());
  std::atomic<int> calls = 0;
  logger.rotateLogIfNeeded("missing.log", true, "nick", "client", [&] { ++calls; });
  logger.rotateLogIfNeeded("debuglog.log", false, std::nullopt, std::nullopt, [&] { ++calls; });
  std::string seenByCallback;
  logger.rotateLogIfNeeded("debuglog.log", true, "bob", "ABCDEFGH",
                           [&] { seenByCallback = readFile(log); });
  logger.waitUntilAllOperationsAreFinished();
  EXPECT_EQ(calls, 2);
  EXPECT_FALSE(fs::exists(tmp() / "missing.log"));
  EXPECT_EQ(seenByCallback, "line one\nline two\n");
  EXPECT_EQ(readFile(log), "");
  const std::vector<std::string> names = testing::tree(archive());
  ASSERT_THAT(names,
              ElementsAre(::testing::MatchesRegex("MD-[0-9]{8}_[0-9]{6}-CD-[0-9]{8}_[0-9]{6}-"
                                                  "debuglog\\.log-NICK-bob-CLIENT-ABCFGH\\.zip")));
  const fs::path zip = archive() / names[0];
  EXPECT_EQ(testing::zipContents(zip), "line one\nline two\n");
  // The trim's report comes from the other queue, so it may come first.
  EXPECT_THAT(
      diagnostics_.lines(),
      ::testing::UnorderedElementsAre(
          "[LOG] Log file: " + log.string() + ", is 18 bytes of size, no need to rotate/reset yet.",
          "[LOG] Compressed and moved previous log file: " + log.string() +
              ", of 18 bytes of size, to: file://" + zip.string() + ".",
          StartsWith("[LOG] Trimmed log archive at: ")));

  env_.advance(86'400.0 + 5.0);  // a day later the new log is due
  logger.rotateLogIfNeeded("debuglog.log", false, std::nullopt, "XY", {});
  logger.waitUntilAllOperationsAreFinished();
  EXPECT_THAT(testing::tree(archive()),
              ::testing::Contains(EndsWith("-debuglog.log-NICK-NIL-CLIENT-XYXY.zip")));
}

// When the archive cannot be written the log is reset only if the rotation was forced, and no
// trim follows; a log above ten million bytes is due without force.
TEST_F(QMFileLoggerTest, FailedCompressionResetsOnlyWhenForced) {
  writeFile(tmp() / "big.log", std::string(10'000'001, 'x'));
  writeFile(tmp() / "forced.log", "12345");
  writeFile(archive(), "a file where the archive folder belongs");
  QMFileLogger logger(env_, options());
  std::atomic<int> calls = 0;
  logger.rotateLogIfNeeded("big.log", false, std::nullopt, std::nullopt, [&] { ++calls; });
  logger.rotateLogIfNeeded("forced.log", true, std::nullopt, std::nullopt, [&] { ++calls; });
  logger.waitUntilAllOperationsAreFinished();
  EXPECT_EQ(calls, 2);
  EXPECT_EQ(fs::file_size(tmp() / "big.log"), 10'000'001u);
  EXPECT_EQ(fs::file_size(tmp() / "forced.log"), 0u);
  const std::string failed = "[LOG] Failed to compress and/or save the log file: " + tmp().string();
  EXPECT_THAT(diagnostics_.lines(), ElementsAre(StartsWith(failed + "/big.log, error: "),
                                                StartsWith(failed + "/forced.log, error: ")));
}

// Without an archive folder the trim deletes nothing and the clean-up reports the listing error
// through the log facade. Then the trim deletes archives strictly older than three days; every
// archive ships, since names that begin with "shipping" are looked for in the absolute path.
TEST_F(QMFileLoggerTest, TrimAndShipping) {
  std::vector<std::string> facade;  // file messages of debuglog, on the cleanup queue
  const ScopedDebugLogFileSink sink(
      [&](std::string_view, std::string message) { facade.push_back(std::move(message)); });
  const Date now = Date::fromUnixSeconds(kNow);
  env_.setNow(now);
  QMFileLogger logger(env_, options());
  logger.trimLogArchive();
  logger.waitUntilAllOperationsAreFinished();
  EXPECT_TRUE(logger.archiveLogURLsToShip().empty());
  EXPECT_THAT(facade, ::testing::Each(::testing::HasSubstr("[FILE]: Error when cleaning up")));
  EXPECT_EQ(facade.size(), kQMEnableDebugLog ? 1u : 0u);

  const std::pair<const char*, double> ages[] = {
      {"at-cutoff.zip", 259'200.0}, {"older.zip", 259'201.0}, {"shipping-b.zip", 0.0}};
  for (const auto& [name, age] : ages) {
    writeFile(archive() / name, "zip");
    fs::last_write_time(archive() / name, std::chrono::file_clock::from_sys(
                                              now.addingTimeInterval(-age).toTimePoint()));
  }
  logger.trimLogArchive();
  logger.waitUntilAllOperationsAreFinished();
  EXPECT_THAT(
      logger.archiveLogURLsToShip(),
      ::testing::UnorderedElementsAre(archive() / "at-cutoff.zip", archive() / "shipping-b.zip"));
  EXPECT_FALSE(QMFileLoggerRules::isShippable("shipping-b.zip"));
  const std::string trimmed = "[LOG] Trimmed log archive at: " + archive().string() +
                              " by date : 2023-11-11 22:13:20 +0000. Deleted ";
  EXPECT_THAT(
      diagnostics_.lines(),
      ElementsAre(trimmed + "0 files.",
                  "[LOG]: Can't read log archive directory: Error Domain=NSPOSIXErrorDomain "
                  "Code=2 \"No such file or directory\"",
                  trimmed + "1 files."));
}

// An unknown size is due; an unknown creation date counts as 1970.
TEST(QMFileLoggerRulesTest, RotationIsDueAboveTheSizeOrAgeLimit) {
  const struct {
    std::optional<std::uint64_t> size;
    std::optional<double> created;  // seconds since 1970
    double now;
    bool due;
  } cases[] = {
      {10'000'000, kNow - 60.0, kNow, false},  {10'000'001, kNow - 60.0, kNow, true},
      {std::nullopt, kNow - 60.0, kNow, true}, {10, kNow - 86'400.0, kNow, false},
      {10, kNow - 86'400.001, kNow, true},     {10, std::nullopt, 86'400.0, false},
  };
  for (const auto& c : cases) {
    const std::optional<Date> created =
        c.created ? std::optional(Date::fromUnixSeconds(*c.created)) : std::nullopt;
    EXPECT_EQ(QMFileLoggerRules::isRotationDue(c.size, created, Date::fromUnixSeconds(c.now)),
              c.due)
        << c.size.value_or(0) << " bytes, created " << c.created.value_or(0);
  }
}

// Absent parts read NIL; the client part is the first and the last three characters (not
// bytes), repeated when short. The logger names archives on its queue while other threads may
// do the same.
TEST(QMFileLoggerRulesTest, ArchiveNamesFromManyThreadsAtOnce) {
  std::vector<std::thread> threads;
  for (int t = 0; t < 4; ++t) {
    threads.emplace_back([] {
      EXPECT_EQ(QMFileLoggerRules::archiveName("d.log", "M", "C", "", "ABCD"),
                "MD-M-CD-C-d.log-NICK--CLIENT-ABCBCD");
      EXPECT_EQ(QMFileLoggerRules::archiveName("d.log", std::nullopt, std::nullopt, std::nullopt,
                                               std::nullopt),
                "MD-NIL-CD-NIL-d.log-NICK-NIL-CLIENT-NIL");
      EXPECT_EQ(QMFileLoggerRules::clientPart("ABC"), "ABCABC");
      EXPECT_EQ(QMFileLoggerRules::clientPart("\U0001F1E9\U0001F1EAxyze\u0301"),
                "\U0001F1E9\U0001F1EAxyyze\u0301");
    });
  }
  for (std::thread& thread : threads) thread.join();
}

constexpr int kThreads = 8;
constexpr int kLinesPerThread = 100'000;

// Eight threads append numbered lines while forced rotations run, each once the previous reset
// is done. Each archive holds what the log held at its rotation's callback; later lines go with
// the old file, which the reset discards. Old files and the last log hold every line, whole and
// in its thread's order.
TEST(QMFileLoggerLoadTest, RotationsWhileWritingLoseOnlyTheLinesQueuedDuringThem) {
  if (!kQMEnableDebugLog) GTEST_SKIP() << "appends are compiled out";
  testing::FakeEnv env;
  QMFileLogger logger(env, {.diagnostic = [](const std::string&) {}, .zip = {}});
  const fs::path log = env.temporaryDirectory() / "debuglog.log";
  const fs::path archive = env.temporaryDirectory() / "logs-archive";
  std::vector<std::thread> threads;
  for (int t = 0; t < kThreads; ++t) {
    threads.emplace_back([&logger, t] {
      const std::string prefix = "T" + std::to_string(t) + " ";
      for (int i = 0; i < kLinesPerThread; ++i) {
        logger.logTofile("debuglog.log", prefix + std::to_string(i));
      }
    });
  }
  std::string written;  // each old file in turn, then the last log
  // A rotation of a log not yet made archives nothing; start once the first lines are in.
  while (!fs::exists(log)) {
    std::this_thread::sleep_for(std::chrono::milliseconds(1));
  }
  for (int rotated = 0; rotated < 4; ++rotated) {
    std::this_thread::sleep_for(std::chrono::milliseconds(50));
    std::uintmax_t size = 0;
    std::ifstream old;  // still readable after the reset
    std::promise<void> calledBack;
    logger.rotateLogIfNeeded("debuglog.log", true, std::to_string(rotated), std::nullopt, [&] {
      size = fs::file_size(log);
      old.open(log, std::ios::binary);
      calledBack.set_value();
    });
    calledBack.get_future().wait();
    std::promise<void> afterReset;  // queued behind the reset, which the callback precedes
    logger.queue().async([&] { afterReset.set_value(); });
    afterReset.get_future().wait();
    const std::string text(std::istreambuf_iterator<char>(old), {});
    std::string zip = "missing.zip";  // which reads as unzip's complaint
    for (const std::string& name : testing::tree(archive)) {
      if (name.find("-NICK-" + std::to_string(rotated) + "-") != std::string::npos) zip = name;
    }
    EXPECT_EQ(testing::zipContents(archive / zip), text.substr(0, size)) << "rotation " << rotated;
    written += text;
  }
  for (std::thread& thread : threads) thread.join();
  logger.waitUntilAllOperationsAreFinished();
  written += testing::readFile(log);

  static const std::regex kLine(R"([0-9]{2}-[A-Z][a-z]{2}-[0-9]{2} [0-9:]{8} - T([0-9]) ([0-9]+))");
  std::vector<int> next(kThreads, 0);
  std::istringstream in(written);
  std::smatch match;
  for (std::string line; std::getline(in, line);) {
    ASSERT_TRUE(std::regex_match(line, match, kLine)) << "torn line '" << line << "'";
    const int thread = std::stoi(match[1]);
    ASSERT_EQ(std::stoi(match[2]), next[thread]) << "thread " << thread << " out of order";
    ++next[thread];
  }
  EXPECT_EQ(written.back(), '\n') << "last line torn";
  for (int t = 0; t < kThreads; ++t) EXPECT_EQ(next[t], kLinesPerThread) << "thread " << t;
}

}  // namespace
}  // namespace qm
