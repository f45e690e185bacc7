// The downloader against a server that fails: hang-ups, silence, short bodies, slow bodies,
// large bodies and many clients at once.

#include <gtest/gtest.h>

#include <atomic>
#include <thread>
#include <vector>

#include "qmcore/files/FileUrlDownloader.hpp"
#include "qmcore/testing/ClosingServer.hpp"
#include "qmcore/testing/DownloadTestServer.hpp"
#include "qmcore/testing/FakeEnv.hpp"

namespace qm {
namespace {

constexpr std::int64_t kCurlPartialFile = 18;
constexpr std::int64_t kCurlTimedOut = 28;

// Error 204 over a transport error with `curlCode` (any code for 0).
void expectTransportError(const std::optional<Error>& error, std::int64_t curlCode) {
  ASSERT_TRUE(error.has_value());
  EXPECT_EQ(error->domain(), "download");
  EXPECT_EQ(error->code(), 204);
  ASSERT_NE(error->underlyingError(), nullptr);
  EXPECT_EQ(error->underlyingError()->domain(), kHttpTransportErrorDomain);
  if (curlCode != 0) {
    EXPECT_EQ(error->underlyingError()->code(), curlCode);
  }
}

// Time-outs of 2 s keep the waits short, yet a loopback response still meets them under
// ThreadSanitizer on a busy machine.
class FileUrlDownloaderFaultsTest : public ::testing::Test {
 protected:
  static constexpr double kTimeout = 2;
  FileUrlDownloaderFaultsTest() { FileUrlDownloader::setTimeouts({kTimeout, kTimeout}); }
  ~FileUrlDownloaderFaultsTest() override { FileUrlDownloader::setTimeouts(saved_); }

  const FileUrlDownloaderTimeouts saved_ = FileUrlDownloader::timeouts();
  testing::DownloadTestServer server_;
};

TEST_F(FileUrlDownloaderFaultsTest, TransportErrorsOfDataGetsCarryTheirDescription) {
  testing::ClosingServer closing;
  const struct {
    std::string url;
    std::int64_t curlCode;  // 0: either "got nothing" or "connection reset"
  } cases[] = {
      {server_.url("/short/0"), kCurlPartialFile},
      {server_.url("/silent/4000"), kCurlTimedOut},
      {server_.url("/short/4000"), kCurlTimedOut},  // silent after 10 of 100 bytes
      {closing.url("/x"), 0},
  };
  for (const auto& c : cases) {
    std::optional<Error> error;
    EXPECT_FALSE(FileUrlDownloader::dataWithGetFromUrlString(c.url, &error).has_value());
    expectTransportError(error, c.curlCode);
    EXPECT_EQ(error->localizedDescription(), error->underlyingError()->localizedDescription());
    // The time-out counts from the last byte, wherever the silence falls.
    if (c.curlCode == kCurlTimedOut) {
      EXPECT_LT(server_.silentFor(), kTimeout + 1.5) << c.url;
    }
  }
}

TEST_F(FileUrlDownloaderFaultsTest, TextAndJsonGetsWrapTransportErrors) {
  std::optional<Error> error;
  EXPECT_FALSE(
      FileUrlDownloader::stringWithGetFromUrlString(server_.url("/short/0"), &error).has_value());
  expectTransportError(error, kCurlPartialFile);
  // The text GET's error has no description of its own.
  EXPECT_EQ(error->userInfo().count(std::string(kLocalizedDescriptionKey)), 0u);

  error.reset();
  EXPECT_FALSE(
      FileUrlDownloader::jsonDictionaryWithGetFromUrlString(server_.url("/short/0"), &error));
  ASSERT_TRUE(error.has_value());
  EXPECT_EQ(error->code(), 204);
  expectTransportError(*error->underlyingError(), kCurlPartialFile);
  EXPECT_EQ(FileUrlDownloader::getStringWithPostFromUrlString(server_.url("/short/0"), "a=1"), "");
}

TEST_F(FileUrlDownloaderFaultsTest, TheTimeOutIsAnIdleTimeOut) {
  // 12 bytes, one every 200 ms: 2.4 s in all against a time-out of 2 s.
  std::optional<Error> error;
  EXPECT_EQ(FileUrlDownloader::dataWithGetFromUrlString(server_.url("/slow/12/200"), &error),
            std::string(12, 's'));
  EXPECT_FALSE(error.has_value());
}

TEST_F(FileUrlDownloaderFaultsTest, TextGetsGiveUpAfterFiveSilentSeconds) {
  EXPECT_EQ(saved_.text, 5.0);
  EXPECT_EQ(saved_.data, 20.0);
  FileUrlDownloader::setTimeouts(saved_);
  std::optional<Error> error;
  EXPECT_FALSE(FileUrlDownloader::stringWithGetFromUrlString(server_.url("/short/30000"), &error)
                   .has_value());
  expectTransportError(error, kCurlTimedOut);
  EXPECT_GE(server_.silentFor(), 4.5);
  EXPECT_LT(server_.silentFor(), 6.5);
}

TEST_F(FileUrlDownloaderFaultsTest, HundredMegabytesDownloadWithTheirDigestChecked) {
  testing::FakeEnv env;
  const auto to = env.temporaryDirectory() / "big.bin";
  const std::optional<Error> error =
      server_.download("/big", to, testing::DownloadTestServer::kBigMd5);
  ASSERT_FALSE(error.has_value()) << error->localizedDescription();
  EXPECT_EQ(std::filesystem::file_size(to), testing::DownloadTestServer::kBigSize);
}

TEST(FileUrlDownloaderConcurrencyTest, ManyThreadsShareConnections) {
  testing::DownloadTestServer server;
  std::atomic<int> succeeded = 0;
  std::vector<std::thread> threads;
  for (int t = 0; t < 8; ++t) {
    threads.emplace_back([&server, &succeeded] {
      for (int i = 0; i < 50; ++i) {
        std::optional<Error> error;
        const auto data =
            FileUrlDownloader::dataWithGetFromUrlString(server.url("/status/200"), &error);
        if (data == "status body" && !error.has_value()) ++succeeded;
      }
    });
  }
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(succeeded.load(), 8 * 50);
  // One connection per thread would do; a connection per request would be 400.
  EXPECT_LE(server.server().connectionCount(), 2u * 8);
}

}  // namespace
}  // namespace qm
