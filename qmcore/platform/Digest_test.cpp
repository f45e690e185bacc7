#include "qmcore/platform/Digest.hpp"

#include <gtest/gtest.h>

#include <string>
#include <thread>
#include <vector>

namespace qm {
namespace {

std::string hex(const Md5Digest& digest) {
  static constexpr char kDigits[] = "0123456789abcdef";
  std::string text;
  for (const std::uint8_t byte : digest) {
    text.push_back(kDigits[byte >> 4]);
    text.push_back(kDigits[byte & 15]);
  }
  return text;
}

TEST(DigestTest, Md5MatchesTheReferenceVectors) {
  // RFC 1321, appendix A.5.
  const struct {
    std::string input;
    const char* digest;
  } cases[] = {
      {"", "d41d8cd98f00b204e9800998ecf8427e"},
      {"a", "0cc175b9c0f1b6a831c399e269772661"},
      {"abc", "900150983cd24fb0d6963f7d28e17f72"},
      {"message digest", "f96b697d7cb7938d525a2f31aaf161d0"},
      {"abcdefghijklmnopqrstuvwxyz", "c3fcd3d76192e4007dfb496cca67e13b"},
      {std::string(1, '\0'), "93b885adfe0da089cdf634904fd59f71"},
      {"12345678901234567890123456789012345678901234567890123456789012345678901234567890",
       "57edf4a22be3c955ac49da2e2107b67a"},
  };
  for (const auto& c : cases) EXPECT_EQ(hex(md5Digest(c.input)), c.digest) << c.input;
}

TEST(DigestTest, Base64PadsAndNeverBreaksLines) {
  const struct {
    std::string input;
    const char* base64;
  } cases[] = {
      {"", ""},
      {"f", "Zg=="},
      {"fo", "Zm8="},
      {"foo", "Zm9v"},
      {"foob", "Zm9vYg=="},
      {"\xfb\xff", "+/8="},
      {std::string(3, '\0'), "AAAA"},
  };
  for (const auto& c : cases) EXPECT_EQ(base64Encode(c.input), c.base64) << c.input;
  // 120 bytes encode to 160 characters; OpenSSL's streaming encoder would break at 64.
  const std::string encoded = base64Encode(std::string(120, 'x'));
  EXPECT_EQ(encoded.size(), 160u);
  EXPECT_EQ(encoded.find('\n'), std::string::npos);
}

TEST(DigestTest, ThreadsDigestAtOnceWithoutMixingTheirContexts) {
  std::vector<std::thread> threads;
  std::vector<std::string> results(8);
  for (std::size_t i = 0; i < results.size(); ++i) {
    threads.emplace_back([&results, i] {
      for (int round = 0; round < 200; ++round) results[i] = hex(md5Digest(i % 2 ? "abc" : "a"));
    });
  }
  for (std::thread& thread : threads) thread.join();
  for (std::size_t i = 0; i < results.size(); ++i) {
    EXPECT_EQ(results[i],
              i % 2 ? "900150983cd24fb0d6963f7d28e17f72" : "0cc175b9c0f1b6a831c399e269772661");
  }
}

}  // namespace
}  // namespace qm
