// The logger under load: many threads appending at once, with and without rotations.

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <filesystem>
#include <fstream>
#include <future>
#include <iterator>
#include <memory>
#include <regex>
#include <sstream>
#include <string>
#include <thread>
#include <vector>

#include "qmcore/files/QMFileLogger.hpp"
#include "qmcore/platform/BuildConfig.hpp"
#include "qmcore/testing/FakeEnv.hpp"
#include "qmcore/testing/FileTesting.hpp"

namespace qm {
namespace {

namespace fs = std::filesystem;

constexpr int kThreads = 8;
constexpr int kLinesPerThread = 100'000;

// Checks that `text` holds only whole lines "<time> - T<thread> <n>", each thread's numbers
// following on from `next` without gaps; returns the number of lines.
int checkLines(const std::string& text, std::vector<int>& next, const std::string& piece) {
  static const std::regex kLine(R"([0-9]{2}-[A-Z][a-z]{2}-[0-9]{2} [0-9:]{8} - T([0-9]) ([0-9]+))");
  int count = 0;
  std::istringstream in(text);
  std::smatch match;
  for (std::string line; std::getline(in, line);) {
    EXPECT_TRUE(std::regex_match(line, match, kLine)) << piece << ": torn line '" << line << "'";
    if (match.empty()) return count;
    const int thread = std::stoi(match[1]);
    const int number = std::stoi(match[2]);
    EXPECT_EQ(number, next[thread]) << piece << ": thread " << thread << " out of order";
    next[thread] = number + 1;
    ++count;
  }
  EXPECT_TRUE(text.empty() || text.back() == '\n') << piece << ": last line torn";
  return count;
}

// Eight threads append numbered lines while up to `rotations` forced rotations run, each
// started once the previous one's reset is done. Every line must end up whole and in its
// thread's order: in an archive, in the log, or in the part of an old file written after its
// rotation's callback, which the queued reset discards.
void appendUnderLoad(int rotations) {
  if (!kQMEnableDebugLog) GTEST_SKIP() << "appends are compiled out";
  testing::FakeEnv env;
  testing::Diagnostics diagnostics;
  QMFileLogger logger(env, {.diagnostic = diagnostics.sink(), .zip = {}});
  const fs::path log = env.temporaryDirectory() / "debuglog.log";
  std::atomic<int> running = kThreads;
  std::vector<std::thread> threads;
  for (int t = 0; t < kThreads; ++t) {
    threads.emplace_back([&logger, &running, t] {
      const std::string prefix = "T" + std::to_string(t) + " ";
      for (int i = 0; i < kLinesPerThread; ++i) {
        logger.logTofile("debuglog.log", prefix + std::to_string(i));
      }
      --running;
    });
  }
  // What the log held at each callback, and the old file kept open past the reset.
  std::vector<std::pair<std::uintmax_t, std::unique_ptr<std::ifstream>>> records;
  // A rotation of a log not yet made archives nothing; start once the first lines are in.
  while (rotations > 0 && !fs::exists(log))
    std::this_thread::sleep_for(std::chrono::milliseconds(1));
  for (int nick = 0; nick < rotations && running > 0; ++nick) {
    std::this_thread::sleep_for(std::chrono::milliseconds(50));
    std::promise<void> calledBack;
    logger.rotateLogIfNeeded("debuglog.log", true, std::to_string(nick), std::nullopt, [&] {
      records.emplace_back(fs::file_size(log),
                           std::make_unique<std::ifstream>(log, std::ios::binary));
      calledBack.set_value();
    });
    calledBack.get_future().wait();
    std::promise<void> afterReset;  // queued behind the reset, which the callback precedes
    logger.queue().async([&] { afterReset.set_value(); });
    afterReset.get_future().wait();
  }
  for (std::thread& thread : threads) thread.join();
  logger.waitUntilAllOperationsAreFinished();
  ASSERT_EQ(records.empty(), rotations == 0);

  std::vector<int> next(kThreads, 0);
  int kept = 0;
  int discarded = 0;
  for (size_t i = 0; i < records.size(); ++i) {
    const std::string old(std::istreambuf_iterator<char>(*records[i].second), {});
    fs::path zip;
    for (const auto& entry : fs::directory_iterator(env.temporaryDirectory() / "logs-archive")) {
      if (entry.path().string().find("-NICK-" + std::to_string(i) + "-") != std::string::npos) {
        zip = entry.path();
      }
    }
    ASSERT_FALSE(zip.empty()) << "archive of rotation " << i;
    const std::string archived = testing::zipContents(zip);
    EXPECT_EQ(archived, old.substr(0, records[i].first)) << "rotation " << i;
    kept += checkLines(archived, next, "archive " + std::to_string(i));
    discarded += checkLines(old.substr(archived.size()), next, "discarded " + std::to_string(i));
  }
  kept += checkLines(testing::readFile(log), next, "log");
  EXPECT_EQ(kept + discarded, kThreads * kLinesPerThread);
  for (int t = 0; t < kThreads; ++t) EXPECT_EQ(next[t], kLinesPerThread) << "thread " << t;
  std::printf("%zu rotations, %d lines kept, %d discarded by the resets\n", records.size(), kept,
              discarded);
}

TEST(QMFileLoggerLoadTest, ConcurrentAppendsKeepEveryLineWholeAndInOrder) { appendUnderLoad(0); }

TEST(QMFileLoggerLoadTest, RotationsWhileWritingLoseOnlyTheLinesQueuedDuringThem) {
  appendUnderLoad(4);
}

}  // namespace
}  // namespace qm
