#include "qmcore/platform/Error.hpp"

#include <gtest/gtest.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <memory>
#include <regex>
#include <string>
#include <thread>
#include <vector>

#include "qmcore/platform/ConsoleLog.hpp"
#include "qmcore/testing/FileTesting.hpp"

namespace qm {
namespace {

// One link of a chain: description and failure reason ("" for none).
struct Link {
  std::string description;
  std::string reason;
};

// Builds the chain top first: links[0] is the outermost error.
Error makeChain(const std::vector<Link>& links) {
  std::shared_ptr<const Error> below;
  for (auto it = links.rbegin(); it != links.rend(); ++it) {
    const auto depth = static_cast<std::int64_t>(links.rend() - it - 1);
    below = std::make_shared<const Error>("test", depth, it->description, it->reason, below);
  }
  return *below;
}

TEST(ErrorTest, RundownJoinsTheChainAndLeafIsTheDeepest) {
  const struct {
    std::vector<Link> links;
    std::string rundown;
  } cases[] = {
      // Alone: the description only, even with a failure reason of its own.
      {{{"A", "top reason"}}, "A"},
      // The top's reason never shows; an underlying reason gets ": R.".
      {{{"A", "top reason"}, {"B", "R"}}, "A, B: R."},
      {{{"A", ""}, {"B", "R1"}, {"C", ""}}, "A, B: R1., C"},
  };
  for (const auto& c : cases) {
    const Error error = makeChain(c.links);
    EXPECT_EQ(error.errorRundownText(), c.rundown);
    const std::optional<Error> leaf = error.leafUnderlyingError();
    ASSERT_TRUE(leaf.has_value());
    EXPECT_EQ(leaf->code(), static_cast<std::int64_t>(c.links.size() - 1));
  }
}

TEST(ErrorTest, TextsWithoutADescriptionUseTheGenericOne) {
  const Error error("download", 204, "", "", std::make_shared<const Error>("posix", 2, "", "gone"));
  EXPECT_EQ(error.errorRundownText(),
            "The operation couldn't be completed. (download error 204.), The operation couldn't "
            "be completed. (posix error 2.): gone.");
  EXPECT_EQ(Error("posix", 2, "No such file").description(),
            "Error Domain=posix Code=2 \"No such file\"");
}

TEST(ConsoleLogTest, LineCarriesStampProcessThreadAndText) {
  const std::string line = consoleLogLine("zipping failed");
  const std::string ids = std::to_string(::getpid()) + ":" + std::to_string(::syscall(SYS_gettid));
  EXPECT_TRUE(
      std::regex_match(line, std::regex(R"(\d{4}-\d\d-\d\d \d\d:\d\d:\d\d\.\d{3} qmcore\[)" + ids +
                                        R"(\] zipping failed)")))
      << line;
}

TEST(ConsoleLogTest, WritesOneWholeLinePerCallOnStderrFromManyThreads) {
  testing::ConsoleCapture console;
  std::vector<std::thread> threads;
  for (int t = 0; t < 4; ++t) {
    threads.emplace_back([t] {
      for (int i = 0; i < 50; ++i) consoleLog("thread " + std::to_string(t) + " line");
    });
  }
  for (std::thread& thread : threads) thread.join();
  const std::vector<std::string> lines = console.texts();
  EXPECT_EQ(lines.size(), 200u);
  for (const std::string& line : lines)
    EXPECT_TRUE(std::regex_match(line, std::regex("thread \\d line")));
}

}  // namespace
}  // namespace qm
