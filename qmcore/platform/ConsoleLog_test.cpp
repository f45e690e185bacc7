#include "qmcore/platform/ConsoleLog.hpp"

#include <gtest/gtest.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <regex>
#include <string>
#include <thread>
#include <vector>

namespace qm {
namespace {

TEST(ConsoleLogTest, LineCarriesStampProcessThreadAndText) {
  const std::string line = consoleLogLine("zipping failed");
  const std::string ids = std::to_string(::getpid()) + ":" + std::to_string(::syscall(SYS_gettid));
  EXPECT_TRUE(
      std::regex_match(line, std::regex(R"(\d{4}-\d\d-\d\d \d\d:\d\d:\d\d\.\d{3} qmcore\[)" + ids +
                                        R"(\] zipping failed)")))
      << line;
}

TEST(ConsoleLogTest, WritesOneWholeLinePerCallOnStderrFromManyThreads) {
  ::testing::internal::CaptureStderr();
  std::vector<std::thread> threads;
  for (int t = 0; t < 4; ++t) {
    threads.emplace_back([t] {
      for (int i = 0; i < 50; ++i) consoleLog("thread " + std::to_string(t) + " line");
    });
  }
  for (std::thread& thread : threads) thread.join();
  const std::string out = ::testing::internal::GetCapturedStderr();
  const std::regex whole(R"(\S+ \S+ qmcore\[\d+:\d+\] thread \d line)");
  std::size_t lines = 0;
  std::size_t start = 0;
  for (std::size_t end = out.find('\n'); end != std::string::npos;
       start = end + 1, end = out.find('\n', start)) {
    EXPECT_TRUE(std::regex_match(out.substr(start, end - start), whole));
    ++lines;
  }
  EXPECT_EQ(lines, 200u);
  EXPECT_EQ(start, out.size());  // nothing after the last line feed
}

}  // namespace
}  // namespace qm
