#include "qmcore/files/QMProfiler.hpp"

#include <gtest/gtest.h>

#include <optional>
#include <regex>
#include <string>
#include <vector>

#include "qmcore/files/DebugLog.hpp"

namespace qm {
namespace {

TEST(QMProfilerTest, FootprintTextRoundsThroughFloatThenWholeMebibytes) {
  const struct {
    std::optional<std::uint64_t> bytes;
    std::string text;
  } cases[] = {
      {std::nullopt, "memory: NA"},
      {1048575, "memory: 0 MB"},
      {1048576, "memory: 1 MB"},
      // 2^30 - 1 needs 30 bits: the float rounds it up to 2^30, 1024 MB.
      {(1u << 30) - 1, "memory: 1024 MB"},
      {UINT64_MAX, "memory: 17592186044415 MB"},
  };
  for (const auto& c : cases) EXPECT_EQ(QMProfiler::footprintText(c.bytes), c.text);
}

TEST(QMProfilerTest, FootprintAddsAnonymousAndSwappedMemory) {
  const struct {
    std::string status;
    std::optional<std::uint64_t> bytes;
  } cases[] = {
      {"Name:\tqmcore\nVmRSS:\t  9000 kB\nRssAnon:\t  2048 kB\nVmSwap:\t  1024 kB\n", 3072 * 1024},
      {"RssAnon:\t100 kB\n", 100 * 1024},  // no swap line: none swapped
      {"VmSwap:\t1 kB\nRssAnon:\t1 kB", 2048},
      {"XRssAnon:\t5 kB\n", std::nullopt},                    // not at a line start
      {"RssAnon:\tlots kB\n", std::nullopt},                  // not a number
      {"RssAnon:\t5 MB\n", std::nullopt},                     // not kB
      {"RssAnon:\t99999999999999999999 kB\n", std::nullopt},  // overflows
  };
  for (const auto& c : cases) {
    EXPECT_EQ(QMProfiler::footprintFromProcStatus(c.status), c.bytes) << c.status;
  }
}

TEST(QMProfilerTest, LogsThisProcessesFootprintUnderItsContext) {
  EXPECT_TRUE(std::regex_match(QMProfiler::memoryFootprint(), std::regex("memory: \\d+ MB")));
  std::vector<std::string> messages;
  const ScopedDebugLogFileSink sink(
      [&](std::string_view, std::string message) { messages.push_back(message); });
  ::testing::internal::CaptureStdout();
  QMProfiler::logMemoryFootprint("ctx");
  QMProfiler::logMemoryFootprint(std::nullopt);
  const std::string out = ::testing::internal::GetCapturedStdout();
  if (!kQMEnableDebugLog) {
    EXPECT_EQ(out, "");
    EXPECT_TRUE(messages.empty());
    return;
  }
  ASSERT_EQ(messages.size(), 2u);
  const std::string footprint = " Current memory footpint is: memory: \\d+ MB$";
  EXPECT_TRUE(std::regex_search(messages[0], std::regex("\\[MEMORY\\]\\[ctx\\]" + footprint)));
  EXPECT_TRUE(
      std::regex_search(messages[1], std::regex("debuglog\\[:\\] \\[MEMORY\\]\\[\\]" + footprint)))
      << messages[1];
}

}  // namespace
}  // namespace qm
