#include "qmcore/files/MD5.hpp"

#include <gtest/gtest.h>

#include <string>

namespace qm {
namespace {

TEST(MD5Test, DigestTexts) {
  // Data is digested whole, zero bytes included; a text only up to its first zero byte.
  const std::string data("a\0b", 3);
  EXPECT_EQ(MD5::hexStringDigestForData(data), "70350f6027bce3713f6b76473084309b");
  EXPECT_EQ(MD5::md5Base64StringForData(data), "cDUPYCe843E/a3ZHMIQwmw==");
  EXPECT_EQ(MD5::md5StringForString(data), "DMF1ucDxtqgxw5niaXcmYQ==");  // of "a"
  // Plus, slash and equals become minus, underscore and nothing, wherever they stand.
  EXPECT_EQ(MD5::urlFriendlybase64EncodedStringForString("=a+b/c=="), "a-b_c");
  EXPECT_EQ(MD5::urlFriendlyMD5StringForString(""), "1B2M2Y8AsgTpgAmY7PhCfg");
}

}  // namespace
}  // namespace qm
