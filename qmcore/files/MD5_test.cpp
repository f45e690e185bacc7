#include "qmcore/files/MD5.hpp"

#include <gtest/gtest.h>

#include <string>

namespace qm {
namespace {

TEST(MD5Test, DigestTextsOfData) {
  const struct {
    std::string data;
    const char* hex;
    const char* base64;
  } cases[] = {
      {"", "d41d8cd98f00b204e9800998ecf8427e", "1B2M2Y8AsgTpgAmY7PhCfg=="},
      {"abc", "900150983cd24fb0d6963f7d28e17f72", "kAFQmDzST7DWlj99KOF/cg=="},
      {std::string(1000, 'x'), "398533d48111e9f664b1f64cb10c4b63", "OYUz1IER6fZksfZMsQxLYw=="},
      {"pr\xc3\xbc"
       "fung",
       "a4aa475357949524295aa3d588b7035a", "pKpHU1eUlSQpWqPViLcDWg=="},
      // Data is digested whole, zero bytes included.
      {std::string("a\0b", 3), "70350f6027bce3713f6b76473084309b", nullptr},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(MD5::hexStringDigestForData(c.data), c.hex) << c.data;
    if (c.base64 != nullptr) {
      EXPECT_EQ(MD5::md5Base64StringForData(c.data), c.base64) << c.data;
    }
  }
}

TEST(MD5Test, TextsAreDigestedUpToTheirFirstZeroByte) {
  EXPECT_EQ(MD5::md5StringForString(""), "1B2M2Y8AsgTpgAmY7PhCfg==");
  EXPECT_EQ(MD5::md5StringForString("abc"), "kAFQmDzST7DWlj99KOF/cg==");
  EXPECT_EQ(MD5::md5StringForString(std::string("abc\0def", 7)), "kAFQmDzST7DWlj99KOF/cg==");
  EXPECT_EQ(MD5::md5StringForString(std::string("\0abc", 4)), "1B2M2Y8AsgTpgAmY7PhCfg==");
}

TEST(MD5Test, UrlFriendlyBase64) {
  const struct {
    const char* base64;
    const char* friendly;
  } cases[] = {
      {"", ""},
      {"+/=", "-_"},
      {"kAFQmDzST7DWlj99KOF/cg==", "kAFQmDzST7DWlj99KOF_cg"},
      {"a+b+/c/==", "a-b-_c_"},
      {"=a=", "a"},
      {"already-url_friendly", "already-url_friendly"},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(MD5::urlFriendlybase64EncodedStringForString(c.base64), c.friendly) << c.base64;
  }
  EXPECT_EQ(MD5::urlFriendlyMD5StringForString(""), "1B2M2Y8AsgTpgAmY7PhCfg");
  EXPECT_EQ(MD5::urlFriendlyMD5StringForString("1700000001/zip/maps v2.zip k+y=/"),
            "fjODrixc9M_22KIoICeSjQ");
}

}  // namespace
}  // namespace qm
