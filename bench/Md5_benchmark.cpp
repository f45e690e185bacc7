// MD5::hexStringDigestForData against OpenSSL's one-shot EVP_Digest (plus nothing: the peer
// leaves the digest in binary), at 64 bytes and at 1 MiB.
//
//   build/release/bench/Md5_benchmark

#include <benchmark/benchmark.h>
#include <openssl/evp.h>

#include <string>

#include "bench/RatioReporter.hpp"
#include "qmcore/files/MD5.hpp"

namespace {

std::string input(std::size_t size) {
  std::string data(size, '\0');
  for (std::size_t i = 0; i < size; ++i) data[i] = static_cast<char>(i * 31);
  return data;
}

void BM_hexStringDigestForData(benchmark::State& state) {
  const std::string data = input(static_cast<std::size_t>(state.range(0)));
  for (auto _ : state) benchmark::DoNotOptimize(qm::MD5::hexStringDigestForData(data));
  state.SetItemsProcessed(state.iterations());
}

void BM_EVP_Digest(benchmark::State& state) {
  const std::string data = input(static_cast<std::size_t>(state.range(0)));
  unsigned char digest[EVP_MAX_MD_SIZE];
  unsigned int length = 0;
  for (auto _ : state) {
    EVP_Digest(data.data(), data.size(), digest, &length, EVP_md5(), nullptr);
    benchmark::DoNotOptimize(digest);
  }
  state.SetItemsProcessed(state.iterations());
}

BENCHMARK(BM_hexStringDigestForData)->Arg(64)->Arg(1 << 20);
BENCHMARK(BM_EVP_Digest)->Arg(64)->Arg(1 << 20);

}  // namespace

int main(int argc, char** argv) {
  benchmark::Initialize(&argc, argv);
  qm::bench::RatioReporter reporter;
  benchmark::RunSpecifiedBenchmarks(&reporter);
  reporter.printRatio("BM_hexStringDigestForData/64", "BM_EVP_Digest/64", "digests");
  reporter.printRatio("BM_hexStringDigestForData/1048576", "BM_EVP_Digest/1048576", "digests");
  benchmark::Shutdown();
  return 0;
}
