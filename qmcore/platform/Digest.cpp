#include "qmcore/platform/Digest.hpp"

#include <openssl/evp.h>

#include <algorithm>
#include <memory>

#include "qmcore/platform/Error.hpp"

namespace qm {
namespace {

const EVP_MD* md5Method() {
  // Fetching resolves the provider each time; once is enough for the process.
  static const EVP_MD* const method = [] {
    const EVP_MD* fetched = EVP_MD_fetch(nullptr, "MD5", nullptr);
    if (fetched == nullptr) fatalError("OpenSSL offers no MD5 digest");
    return fetched;
  }();
  return method;
}

struct ContextDeleter {
  void operator()(EVP_MD_CTX* context) const { EVP_MD_CTX_free(context); }
};

EVP_MD_CTX* threadContext() {
  thread_local const std::unique_ptr<EVP_MD_CTX, ContextDeleter> context(EVP_MD_CTX_new());
  if (context == nullptr) fatalError("OpenSSL could not make a digest context");
  return context.get();
}

}  // namespace

Md5Digest md5Digest(std::string_view bytes) {
  Md5Digest digest{};
  EVP_MD_CTX* const context = threadContext();
  unsigned int length = 0;
  if (EVP_DigestInit_ex2(context, md5Method(), nullptr) != 1 ||
      EVP_DigestUpdate(context, bytes.data(), bytes.size()) != 1 ||
      EVP_DigestFinal_ex(context, digest.data(), &length) != 1 || length != digest.size()) {
    fatalError("OpenSSL failed to compute an MD5 digest");
  }
  return digest;
}

std::string base64Encode(std::span<const std::uint8_t> bytes) {
  std::string text;
  if (bytes.empty()) return text;
  // EVP_EncodeBlock writes 4 characters per started group of 3 bytes and a terminating zero.
  text.resize(4 * ((bytes.size() + 2) / 3) + 1);
  std::size_t written = 0;
  // EVP_EncodeBlock takes an int length; encode in chunks that are a multiple of 3 bytes.
  constexpr std::size_t kChunk = 3 * (1u << 28);
  for (std::size_t offset = 0; offset < bytes.size(); offset += kChunk) {
    const std::size_t count = std::min(kChunk, bytes.size() - offset);
    written += static_cast<std::size_t>(
        EVP_EncodeBlock(reinterpret_cast<unsigned char*>(text.data() + written),
                        bytes.data() + offset, static_cast<int>(count)));
  }
  text.resize(written);
  return text;
}

std::string base64Encode(std::string_view bytes) {
  return base64Encode(std::span<const std::uint8_t>(
      reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size()));
}

}  // namespace qm
