// MD5 digests and standard base64, over OpenSSL's libcrypto.
//
//   const qm::Md5Digest digest = qm::md5Digest("abc");
//   qm::base64Encode(digest);   // "kAFQmDzST7DWlj99KOF/cg=="
//
// The MD5 method is fetched from OpenSSL once per process and each thread keeps one digest
// context, so a digest costs no allocation. Base64 is written without line breaks, with "="
// padding.
//
// Thread-safety: every function may be called from any thread.

#ifndef QMCORE_PLATFORM_DIGEST_HPP_
#define QMCORE_PLATFORM_DIGEST_HPP_

#include <array>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>

namespace qm {

using Md5Digest = std::array<std::uint8_t, 16>;

// The MD5 digest (RFC 1321) of `bytes`.
Md5Digest md5Digest(std::string_view bytes);

// Standard base64 (RFC 4648, "+" and "/", "=" padding) of `bytes`, on one line.
std::string base64Encode(std::span<const std::uint8_t> bytes);
std::string base64Encode(std::string_view bytes);

}  // namespace qm

#endif  // QMCORE_PLATFORM_DIGEST_HPP_
