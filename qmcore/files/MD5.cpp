#include "qmcore/files/MD5.hpp"

#include "qmcore/platform/Digest.hpp"

namespace qm {

std::string MD5::hexStringDigestForData(std::string_view data) {
  static constexpr char kDigits[] = "0123456789abcdef";
  const Md5Digest digest = md5Digest(data);
  std::string text(2 * digest.size(), '0');
  for (std::size_t i = 0; i < digest.size(); ++i) {
    text[2 * i] = kDigits[digest[i] >> 4];
    text[2 * i + 1] = kDigits[digest[i] & 0x0f];
  }
  return text;
}

std::string MD5::md5Base64StringForData(std::string_view data) {
  return base64Encode(md5Digest(data));
}

std::string MD5::md5StringForString(std::string_view text) {
  // The text is digested as a C string would be: up to its first zero byte.
  return md5Base64StringForData(text.substr(0, text.find('\0')));
}

std::string MD5::urlFriendlybase64EncodedStringForString(std::string_view base64) {
  std::string text;
  text.reserve(base64.size());
  for (const char c : base64) {
    if (c == '+') {
      text.push_back('-');
    } else if (c == '/') {
      text.push_back('_');
    } else if (c != '=') {
      text.push_back(c);
    }
  }
  return text;
}

std::string MD5::urlFriendlyMD5StringForString(std::string_view text) {
  return urlFriendlybase64EncodedStringForString(md5StringForString(text));
}

}  // namespace qm
