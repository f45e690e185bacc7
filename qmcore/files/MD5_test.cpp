#include "qmcore/files/MD5.hpp"

#include <gtest/gtest.h>

#include <string>

namespace qm {
namespace {

TEST(MD5Test, DigestTexts) {
  const struct {
    std::string data;
    const char* hex;
    const char* base64;
  } cases[] = {
      {"", "d41d8cd98f00b204e9800998ecf8427e", "1B2M2Y8AsgTpgAmY7PhCfg=="},
      {"abc", "900150983cd24fb0d6963f7d28e17f72", "kAFQmDzST7DWlj99KOF/cg=="},
      {std::string("a\0b", 3), "70350f6027bce3713f6b76473084309b", "cDUPYCe843E/a3ZHMIQwmw=="},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(MD5::hexStringDigestForData(c.data), c.hex) << c.data;
    EXPECT_EQ(MD5::md5Base64StringForData(c.data), c.base64) << c.data;
  }
  // A text is digested as a C string: up to its first zero byte.
  EXPECT_EQ(MD5::md5StringForString(std::string("abc\0d", 5)), "kAFQmDzST7DWlj99KOF/cg==");
  // Plus, slash and equals become minus, underscore and nothing, wherever they stand.
  EXPECT_EQ(MD5::urlFriendlybase64EncodedStringForString("=a+b/c=="), "a-b_c");
  EXPECT_EQ(MD5::urlFriendlyMD5StringForString(""), "1B2M2Y8AsgTpgAmY7PhCfg");
}

}  // namespace
}  // namespace qm
