// The umbrella header alone is enough to use the library.

#include "qmcore/qmcore.hpp"

#include <gtest/gtest.h>

namespace qm {
namespace {

TEST(UmbrellaHeaderTest, GivesThePublicApi) {
  EXPECT_EQ(QMConvertUnitValue(*QMLengthUnit::footUnit(), *QMLengthUnit::meterUnit(), 1.0),
            0.30479999);
  EXPECT_EQ(QMParseISO8601Date("1970-01-02"), 86400.0);
  EXPECT_EQ(CoreStrings::CLSTRING("m_minute", "en_US"), "m");
  EXPECT_EQ(QMFileHelper::sanitizedFileNameString("a:b/c"), "a-b-c");
}

}  // namespace
}  // namespace qm
