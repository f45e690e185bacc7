// MD5 digests of data and texts, as hexadecimal, base64 and URL-friendly base64 texts: the
// digests a download server publishes for its files and the signatures of its URLs.
//
//   qm::MD5::hexStringDigestForData("abc");            // "900150983cd24fb0d6963f7d28e17f72"
//   qm::MD5::md5StringForString("");                   // "1B2M2Y8AsgTpgAmY7PhCfg=="
//   qm::MD5::urlFriendlyMD5StringForString("");        // "1B2M2Y8AsgTpgAmY7PhCfg"
//
// Data is any run of bytes, passed as a string_view. Thread-safety: every function may be
// called from any thread.

#ifndef QMCORE_FILES_MD5_HPP_
#define QMCORE_FILES_MD5_HPP_

#include <string>
#include <string_view>

namespace qm {

class MD5 {
 public:
  // 32 lower-case hexadecimal digits of the digest of `data`.
  static std::string hexStringDigestForData(std::string_view data);
  // Standard base64 of the 16-byte digest of `data` ("=" padded, one line).
  static std::string md5Base64StringForData(std::string_view data);
  // Standard base64 of the digest of the text's bytes up to its first zero byte, if any.
  static std::string md5StringForString(std::string_view text);
  // `base64` with every "+" made "-", every "/" made "_" and every "=" removed.
  static std::string urlFriendlybase64EncodedStringForString(std::string_view base64);
  // The URL-friendly form of md5StringForString(text).
  static std::string urlFriendlyMD5StringForString(std::string_view text);

  MD5() = delete;
};

}  // namespace qm

#endif  // QMCORE_FILES_MD5_HPP_
