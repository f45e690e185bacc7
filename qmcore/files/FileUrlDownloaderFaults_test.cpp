// The downloader against a server that fails: hang-ups, silence, short bodies, slow bodies,
// large bodies and many clients at once.

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <fstream>
#include <thread>
#include <vector>

#include "qmcore/files/FileUrlDownloader.hpp"
#include "qmcore/files/MD5.hpp"
#include "qmcore/testing/ClosingServer.hpp"
#include "qmcore/testing/DownloadTestServer.hpp"
#include "qmcore/testing/FakeEnv.hpp"

namespace qm {
namespace {

// Shortens the time-outs to 2 s for one test, so that waiting for them keeps the suite fast:
// long enough still for a loopback response under ThreadSanitizer on a busy machine.
class ShortTimeouts {
 public:
  ShortTimeouts() : saved_(FileUrlDownloader::timeouts()) {
    FileUrlDownloader::setTimeouts({.text = 2, .data = 2});
  }
  ~ShortTimeouts() { FileUrlDownloader::setTimeouts(saved_); }

 private:
  const FileUrlDownloaderTimeouts saved_;
};

// Silent for twice the short time-out.
constexpr const char* kSilentPath = "/silent/4000";

constexpr std::int64_t kCurlPartialFile = 18;
constexpr std::int64_t kCurlTimedOut = 28;

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

class FileUrlDownloaderFaultsTest : public ::testing::Test {
 protected:
  testing::DownloadTestServer server_;
};

TEST_F(FileUrlDownloaderFaultsTest, TransportErrorsOfDataGetsCarryTheirDescription) {
  const ShortTimeouts fast;
  testing::ClosingServer closing;
  const struct {
    std::string url;
    std::int64_t curlCode;  // 0: either "got nothing" or "connection reset"
  } cases[] = {
      {server_.url("/short"), kCurlPartialFile},
      {server_.url(kSilentPath), kCurlTimedOut},
      {closing.url("/x"), 0},
  };
  for (const auto& c : cases) {
    std::optional<Error> error;
    EXPECT_FALSE(FileUrlDownloader::dataWithGetFromUrlString(c.url, &error).has_value());
    expectTransportError(error, c.curlCode);
    EXPECT_EQ(error->localizedDescription(), error->underlyingError()->localizedDescription());
  }
}

TEST_F(FileUrlDownloaderFaultsTest, TextAndJsonGetsWrapTransportErrors) {
  const ShortTimeouts fast;
  std::optional<Error> error;
  EXPECT_FALSE(
      FileUrlDownloader::stringWithGetFromUrlString(server_.url(kSilentPath), &error).has_value());
  expectTransportError(error, kCurlTimedOut);
  // The text GET's error has no description of its own.
  EXPECT_EQ(error->userInfo().count(std::string(kLocalizedDescriptionKey)), 0u);

  error.reset();
  EXPECT_FALSE(FileUrlDownloader::jsonDictionaryWithGetFromUrlString(server_.url("/short"), &error)
                   .has_value());
  ASSERT_TRUE(error.has_value());
  EXPECT_EQ(error->code(), 204);
  ASSERT_NE(error->underlyingError(), nullptr);
  expectTransportError(*error->underlyingError(), kCurlPartialFile);
  EXPECT_EQ(error->leafUnderlyingError()->domain(), kHttpTransportErrorDomain);

  EXPECT_EQ(FileUrlDownloader::getStringWithPostFromUrlString(server_.url("/short"), "a=1"), "");
}

TEST_F(FileUrlDownloaderFaultsTest, TheTimeOutIsAnIdleTimeOut) {
  // 12 bytes, one every 200 ms: 2.4 s in all against a time-out of 2 s.
  const ShortTimeouts fast;
  std::optional<Error> error;
  EXPECT_EQ(FileUrlDownloader::dataWithGetFromUrlString(server_.url("/slow/12/200"), &error),
            std::string(12, 's'));
  EXPECT_FALSE(error.has_value());
  EXPECT_EQ(FileUrlDownloader::stringWithGetFromUrlString(server_.url("/slow/12/200")),
            std::string(12, 's'));
}

TEST_F(FileUrlDownloaderFaultsTest, TextGetsGiveUpAfterFiveSilentSeconds) {
  // The real time-out, measured once: the server is silent for longer.
  ASSERT_EQ(FileUrlDownloader::timeouts().text, 5.0);
  const auto start = std::chrono::steady_clock::now();
  std::optional<Error> error;
  EXPECT_FALSE(FileUrlDownloader::stringWithGetFromUrlString(server_.url("/silent/30000"), &error)
                   .has_value());
  const double waited =
      std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
  expectTransportError(error, kCurlTimedOut);
  EXPECT_GE(waited, 4.5);
  EXPECT_LT(waited, 20.0);
  EXPECT_EQ(FileUrlDownloader::timeouts().data, 20.0);
}

TEST_F(FileUrlDownloaderFaultsTest, HundredMegabytesDownloadWithTheirDigestChecked) {
  testing::FakeEnv env;
  const std::string expected = server_.bigBody();
  const std::string digest = MD5::hexStringDigestForData(expected);
  const auto to = env.temporaryDirectory() / "big.bin";
  std::optional<Error> got = Error("not called", 0);
  FileUrlDownloader::downloadFileFromUrl(server_.url("/big"), to, digest,
                                         [&](const std::optional<Error>& error) { got = error; });
  ASSERT_FALSE(got.has_value()) << got->localizedDescription();
  ASSERT_EQ(std::filesystem::file_size(to), expected.size());
  std::ifstream in(to, std::ios::binary);
  std::string written(expected.size(), '\0');
  in.read(written.data(), static_cast<std::streamsize>(written.size()));
  EXPECT_TRUE(written == expected);
}

TEST(FileUrlDownloaderConcurrencyTest, ManyThreadsShareConnections) {
  testing::DownloadTestServer server;
  constexpr int kThreads = 8;
  constexpr int kRequests = 50;
  std::atomic<int> succeeded = 0;
  std::vector<std::thread> threads;
  for (int t = 0; t < kThreads; ++t) {
    threads.emplace_back([&server, &succeeded] {
      for (int i = 0; i < kRequests; ++i) {
        std::optional<Error> error;
        if (FileUrlDownloader::dataWithGetFromUrlString(server.url("/status/200"), &error) ==
                "status body" &&
            !error.has_value()) {
          ++succeeded;
        }
      }
    });
  }
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(succeeded.load(), kThreads * kRequests);
  // One connection per thread would do; a connection per request would be 400.
  EXPECT_LE(server.server().connectionCount(), static_cast<std::size_t>(2 * kThreads));
}

}  // namespace
}  // namespace qm
