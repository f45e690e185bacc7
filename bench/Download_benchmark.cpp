// A 100 MB download over loopback through FileUrlDownloader::dataWithGetFromUrlString against
// a plain libcurl easy transfer into memory, from the same server in the same run (wall time:
// the transfer waits on the network as much as it computes).
//
//   build/release/bench/Download_benchmark

#include <benchmark/benchmark.h>
#include <curl/curl.h>

#include <optional>
#include <string>

#include "bench/RatioReporter.hpp"
#include "qmcore/files/FileUrlDownloader.hpp"
#include "qmcore/testing/DownloadTestServer.hpp"

namespace {

qm::testing::DownloadTestServer* server = nullptr;

void BM_dataWithGetFromUrlString(benchmark::State& state) {
  const std::string url = server->url("/big");
  for (auto _ : state) {
    std::optional<qm::Error> error;
    const auto data = qm::FileUrlDownloader::dataWithGetFromUrlString(url, &error);
    if (!data || data->size() != qm::testing::DownloadTestServer::kBigSize) {
      state.SkipWithError("download failed");
      break;
    }
  }
  state.SetItemsProcessed(state.iterations() *
                          static_cast<std::int64_t>(qm::testing::DownloadTestServer::kBigSize));
}

std::size_t append(char* bytes, std::size_t size, std::size_t count, void* user) {
  static_cast<std::string*>(user)->append(bytes, size * count);
  return size * count;
}

void BM_CurlEasyIntoMemory(benchmark::State& state) {
  const std::string url = server->url("/big");
  for (auto _ : state) {
    std::string body;
    CURL* const easy = curl_easy_init();
    curl_easy_setopt(easy, CURLOPT_URL, url.c_str());
    curl_easy_setopt(easy, CURLOPT_WRITEFUNCTION, append);
    curl_easy_setopt(easy, CURLOPT_WRITEDATA, &body);
    const CURLcode code = curl_easy_perform(easy);
    curl_easy_cleanup(easy);
    if (code != CURLE_OK || body.size() != qm::testing::DownloadTestServer::kBigSize) {
      state.SkipWithError("download failed");
      break;
    }
  }
  state.SetItemsProcessed(state.iterations() *
                          static_cast<std::int64_t>(qm::testing::DownloadTestServer::kBigSize));
}

BENCHMARK(BM_dataWithGetFromUrlString)->Unit(benchmark::kMillisecond)->MinTime(3.0)->UseRealTime();
BENCHMARK(BM_CurlEasyIntoMemory)->Unit(benchmark::kMillisecond)->MinTime(3.0)->UseRealTime();

}  // namespace

int main(int argc, char** argv) {
  benchmark::Initialize(&argc, argv);
  curl_global_init(CURL_GLOBAL_DEFAULT);
  qm::testing::DownloadTestServer running;
  server = &running;
  qm::bench::RatioReporter reporter;
  benchmark::RunSpecifiedBenchmarks(&reporter);
  reporter.printRatio("BM_dataWithGetFromUrlString/min_time:3.000/real_time",
                      "BM_CurlEasyIntoMemory/min_time:3.000/real_time", "bytes");
  benchmark::Shutdown();
  return 0;
}
